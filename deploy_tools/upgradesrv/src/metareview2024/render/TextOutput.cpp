#include "metareview2024/render/TextOutput.h"

#include <algorithm>
#include <array>
#include <vector>

#include "metareview2024/render/TextLayout.h"

namespace metareview {

namespace {

constexpr std::array<const char*, 12> kLabels = {"label.loss",     "label.block",    "label.attention", "label.safe",
                                                 "label.accepted", "label.outdated", "label.expired",   "label.stale",
                                                 "label.gone",     "label.accept",   "label.explain",   "label.prune"};

/// Of a terminal; empty for plain text.
std::string_view StyleCode(EStyle style) {
  switch (style) {
    case EStyle::kHeading:
      return "\x1B[1m";
    case EStyle::kLoss:
      return "\x1B[1;31m";
    case EStyle::kBlock:
      return "\x1B[1;35m";
    case EStyle::kAttention:
      return "\x1B[33m";
    case EStyle::kSafe:
      return "\x1B[32m";
    case EStyle::kFaint:
      return "\x1B[2m";
    case EStyle::kPlain:
      break;
  }
  return {};
}

std::size_t LabelWidth(const CWords& words) {
  std::size_t width = 0;
  for (const char* label : kLabels) {
    width = std::max(width, DisplayWidth(words.Text(label)));
  }
  return width + 1;
}

}  // namespace

CTextOutput::CTextOutput(const CWords& words, bool hasColour, const Sink& sink)
    : words_(words), hasColour_(hasColour), labelWidth_(LabelWidth(words)), output_(sink) {}

void CTextOutput::Line(std::string_view text, EStyle style) {
  output_.Write(Styled(text, style));
  output_.Write("\n");
}

void CTextOutput::Paragraph(const std::string& text, EStyle style) {
  for (const std::string& line : WrapText(text, kTextWidth)) {
    Line(line, style);
  }
}

void CTextOutput::Labelled(std::string_view label, EStyle style, const std::string& text) {
  std::string before = Label(label, style);
  for (const std::string& line : WrapText(text, WidthBesideLabels())) {
    Line(before + line);
    before.assign(labelWidth_, ' ');
  }
}

void CTextOutput::Indented(const std::string& text) {
  for (const std::string& line : WrapText(text, WidthBesideLabels())) {
    Line(std::string(labelWidth_, ' ') + line);
  }
}

void CTextOutput::LeftAndRight(const std::string& left, const std::string& right) {
  LeftAndRight("", left, right);
}

void CTextOutput::LabelledLeftAndRight(std::string_view label, EStyle style, const std::string& left,
                                       const std::string& right) {
  LeftAndRight(Label(label, style), left, right);
}

void CTextOutput::LeftAndRight(const std::string& label, const std::string& left, const std::string& right) {
  const std::size_t width = label.empty() ? kTextWidth : WidthBesideLabels();
  constexpr std::size_t kGap = 2;
  if (DisplayWidth(left) + kGap + DisplayWidth(right) > width) {
    Line(label + left);
    Line(PadLeft(right, kTextWidth));
  } else {
    Line(label + left + PadLeft(right, width - DisplayWidth(left)));
  }
}

std::string CTextOutput::Label(std::string_view label, EStyle style) const {
  const std::string_view text = words_.Text(label);
  return Styled(text, style) + std::string(labelWidth_ - DisplayWidth(text), ' ');
}

std::string CTextOutput::Styled(std::string_view text, EStyle style) const {
  const std::string_view code = hasColour_ ? StyleCode(style) : std::string_view();
  return code.empty() ? std::string(text) : std::string(code) + std::string(text) + "\x1B[0m";
}

}  // namespace metareview
