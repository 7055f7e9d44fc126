#include <cstdio>
#include <map>
#include <string>

#include "metareview2024/MadeReview.h"
#include "metareview2024/render/GeneratedReview.h"
#include "metareview2024/render/Render.h"

// write_review REVIEW FORMAT LANGUAGE: writes a review that tests look at. REVIEW is a number of findings, or a word.

namespace {

using namespace metareview;

SReview FailedReview() {
  SReview review;
  review.complete = false;
  review.problem = "client.json:3:1: <no> metamodel";
  return review;
}

SReview ReviewWithoutBase() {
  return test::MadeReview({test::MadeChange("class/Part/table_name", "table-moved", "T_A", "T_B", EOrigin::kUnknown),
                           test::Made("class/Own", EChange::kInserted, "class-inserted", EOrigin::kUnknown)});
}

SReview NamedReview(const std::string& name) {
  if (name == "hostile") {
    return test::HostileReview();
  }
  if (name == "failed") {
    return FailedReview();
  }
  if (name == "equal") {
    return test::MadeReview({});
  }
  if (name == "no-base") {
    SReview review = ReviewWithoutBase();
    review.base.reset();
    return review;
  }
  return test::GeneratedReview(std::stoul(name));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fputs("usage: write_review REVIEW FORMAT LANGUAGE\n", stderr);
    return 2;
  }
  SRenderOptions options;
  options.words = CWords::Find(argv[3]);
  const SFormat* format = FindFormat(argv[2]);
  if (options.words == nullptr || format == nullptr) {
    std::fputs("write_review: no such format or language\n", stderr);
    return 2;
  }
  format->write(NamedReview(argv[1]), options,
                [](std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); });
  return std::fclose(stdout) == 0 ? 0 : 2;
}
