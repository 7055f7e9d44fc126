#include "upgrademeta2024/storage/document/TextWindow.h"

#include <algorithm>

namespace {

/// Of the text that is in memory at once: fits into a processor's cache.
constexpr std::size_t kSize = std::size_t{1024} * 1024;

}  // namespace

CTextWindow::CTextWindow(const std::string& path) : file_(path, /*mayBePipe=*/false), text_(kSize + kRoom) {
  Fill();
}

char CTextWindow::Peek() {
  constexpr std::string_view kSpace = " \n\r\t";
  for (;;) {
    while (place_ < end_ && kSpace.find(text_[place_]) != std::string_view::npos) {
      ++place_;
    }
    if (place_ < end_) {
      return text_[place_];
    }
    Fill();
    if (place_ == end_) {
      return 0;
    }
  }
}

bool CTextWindow::IsAtEnd() {
  Peek();
  return place_ == end_;
}

bool CTextWindow::Take(char expected) {
  const bool isNext = Peek() == expected;
  Pass(isNext ? 1 : 0);
  return isNext;
}

bool CTextWindow::Take(std::string_view expected) {
  if (GetSize() < expected.size()) {
    Fill();
  }
  const bool isNext = std::string_view(Place(), GetSize()).substr(0, expected.size()) == expected;
  Pass(isNext ? expected.size() : 0);
  return isNext;
}

void CTextWindow::Fill() {
  std::copy(text_.begin() + static_cast<std::ptrdiff_t>(place_), text_.begin() + static_cast<std::ptrdiff_t>(end_),
            text_.begin() + 1);
  passed_ += place_ - 1;
  end_ -= place_ - 1;
  place_ = 1;
  std::size_t count = 1;
  while (count > 0 && end_ + kRoom < text_.size()) {
    count = file_.Read(&text_[end_], text_.size() - kRoom - end_);
    end_ += count;
  }
}

bool CTextWindow::Grow() {
  const std::size_t before = GetSize();
  text_.resize(2 * text_.size());
  Fill();
  return GetSize() > before;
}
