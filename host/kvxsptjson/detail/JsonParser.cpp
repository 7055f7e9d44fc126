#include "kvxsptjson/detail/JsonParser.h"

#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <locale>
#include <sstream>
#include <system_error>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/IsUtf16.h"
#include "kvxsptfile/LineAndColumn.h"
#include "kvxsptstring/StringHelper.h"

namespace kvx {
namespace {

// RapidJSON copies, writes and compares values by recursion, so depth is bounded where a document enters.
constexpr unsigned kMaxDepth = 512;
constexpr const char* kByteOrderMark = "\xEF\xBB\xBF";

/// Passes a parse on to a document, and stops it at what RapidJSON itself would let through.
class CStrictHandler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, CStrictHandler> {
 public:
  explicit CStrictHandler(JsonDocumentBase& document) : document_(document) {}

  bool Null() { return document_.Null(); }
  bool Bool(bool value) { return document_.Bool(value); }
  /// RapidJSON's own conversion makes 1.8e308 an infinity, which cannot be written, and overflows an int on exponents
  /// near -2147483648. Every number arrives here as text instead.
  bool RawNumber(const char* text, rapidjson::SizeType size, bool /*copy*/) {
    return *text == '-' ? Number<std::int64_t>(text, text + size, &JsonDocumentBase::Int64)
                        : Number<std::uint64_t>(text, text + size, &JsonDocumentBase::Uint64);
  }
  bool String(const char* text, rapidjson::SizeType size, bool copy) {
    return IsUnicode(text, size) && document_.String(text, size, copy);
  }
  bool Key(const char* text, rapidjson::SizeType size, bool copy) {
    return IsUnicode(text, size) && document_.Key(text, size, copy);
  }
  bool StartObject() { return Enter() && document_.StartObject(); }
  bool EndObject(rapidjson::SizeType count) { return Leave() && document_.EndObject(count); }
  bool StartArray() { return Enter() && document_.StartArray(); }
  bool EndArray(rapidjson::SizeType count) { return Leave() && document_.EndArray(count); }

  const char* GetProblem() const { return problem_; }

 private:
  bool Enter() {
    if (++depth_ > kMaxDepth) {
      problem_ = "nested more than 512 levels deep";
      return false;
    }
    return true;
  }
  bool Leave() {
    --depth_;
    return true;
  }
  template <typename Integer>
  bool Number(const char* begin, const char* end, bool (JsonDocumentBase::*integer)(Integer)) {
    Integer value = 0;
    if (const auto [at, error] = std::from_chars(begin, end, value); at == end && error == std::errc()) {
      return (document_.*integer)(value);
    }
    std::istringstream text(std::string(begin, end));
    text.imbue(std::locale::classic());
    // What throws in it, for want of memory, would count as a number too big otherwise.
    text.exceptions(std::ios::badbit);
    double number = 0;
    if (!(text >> number)) {
      problem_ = rapidjson::GetParseError_En(rapidjson::kParseErrorNumberTooBig);
      return false;
    }
    return document_.Double(number);
  }
  /// The parser has validated the text; only a lone \uDC00 to \uDFFF still arrives here, as ED A0..BF.
  bool IsUnicode(const char* text, rapidjson::SizeType size) {
    const char* const end = text + size;
    for (const char* at = std::find(text, end, '\xED'); at != end; at = std::find(at + 1, end, '\xED')) {
      if (at + 1 != end && static_cast<unsigned char>(at[1]) >= 0xA0) {
        problem_ = "The surrogate pair in string is invalid.";
        return false;
      }
    }
    return true;
  }

  JsonDocumentBase& document_;
  unsigned depth_ = 0;
  const char* problem_ = nullptr;
};

/// Feeds Document::Populate and keeps the parse's result.
class CParse {
 public:
  CParse(const char* text, std::size_t size, JsonDocumentBase& document) : stream_(text, size), handler_(document) {}

  bool operator()(JsonDocumentBase& /*document*/) {
    constexpr unsigned kFlags =
        rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag | rapidjson::kParseNumbersAsStringsFlag;
    rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, CJsonAllocator> reader;
    result_ = reader.Parse<kFlags>(stream_, handler_);
    return !result_.IsError();
  }

  const rapidjson::ParseResult& GetResult() const { return result_; }
  const char* GetProblem() const {
    return handler_.GetProblem() != nullptr ? handler_.GetProblem() : rapidjson::GetParseError_En(result_.Code());
  }

 private:
  rapidjson::MemoryStream stream_;
  CStrictHandler handler_;
  rapidjson::ParseResult result_;
};

[[noreturn]] void Fail(const std::string& name, const std::string& text, std::size_t offset, const char* problem) {
  throw CKVXException(kMalformedDocument, CStringHelper::ToVisible(name) + ":" +
                                              LineAndColumn(text.data(), std::min(offset, text.size())) + ": " +
                                              problem);
}

}  // namespace

std::shared_ptr<JsonDocument> ParseDocument(const std::string& text, const std::string& name) {
  const std::size_t begin =
      text.compare(0, std::strlen(kByteOrderMark), kByteOrderMark) == 0 ? std::strlen(kByteOrderMark) : 0;
  if (IsUtf16(text)) {
    Fail(name, text, 0, kUtf16Problem);
  }
  auto document = std::make_shared<JsonDocument>();
  CParse parse(text.data() + begin, text.size() - begin, *document);
  document->Populate(parse);
  if (parse.GetResult().IsError()) {
    Fail(name, text, begin + parse.GetResult().Offset(), parse.GetProblem());
  }
  // RapidJSON takes a NUL byte for the end of its input. Elsewhere the parse has already failed on one.
  if (const std::size_t nul = text.find('\0'); nul != std::string::npos) {
    Fail(name, text, nul, "a NUL byte follows the end of the document.");
  }
  return document;
}

}  // namespace kvx
