#include "upgradesrv/review/ReviewOutputs.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <exception>
#include <string_view>
#include <utility>

#include "kvxsptexception/KVXException.h"
#include "kvxsptfile/AtomicFile.h"
#include "kvxsptfile/CanonicalPath.h"
#include "upgradesrv/Output.h"
#include "upgradesrv/OutputName.h"
#include "upgradesrv/Trouble.h"

namespace upgradesrv {
namespace {

using metareview::SFormat;

std::string FormatNames() {
  std::string names;
  for (const SFormat& format : metareview::Formats()) {
    names += (names.empty() ? "" : ", ") + std::string(format.name);
  }
  return names;
}

/// Whether a path leads to where the command writes anyway, as /dev/stdout does: a file would be replaced there, with
/// everything that was written to it.
bool IsStandardStream(const std::string& file) {
  struct stat named {};
  if (stat(file.c_str(), &named) != 0) {
    return false;
  }
  const std::array<int, 2> streams = {STDOUT_FILENO, STDERR_FILENO};
  return std::any_of(streams.begin(), streams.end(), [&named](int stream) {
    struct stat status {};
    return fstat(stream, &status) == 0 && status.st_dev == named.st_dev && status.st_ino == named.st_ino;
  });
}

/// Why a file was not saved. That nothing was changed holds for this file, but others then say that the review failed.
std::string SavingProblem(std::string problem) {
  constexpr std::string_view kPromise = "; nothing was changed";
  if (const std::size_t at = problem.rfind(kPromise); at != std::string::npos) {
    problem.replace(at, kPromise.size(), "; there is no review");
  }
  return problem;
}

void WriteTo(kvx::CAtomicFile& file, const SFormat& format, const metareview::SReview& review,
             const metareview::SRenderOptions& options) {
  format.write(review, options, [&file](std::string_view part) { file.Write(part.data(), part.size()); });
}

/// On a terminal, unless somebody has set NO_COLOR.
bool WantsColour() {
  const char* const noColour = std::getenv("NO_COLOR");
  const bool isRefused = noColour != nullptr && *noColour != '\0';
  return isatty(STDOUT_FILENO) != 0 && !isRefused;
}

void WriteToStandardOutput(const SFormat& format, const metareview::SReview& review,
                           metareview::SRenderOptions options) {
  // The text report guards its names by itself; its colours are for terminals.
  const bool isText = format.name == metareview::Formats().front().name;
  options.hasColour = isText && WantsColour();
  // A report that fails on its way must not be there in part.
  std::string text;
  format.write(review, options, [&text](std::string_view part) { text += part; });
  isText ? WriteGuardedOutput(text) : WriteOutput(text);
}

}  // namespace

CReviewOutputs::CReviewOutputs(const std::vector<std::string>& requests, std::string option)
    : option_(std::move(option)) {
  const auto fail = [this](const std::string& problem) {
    if (problem_.empty()) {
      problem_ = problem;
    }
  };
  for (const std::string& request : requests) {
    const std::size_t equals = request.find('=');
    SOutput output;
    output.format = metareview::FindFormat(request.substr(0, equals));
    if (output.format == nullptr) {
      fail(option_ + " " + request + ": unknown format; the formats are " + FormatNames());
      // Its file says as plain text that the review failed.
      output.format = &metareview::Formats().front();
    }
    if (equals != std::string::npos) {
      output.file = request.substr(equals + 1);
      if (output.file.empty()) {
        fail(option_ + " " + request + ": the file's name is empty; leave out \"=\" for standard output");
        continue;
      }
      if (const std::string problem = OutputNameProblem(output.file, "file"); !problem.empty()) {
        fail((option_ + " " + request + ": ").append(problem).append(", or leave out \"=-\" for standard output"));
        continue;
      }
      if (IsStandardStream(output.file)) {
        fail(option_ + " " + request +
             ": the file is the command's own standard output or standard error; leave out \"=" + output.file +
             "\" for standard output");
        continue;
      }
    }
    const auto same = std::find_if(outputs_.begin(), outputs_.end(), [&output](const SOutput& other) {
      return output.file.empty() ? other.file.empty() : !other.file.empty() && kvx::IsSameFile(other.file, output.file);
    });
    if (same != outputs_.end()) {
      fail(output.file.empty()
               ? option_ + ": only one format can go to standard output; give the others a file: FORMAT=FILE"
               : option_ + ": the file " + output.file + " is named twice; give each format a file of its own");
      continue;
    }
    outputs_.push_back(output);
  }
  if (requests.empty()) {
    outputs_.push_back({&metareview::Formats().front(), ""});
  }
}

void CReviewOutputs::Protect(const std::vector<std::string>& inputs) {
  const auto isInput = [&inputs](const SOutput& output) {
    return !output.file.empty() && std::any_of(inputs.begin(), inputs.end(), [&output](const std::string& input) {
      return kvx::IsSameFile(input, output.file);
    });
  };
  const auto found = std::find_if(outputs_.begin(), outputs_.end(), isInput);
  if (found != outputs_.end() && problem_.empty()) {
    problem_ = option_ + ": the file " + found->file + " is one that the review is made from; give another file";
  }
  outputs_.erase(std::remove_if(outputs_.begin(), outputs_.end(), isInput), outputs_.end());
}

void CReviewOutputs::RequireValid() const {
  if (!problem_.empty()) {
    throw CTrouble(problem_);
  }
}

bool CReviewOutputs::Has(const std::string& format) const {
  return std::any_of(outputs_.begin(), outputs_.end(),
                     [&format](const SOutput& output) { return output.format->name == format; });
}

void CReviewOutputs::Write(const metareview::SReview& review, const metareview::SRenderOptions& options) const {
  try {
    WriteAll(review, options);
  } catch (const CKVXException& error) {
    throw CTrouble(SavingProblem(error.what()));
  }
}

void CReviewOutputs::WriteAll(const metareview::SReview& review, const metareview::SRenderOptions& options) const {
  std::vector<std::unique_ptr<kvx::CAtomicFile>> files;
  for (const SOutput& output : outputs_) {
    if (!output.file.empty()) {
      files.push_back(std::make_unique<kvx::CAtomicFile>(output.file));
      WriteTo(*files.back(), *output.format, review, options);
    }
  }
  for (const SOutput& output : outputs_) {
    if (output.file.empty()) {
      WriteToStandardOutput(*output.format, review, options);
    }
  }
  for (const std::unique_ptr<kvx::CAtomicFile>& file : files) {
    file->Commit();
  }
}

void CReviewOutputs::WriteFailed(const std::string& problem, const std::string& directory,
                                 const metareview::CWords& words) const {
  ReplaceFiles(problem, directory, words, [&problem](const std::exception& error) {
    // The review has failed already; this is why an earlier file may still be there.
    const std::string text = SavingProblem(error.what());
    if (CTrouble(text).what() != problem) {
      WriteError(text);
    }
  });
}

void CReviewOutputs::WriteUnfinished(const std::string& directory, const metareview::CWords& words) const {
  ReplaceFiles("the run did not end", directory, words, [](const std::exception&) {});
}

void CReviewOutputs::ReplaceFiles(const std::string& problem, const std::string& directory,
                                  const metareview::CWords& words, const TroubleTaker& onTrouble) const {
  for (const SOutput& output : outputs_) {
    if (output.file.empty()) {
      continue;
    }
    try {
      metareview::SReview review;
      review.complete = false;
      review.problem = problem;
      review.directory = directory;
      metareview::SRenderOptions options;
      options.words = &words;
      kvx::CAtomicFile file(output.file);
      WriteTo(file, *output.format, review, options);
      file.Commit();
    } catch (const std::exception& error) {
      onTrouble(error);
    }
  }
}

}  // namespace upgradesrv
