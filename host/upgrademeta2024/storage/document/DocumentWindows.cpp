#include "upgrademeta2024/storage/document/DocumentWindows.h"

#include <simdjson.h>

#include <bitset>
#include <filesystem>
#include <new>
#include <string>
#include <string_view>

#include "upgrademeta2024/LoadProgress.h"
#include "upgrademeta2024/storage/document/DocumentListReader.h"
#include "upgrademeta2024/storage/document/TextWindow.h"

namespace {

static_assert(CTextWindow::kRoom >= simdjson::SIMDJSON_PADDING + 2);

struct SFault {};

[[noreturn]] void StopAtFault(const std::string& /*message*/, const char* /*where*/) {
  throw SFault();
}

/// Reads the elements of a part of a list.
class CPartReader : private CDocumentListReader {
 public:
  CPartReader(const simdjson::ondemand::parser& parser, simdjson::ondemand::document& document, std::size_t size,
              SDocumentLists& lists)
      : CDocumentListReader(parser, size, lists, &StopAtFault), document_(document) {}

  /// Stops at the end of the list or at the first element that is not whole, or not right. What follows the last one
  /// that was read; null when that is none.
  const char* Read(std::string_view list) {
    try {
      Value items = document_.get_value();
      ReadList(list, items);
    } catch (const SFault&) {
      // It is read again, with more of the text.
    } catch (const simdjson::simdjson_error& error) {
      if (error.error() == simdjson::MEMALLOC) {
        throw std::bad_alloc();
      }
    }
    return end_;
  }

 private:
  void ElementEnds() override { end_ = document_.current_location(); }

  simdjson::ondemand::document& document_;
  const char* end_ = nullptr;
};

class CWindowsReader {
 public:
  CWindowsReader(const std::string& path, CLoadProgress& progress) : window_(path), progress_(progress) {
    progress_.SetTotal(window_.GetFileSize());
  }

  /// Null for whatever is not as expected.
  std::shared_ptr<CMetaDictionary2024> Read() {
    window_.Take("\xEF\xBB\xBF");
    if (!window_.Take('{')) {
      return nullptr;
    }
    do {
      if (!ReadMember()) {
        return nullptr;
      }
    } while (window_.Take(','));
    const bool isWhole = window_.Take('}') && window_.IsAtEnd() && seen_.test(0);
    return isWhole ? lists_.dictionary : nullptr;
  }

 private:
  bool ReadMember() {
    window_.Peek();
    std::size_t member = 0;
    while (member < kDictionaryNames.size() && !window_.Take("\"" + std::string(kDictionaryNames[member]) + "\"")) {
      ++member;
    }
    if (member == kDictionaryNames.size() || seen_.test(member) || !window_.Take(':')) {
      return false;
    }
    seen_.set(member);
    if (kDictionaryNames[member] != kGenerationMember) {
      return ReadWholeList(kDictionaryNames[member]);
    }
    window_.Peek();
    return window_.Take(std::to_string(CMetaDictionary2024::kGeneration));
  }

  bool ReadWholeList(std::string_view name) {
    if (!window_.Take('[')) {
      return false;
    }
    if (window_.Peek() != ']') {
      do {
        window_.Peek();
        if (!ReadPart(name)) {
          return false;
        }
      } while (window_.Take(','));
    }
    return window_.Take(']');
  }

  /// Reads those of the next elements that are in the window as a whole, one at least.
  bool ReadPart(std::string_view list) {
    window_.Fill();
    do {
      // Elements end with a bracket. The last one is mostly one of an element that goes on after it.
      const std::size_t last = std::string_view(window_.Place(), window_.GetSize()).rfind('}');
      if (last != std::string_view::npos && ReadPart(list, last + 1)) {
        progress_.SetDone(window_.GetPassed());
        return true;
      }
    } while (window_.Grow());
    return false;
  }

  /// The next characters of the window become an array: the one before them and the one after them are its brackets.
  bool ReadPart(std::string_view list, std::size_t size) {
    char* const begin = window_.Place() - 1;
    char* const end = window_.Place() + size;
    const std::string follows(end, 2);
    *begin = '[';
    // What an array that is not closed finds after the end must not close it.
    end[0] = ']';
    end[1] = 0;
    const char* next = nullptr;
    simdjson::ondemand::document document;
    const simdjson::error_code error =
        parser_.iterate(begin, size + 2, size + 2 + simdjson::SIMDJSON_PADDING).get(document);
    if (error == simdjson::MEMALLOC) {
      throw std::bad_alloc();
    }
    if (error == simdjson::SUCCESS) {
      next = CPartReader(parser_, document, size + 2, lists_).Read(list);
    }
    follows.copy(end, 2);
    if (next != nullptr) {
      window_.Pass(static_cast<std::size_t>(next - window_.Place()));
    }
    return next != nullptr;
  }

  CTextWindow window_;
  CLoadProgress& progress_;
  simdjson::ondemand::parser parser_;
  SDocumentLists lists_;
  std::bitset<kDictionaryNames.size()> seen_;
};

}  // namespace

std::shared_ptr<CMetaDictionary2024> ReadDocumentInWindows(const std::string& path, CLoadProgress& progress) {
  std::error_code error;
  return std::filesystem::is_regular_file(path, error) ? CWindowsReader(path, progress).Read() : nullptr;
}
