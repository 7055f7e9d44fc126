#include "metareview2024/render/TextTotals.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "metareview2024/Totals.h"
#include "metareview2024/render/TextLayout.h"

namespace metareview {

namespace {

// Of a row: the risks, what is accepted, and the sum.
constexpr std::size_t kNumbers = kRisks.size() + 2;
using Numbers = std::array<std::size_t, kNumbers>;

struct SRow {
  std::string name;
  Numbers numbers{};
};

Numbers NumbersOf(const STotals& totals) {
  Numbers numbers{};
  std::copy(totals.risks.begin(), totals.risks.end(), numbers.begin());
  numbers[kRisks.size()] = totals.accepted;
  for (std::size_t i = 0; i + 1 < kNumbers; ++i) {
    numbers.back() += numbers.at(i);
  }
  return numbers;
}

std::array<std::string, kNumbers> Heads(const CWords& words) {
  std::array<std::string, kNumbers> heads;
  for (const ERisk risk : kRisks) {
    heads.at(static_cast<std::size_t>(risk)) = words.Text("risk." + std::string(NameOf(risk)));
  }
  heads.at(kRisks.size()) = words.Text("total.accepted");
  heads.back() = words.Text("total.total");
  return heads;
}

}  // namespace

void WriteTotals(const SReview& review, const CWords& words, CTextOutput& output) {
  const std::array<STotals, kKinds.size()> totals = CountTotals(review);
  std::vector<SRow> rows;
  SRow all{std::string(words.Text("total.all")), {}};
  for (const EKind kind : review.elements) {
    const Numbers numbers = NumbersOf(totals.at(static_cast<std::size_t>(kind)));
    rows.push_back({std::string(words.Text("kinds." + std::string(NameOf(kind)))), numbers});
    std::transform(numbers.begin(), numbers.end(), all.numbers.begin(), all.numbers.begin(), std::plus<>());
  }
  rows.push_back(all);

  constexpr std::size_t kGap = 3;
  constexpr std::size_t kMinWidth = 6;
  std::size_t nameWidth = 0;
  for (const SRow& row : rows) {
    nameWidth = std::max(nameWidth, DisplayWidth(row.name));
  }
  const std::array<std::string, kNumbers> heads = Heads(words);
  std::array<std::size_t, kNumbers> widths{};
  std::string head(nameWidth, ' ');
  for (std::size_t i = 0; i < kNumbers; ++i) {
    // The last row has the largest number of each column.
    widths.at(i) =
        kGap + std::max({kMinWidth, DisplayWidth(heads.at(i)), DisplayWidth(words.Number(rows.back().numbers.at(i)))});
    head += PadLeft(heads.at(i), widths.at(i));
  }
  output.Line(head, EStyle::kHeading);
  for (const SRow& row : rows) {
    std::string line = PadRight(row.name, nameWidth);
    for (std::size_t i = 0; i < kNumbers; ++i) {
      line += PadLeft(words.Number(row.numbers.at(i)), widths.at(i));
    }
    output.Line(line);
  }
}

}  // namespace metareview
