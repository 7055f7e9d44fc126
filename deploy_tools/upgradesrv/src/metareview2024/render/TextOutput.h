#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "metareview2024/render/OutputBuffer.h"
#include "metareview2024/words/Words.h"

namespace metareview {

/// How wide the text report is, on a terminal and in a file.
constexpr std::size_t kTextWidth = 100;

enum class EStyle { kPlain, kHeading, kLoss, kBlock, kAttention, kSafe, kFaint };

/// Writes the lines of the text report. Everything it is given must be guarded already.
class CTextOutput {
 public:
  CTextOutput(const CWords& words, bool hasColour, const Sink& sink);

  void EmptyLine() { output_.Write("\n"); }
  void Line(std::string_view text, EStyle style = EStyle::kPlain);
  /// A paragraph of any length.
  void Paragraph(const std::string& text, EStyle style = EStyle::kPlain);
  /// A text beside a label of the catalogue, "label.loss" for example; further lines begin below the text.
  void Labelled(std::string_view label, EStyle style, const std::string& text);
  /// The same without the label.
  void Indented(const std::string& text);
  /// A text at the left and one at the right of the same line, of two lines where they do not fit.
  void LeftAndRight(const std::string& left, const std::string& right);
  void LabelledLeftAndRight(std::string_view label, EStyle style, const std::string& left, const std::string& right);
  void Flush() { output_.Flush(); }

  /// How many columns are left beside the labels.
  std::size_t WidthBesideLabels() const { return kTextWidth - labelWidth_; }

 private:
  std::string Label(std::string_view label, EStyle style) const;
  std::string Styled(std::string_view text, EStyle style) const;
  void LeftAndRight(const std::string& label, const std::string& left, const std::string& right);

  const CWords& words_;
  bool hasColour_;
  std::size_t labelWidth_;
  COutputBuffer output_;
};

}  // namespace metareview
