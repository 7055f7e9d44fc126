#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "kvxsptfile/InputFile.h"

/// A part of a file that moves forward over it, with a place in it. What is before the place is given up; right before
/// it is always a character that may be overwritten, and after the end of the window is room for kRoom more.
class CTextWindow {
 public:
  static constexpr std::size_t kRoom = 128;

  explicit CTextWindow(const std::string& path);

  std::size_t GetFileSize() const { return file_.GetSize(); }
  /// How much of the file is before the place.
  std::size_t GetPassed() const { return passed_ + place_ - 1; }

  char* Place() { return &text_[place_]; }
  std::size_t GetSize() const { return end_ - place_; }
  void Pass(std::size_t count) { place_ += count; }

  /// Passes white space; what comes then, 0 at the end of the file.
  char Peek();
  /// After white space.
  bool IsAtEnd();
  /// Passes a character that comes next, after white space.
  bool Take(char expected);
  /// Passes a text that comes next.
  bool Take(std::string_view expected);

  /// Moves the window to begin at the place and fills it.
  void Fill();
  /// Makes the window twice as large and fills it. False where the file has no more.
  bool Grow();

 private:
  kvx::CInputFile file_;
  std::vector<char> text_;
  // Of the file, before the window.
  std::size_t passed_ = 0;
  std::size_t place_ = 1;
  std::size_t end_ = 1;
};
