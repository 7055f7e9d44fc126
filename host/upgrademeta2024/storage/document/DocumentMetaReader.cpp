#include "upgrademeta2024/storage/document/DocumentMetaReader.h"

#include <simdjson.h>

#include <new>
#include <string_view>
#include <utility>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/IsUtf16.h"
#include "kvxsptfile/LineAndColumn.h"
#include "kvxsptfile/ReadFile.h"
#include "kvxsptstring/StringHelper.h"
#include "upgrademeta2024/LoadProgress.h"
#include "upgrademeta2024/storage/MetaFaults.h"
#include "upgrademeta2024/storage/document/DocumentListReader.h"
#include "upgrademeta2024/storage/document/DocumentWindows.h"
#include "upgrademeta2024/storage/document/JsonTextFault.h"

namespace {

class CDocumentReader : private CDocumentListReader {
 public:
  /// `text` is what is read.
  CDocumentReader(const simdjson::ondemand::parser& parser, std::string_view text, SDocumentLists& lists,
                  CLoadProgress& progress, JsonFaultHandler onFault)
      : CDocumentListReader(parser, text.size(), lists, std::move(onFault)), text_(text), progress_(progress) {}

  void Read(simdjson::ondemand::document& document) {
    if (const Type type = document.type(); type != Type::object) {
      FailType(Type::object, type);
      return;
    }
    Members(document.get_object(), kDictionaryNames, [&](std::size_t member, Value& value) {
      if (kDictionaryNames[member] == kGenerationMember) {
        RequireGeneration(value);
      } else {
        ReadList(kDictionaryNames[member], value);
      }
    });
    // A location is left only where text follows the root's end.
    if (document.current_location().error() == simdjson::SUCCESS) {
      throw simdjson::simdjson_error(simdjson::TRAILING_CONTENT);
    }
  }

 private:
  void RequireGeneration(Value& value) {
    const auto generation = Number<std::uint32_t>(value);
    if (generation != CMetaDictionary2024::kGeneration) {
      Fail(metarules::WrongGeneration(std::to_string(generation)));
    }
  }

  /// All of the text has been read, and is taken apart up to an element.
  void ElementBegins(const char* where) override {
    progress_.SetDone(text_.size() + static_cast<std::size_t>(where - text_.data()));
  }

  std::string_view text_;
  CLoadProgress& progress_;
};

/// The text as a whole, so that every fault can be shown with its place.
std::shared_ptr<CMetaDictionary2024> ReadAtOnce(const std::string& path, CLoadProgress& progress, CFaultTaker& faults) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  kvx::SReading reading;
  reading.padding = simdjson::SIMDJSON_PADDING;
  reading.observer = [&progress](std::size_t done, std::size_t total) {
    progress.SetTotal(2 * total);
    progress.SetDone(done);
  };
  reading.mayBePipe = true;
  const std::string file = kvx::ReadFile(path, reading);
  progress.SetTotal(2 * file.size());
  const std::size_t begin = file.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0 ? kByteOrderMark.size() : 0;
  const std::string_view text = std::string_view(file).substr(begin);
  const auto words = [&](std::size_t offset, const std::string& problem) {
    return CStringHelper::ToVisible(path) + ":" + kvx::LineAndColumn(file.data(), begin + offset) + ": " + problem;
  };
  if (kvx::IsUtf16(text)) {
    throw CKVXException(kvx::kMalformedDocument, words(0, kvx::kUtf16Problem));
  }

  const auto onFault = [&](const std::string& message, const char* where) {
    const auto offset = where == nullptr ? 0 : static_cast<std::size_t>(where - text.data());
    faults.Take([&] { return words(offset, message); });
  };

  simdjson::ondemand::parser parser;
  simdjson::ondemand::document document;
  // A document that iterate() has refused cannot be asked for its location.
  bool iterating = false;
  try {
    document = parser.iterate(text.data(), text.size(), file.capacity() - begin);
    iterating = true;
    SDocumentLists lists;
    CDocumentReader(parser, text, lists, progress, onFault).Read(document);
    return lists.dictionary;
  } catch (const simdjson::simdjson_error& error) {
    if (error.error() == simdjson::MEMALLOC) {
      // No fault of the document.
      throw std::bad_alloc();
    }
    const char* location = nullptr;
    const bool located = iterating && document.current_location().get(location) == simdjson::SUCCESS;
    const std::size_t offset = FindJsonTextFault(text, error.error(), located ? location - text.data() : -1);
    throw CKVXException(kvx::kMalformedDocument, words(offset, JsonTextFaultMessage(error.error())));
  }
}

}  // namespace

std::shared_ptr<CMetaDictionary2024> ReadMetaDocument(const std::string& path, CLoadProgress& progress,
                                                      CFaultTaker& faults) {
  const std::shared_ptr<CMetaDictionary2024> dictionary = ReadDocumentInWindows(path, progress);
  return dictionary != nullptr ? dictionary : ReadAtOnce(path, progress, faults);
}
