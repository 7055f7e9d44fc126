#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "upgrademeta2024/LoadProgress.h"

namespace upgradesrv {

/// While it exists, the last line of standard error shows which metamodels are being loaded, or in which table stored
/// values are being counted, and how far that is, once it has taken a second. The line is erased when loading ends.
/// Nothing is shown where standard error is no terminal, or one that cannot erase a line.
class CProgressLine : private CLoadObserver {
 public:
  /// `wanted` false shows nothing anywhere.
  explicit CProgressLine(bool wanted);
  ~CProgressLine() override;

  /// Erases the line if it is shown. A signal handler may call this, too.
  static void Erase() noexcept;

 private:
  void LoadBegins(const CLoadProgress& load) override;
  void LoadEnds(const CLoadProgress& load) override;
  void Run();
  void Show();

  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<const CLoadProgress*> loads_;
  bool ended_ = false;
  std::thread thread_;
};

/// How far a loading is, for example "plm.json 42%", "pipe.json 12 MB" or "plm.db 1200 rows"; or a counting, for
/// example "T_PART (table 3 of 26)".
struct SProgressItem {
  std::string source;
  std::string amount;
  bool isCounting = false;
};

/// The line for a terminal of `columns` columns, on which it leaves the last one free. Sources lose their directories,
/// then the line its end, when there is no room; control characters are made visible.
std::string ProgressText(const std::vector<SProgressItem>& items, std::size_t columns);

SProgressItem ProgressItem(const CLoadProgress& load);

}  // namespace upgradesrv
