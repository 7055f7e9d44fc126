#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace metareview {

/// Takes a CSV text (RFC 4180, lines ended by CR LF or LF, a byte order mark or none) apart, row by row. Empty lines
/// are no rows.
class CCsvRows {
 public:
  /// `text` must stay; `name` is what messages call it.
  CCsvRows(std::string_view text, std::string name);

  /// Goes to the next row; false when there is none. Throws CKVXException (kvx::kMalformedDocument, "NAME:LINE: what is
  /// wrong") where quotes are not closed, or are where none may be.
  bool Next();

  const std::vector<std::string>& Fields() const { return fields_; }
  /// Whether the row has a line end behind it, which the last one of a text may lack.
  bool IsEnded() const { return isEnded_; }
  /// Throws CKVXException, with the line on which the row begins.
  [[noreturn]] void Fail(const std::string& problem) const;

 private:
  bool IsAtLineEnd() const;
  void SkipLineEnd();
  std::string Field();
  std::string QuotedField();

  std::string_view text_;
  std::string name_;
  std::size_t place_ = 0;
  std::size_t line_ = 1;
  std::size_t rowLine_ = 1;
  bool isEnded_ = false;
  std::vector<std::string> fields_;
};

}  // namespace metareview
