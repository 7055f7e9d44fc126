#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "metareview2024/Review.h"
#include "metareview2024/render/Render.h"

namespace upgradesrv {

/// The outputs that one command line asks for.
class CReviewOutputs {
 public:
  /// `requests`: "FORMAT", which means standard output, or "FORMAT=FILE" each; without any the default format on
  /// standard output. Requests that cannot be granted are kept for RequireValid(). `option` is theirs, for messages.
  explicit CReviewOutputs(const std::vector<std::string>& requests, std::string option = "-o");

  /// No output takes the place of one of these files from now on.
  void Protect(const std::vector<std::string>& inputs);

  /// Throws CTrouble for an unknown format, a file that is named twice, is protected or is where standard output or
  /// standard error goes, and standard output asked for twice.
  void RequireValid() const;

  /// Whether one of them is in this format.
  bool Has(const std::string& format) const;

  /// Writes them all, or throws CTrouble or CKVXException. Files are replaced as a whole, and none before all could be
  /// written.
  void Write(const metareview::SReview& review, const metareview::SRenderOptions& options) const;

  /// Replaces every file that was asked for, and can be written, by one that says that the review failed and why.
  void WriteFailed(const std::string& problem, const std::string& directory, const metareview::CWords& words) const;

  /// Does the same before something that may end the process, so that no earlier file passes for this call's. What
  /// cannot be written is found again when the review is.
  void WriteUnfinished(const std::string& directory, const metareview::CWords& words) const;

 private:
  using TroubleTaker = std::function<void(const std::exception&)>;

  struct SOutput {
    const metareview::SFormat* format = nullptr;
    /// Empty for standard output.
    std::string file;
  };

  void ReplaceFiles(const std::string& problem, const std::string& directory, const metareview::CWords& words,
                    const TroubleTaker& onTrouble) const;
  void WriteAll(const metareview::SReview& review, const metareview::SRenderOptions& options) const;

  std::string option_;
  std::vector<SOutput> outputs_;
  std::string problem_;
};

}  // namespace upgradesrv
