#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "metareview2024/Review.h"
#include "metareview2024/data/Sql.h"
#include "metareview2024/words/Words.h"

/// Reviews as text in a format. A review that failed is written as one that says so, in every format.
namespace metareview {

/// Takes the text of an output, part by part.
using Sink = std::function<void(std::string_view)>;

struct SRenderOptions {
  const CWords* words = &CWords::English();
  /// The text report's table alone.
  bool isTableOnly = false;
  /// Whether the text report may use a terminal's colours.
  bool hasColour = false;
  /// Which findings are failures to a test server: those that count for the exit status, see Counts().
  std::optional<ERisk> failOn = ERisk::kSafe;
  bool onlyNew = false;
  /// For whom the script is that counts stored values, and how long it may take for each table.
  EDialect dialect = EDialect::kPostgresql;
  std::chrono::seconds timeout{30};
};

struct SFormat {
  /// As the command line has it.
  std::string_view name;
  void (*write)(const SReview& review, const SRenderOptions& options, const Sink& sink);
};

/// All formats, the default one first.
const std::vector<SFormat>& Formats();

/// Null when there is no format of that name.
const SFormat* FindFormat(std::string_view name);

}  // namespace metareview
