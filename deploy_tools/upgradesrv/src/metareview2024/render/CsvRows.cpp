#include "metareview2024/render/CsvRows.h"

#include <algorithm>
#include <utility>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"

namespace metareview {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

CCsvRows::CCsvRows(std::string_view text, std::string name) : text_(text), name_(std::move(name)) {
  if (text_.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
    place_ = kByteOrderMark.size();
  }
}

bool CCsvRows::Next() {
  while (place_ < text_.size() && IsAtLineEnd()) {
    SkipLineEnd();
  }
  rowLine_ = line_;
  fields_.clear();
  if (place_ == text_.size()) {
    return false;
  }
  fields_.push_back(Field());
  while (place_ < text_.size() && text_[place_] == ',') {
    ++place_;
    fields_.push_back(Field());
  }
  isEnded_ = place_ < text_.size();
  return true;
}

void CCsvRows::Fail(const std::string& problem) const {
  throw CKVXException(kvx::kMalformedDocument, name_ + ":" + std::to_string(rowLine_) + ": " + problem);
}

bool CCsvRows::IsAtLineEnd() const {
  return text_[place_] == '\n' || text_.substr(place_, 2) == "\r\n";
}

void CCsvRows::SkipLineEnd() {
  place_ += text_[place_] == '\n' ? 1 : 2;
  ++line_;
}

std::string CCsvRows::Field() {
  if (place_ < text_.size() && text_[place_] == '"') {
    return QuotedField();
  }
  const std::size_t begin = place_;
  while (place_ < text_.size() && text_[place_] != ',' && !IsAtLineEnd()) {
    if (text_[place_] == '"') {
      Fail("there is a quotation mark within a field that does not begin with one");
    }
    ++place_;
  }
  return std::string(text_.substr(begin, place_ - begin));
}

std::string CCsvRows::QuotedField() {
  std::string field;
  for (++place_;; place_ += 2) {
    const std::size_t end = text_.find('"', place_);
    if (end == std::string_view::npos) {
      Fail("a quotation mark is not closed");
    }
    const std::string_view part = text_.substr(place_, end - place_);
    field += part;
    line_ += static_cast<std::size_t>(std::count(part.begin(), part.end(), '\n'));
    place_ = end;
    if (text_.substr(place_, 2) != "\"\"") {
      break;
    }
    field += '"';
  }
  ++place_;
  if (place_ < text_.size() && text_[place_] != ',' && !IsAtLineEnd()) {
    Fail("there is text behind a quotation mark that ends a field");
  }
  return field;
}

}  // namespace metareview
