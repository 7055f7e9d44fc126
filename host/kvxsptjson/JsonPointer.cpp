#include "kvxsptjson/JsonPointer.h"

#include <rapidjson/document.h>

#include <optional>

#include "kvxsptjson/JsonAllocator.h"
#include "kvxsptjson/JsonObject.h"

namespace kvx {

namespace {

/// Walks over JSON text that a parser has accepted already.
class CJsonWalker {
 public:
  explicit CJsonWalker(std::string_view text) : text_(text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text_.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
      at_ = kByteOrderMark.size();
    }
    SkipSpace();
  }

  std::size_t Position() const { return at_; }

  /// From the beginning of an object or array to that of a value in it; false, and anywhere, when it has none such.
  bool Enter(std::string_view step) {
    const char opening = Next();
    if (opening != '{' && opening != '[') {
      return false;
    }
    std::optional<std::size_t> found;
    std::size_t index = 0;
    Skip();
    while (Next() != '}' && Next() != ']' && Next() != '\0') {
      const bool isStep = opening == '{' ? Key() == step : std::to_string(index) == step;
      if (isStep) {
        found = at_;
      }
      SkipValue();
      if (Next() == ',') {
        Skip();
      }
      ++index;
    }
    at_ = found.value_or(at_);
    return found.has_value();
  }

 private:
  char Next() const { return at_ < text_.size() ? text_[at_] : '\0'; }

  void Skip() {
    ++at_;
    SkipSpace();
  }
  void SkipSpace() {
    at_ = text_.find_first_not_of(" \t\r\n", at_);
    if (at_ == std::string_view::npos) {
      at_ = text_.size();
    }
  }

  /// A member's name; what follows is its value.
  std::string Key() {
    const std::size_t begin = at_;
    SkipValue();
    const std::string_view token = text_.substr(begin, text_.rfind('"', at_ - 1) + 1 - begin);
    Skip();
    if (token.find('\\') == std::string_view::npos) {
      return std::string(token.substr(1, token.size() - 2));
    }
    JsonDocumentBase key;
    key.Parse(token.data(), token.size());
    return key.IsString() ? std::string(key.GetString(), key.GetStringLength()) : std::string();
  }

  void SkipValue() {
    std::size_t depth = 0;
    do {
      const char c = Next();
      if (c == '"') {
        SkipString();
      } else if (c == '{' || c == '[') {
        ++depth;
        Skip();
      } else if (c == '}' || c == ']') {
        --depth;
        Skip();
      } else if (c == ',' || c == ':') {
        Skip();
      } else {
        at_ = text_.find_first_of(" \t\r\n,]}", at_);
        SkipSpace();
      }
    } while (depth > 0 && at_ < text_.size());
  }

  void SkipString() {
    for (++at_; Next() != '"' && at_ < text_.size(); ++at_) {
      at_ += Next() == '\\' ? 1 : 0;
    }
    Skip();
  }

  std::string_view text_;
  std::size_t at_ = 0;
};

std::string Unescaped(std::string_view step) {
  std::string text;
  for (std::size_t i = 0; i < step.size(); ++i) {
    const bool isEscape = step[i] == '~' && i + 1 < step.size();
    text += !isEscape ? step[i] : step[i + 1] == '1' ? '/' : '~';
    i += isEscape ? 1 : 0;
  }
  return text;
}

}  // namespace

void AppendToJsonPointer(std::string& pointer, std::string_view key) {
  pointer += '/';
  for (const char c : key) {
    if (c == '~') {
      pointer += "~0";
    } else if (c == '/') {
      pointer += "~1";
    } else {
      pointer += c;
    }
  }
}

std::size_t FindJsonValue(std::string_view text, std::string_view pointer) {
  CJsonWalker walker(text);
  std::size_t position = walker.Position();
  while (!pointer.empty()) {
    const std::size_t end = pointer.find('/', 1);
    const bool isThere = walker.Enter(Unescaped(pointer.substr(1, end == std::string_view::npos ? end : end - 1)));
    if (!isThere) {
      break;
    }
    position = walker.Position();
    pointer.remove_prefix(end == std::string_view::npos ? pointer.size() : end);
  }
  return position;
}

}  // namespace kvx
