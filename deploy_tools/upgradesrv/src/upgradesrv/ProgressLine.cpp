#include "upgradesrv/ProgressLine.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <string_view>
#include <system_error>

#include "kvxsptstring/StringHelper.h"

namespace upgradesrv {
namespace {

constexpr std::chrono::seconds kPatience{1};
constexpr std::chrono::milliseconds kInterval{200};
constexpr std::size_t kMostLoads = 16;
constexpr std::size_t kUsualColumns = 80;
constexpr std::string_view kErased = "\r\x1B[K";

std::atomic<bool> isShown{false};

bool CanShow() {
  const char* terminal = std::getenv("TERM");
  return isatty(STDERR_FILENO) != 0 && terminal != nullptr && *terminal != '\0' && std::string_view(terminal) != "dumb";
}

std::size_t TerminalColumns() {
  winsize size{};
  return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col != 0 ? size.ws_col : kUsualColumns;
}

void WriteToTerminal(std::string_view text) {
  // A line that cannot be written is not missed.
  static_cast<void>(write(STDERR_FILENO, text.data(), text.size()) < 0);
}

bool IsContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// As many whole characters as fit. Those beyond ASCII are taken for wide ones.
std::string Cut(const std::string& text, std::size_t columns) {
  std::size_t used = 0;
  std::size_t end = 0;
  while (end < text.size()) {
    used += static_cast<unsigned char>(text[end]) < 0x80U ? 1 : 2;
    if (used > columns) {
      break;
    }
    ++end;
    while (end < text.size() && IsContinuation(text[end])) {
      ++end;
    }
  }
  return text.substr(0, end);
}

std::string WithoutDirectory(const std::string& source) {
  if (source.find("postgresql://") == 0) {
    return source;
  }
  const std::size_t slash = source.rfind('/');
  return slash == std::string::npos ? source : source.substr(slash + 1);
}

std::string Join(const std::vector<SProgressItem>& items, std::string (*shown)(const std::string&)) {
  std::string line = items.empty() || !items.front().isCounting ? "upgradesrv: loading " : "upgradesrv: counting in ";
  for (const SProgressItem& item : items) {
    line += (&item == items.data() ? "" : ", ") + shown(item.source) + " " + item.amount;
  }
  return CStringHelper::ToVisible(line);
}

}  // namespace

std::string ProgressText(const std::vector<SProgressItem>& items, std::size_t columns) {
  // A character in the last column would make some terminals begin the next line.
  const std::size_t room = columns - std::min<std::size_t>(columns, 1);
  const std::string whole = Join(items, [](const std::string& source) { return source; });
  return Cut(whole, room) == whole ? whole : Cut(Join(items, &WithoutDirectory), room);
}

SProgressItem ProgressItem(const CLoadProgress& load) {
  constexpr std::uint64_t kMegabyte = 1000000;
  const std::uint64_t done = load.GetDone();
  const std::uint64_t total = load.GetTotal();
  if (load.GetUnit() == CLoadProgress::kTables) {
    return {load.GetSource(),
            "(table " + std::to_string(done + 1) + " of " + std::to_string(std::max(done + 1, total)) + ")", true};
  }
  if (total != 0) {
    return {load.GetSource(), std::to_string(std::min<std::uint64_t>(done * 100 / total, 100)) + "%", false};
  }
  if (load.GetUnit() == CLoadProgress::kRows) {
    return {load.GetSource(), std::to_string(done) + " rows", false};
  }
  return {load.GetSource(), std::to_string(done / kMegabyte) + " MB", false};
}

CProgressLine::CProgressLine(bool wanted) {
  if (!wanted || !CanShow()) {
    return;
  }
  // What is loaded at once; LoadBegins must not fail.
  loads_.reserve(kMostLoads);
  try {
    thread_ = std::thread(&CProgressLine::Run, this);
  } catch (const std::system_error&) {
    // What is loaded matters more than the line about it.
    return;
  }
  Install(this);
}

CProgressLine::~CProgressLine() {
  if (!thread_.joinable()) {
    return;
  }
  Install(nullptr);
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    ended_ = true;
    loads_.clear();
    Erase();
  }
  changed_.notify_all();
  thread_.join();
}

void CProgressLine::LoadBegins(const CLoadProgress& load) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (loads_.size() < kMostLoads) {
    loads_.push_back(&load);
  }
  changed_.notify_all();
}

void CProgressLine::LoadEnds(const CLoadProgress& load) {
  const std::lock_guard<std::mutex> lock(mutex_);
  loads_.erase(std::remove(loads_.begin(), loads_.end(), &load), loads_.end());
  // Here and not by the thread that shows: whatever is written next must find the line empty.
  if (loads_.empty()) {
    Erase();
  }
  changed_.notify_all();
}

void CProgressLine::Run() {
  std::unique_lock<std::mutex> lock(mutex_);
  const auto isIdle = [this] { return ended_ || loads_.empty(); };
  // Metamodels that are loaded one after the other share one second.
  std::chrono::steady_clock::duration patience = kPatience;
  while (!ended_) {
    changed_.wait(lock, [this] { return ended_ || !loads_.empty(); });
    const auto begin = std::chrono::steady_clock::now();
    if (!changed_.wait_for(lock, patience, isIdle)) {
      do {
        Show();
      } while (!changed_.wait_for(lock, kInterval, isIdle));
    }
    patience -= std::min(patience, std::chrono::steady_clock::now() - begin);
  }
}

void CProgressLine::Show() {
  std::vector<SProgressItem> items;
  for (const CLoadProgress* load : loads_) {
    items.push_back(ProgressItem(*load));
  }
  isShown = true;
  WriteToTerminal(std::string(kErased) + ProgressText(items, TerminalColumns()));
}

void CProgressLine::Erase() noexcept {
  if (isShown.exchange(false)) {
    WriteToTerminal(kErased);
  }
}

}  // namespace upgradesrv
