// A saved review of any text is refused on one line with a place, or is a review that every format can write and that
// is the same when it is saved and read again.
#include "fuzz/support/Failure.h"
#include "fuzz/support/Input.h"
#include "metareview2024/render/Render.h"
#include "metareview2024/render/ReviewReader.h"

namespace {

using fuzz::Require;

std::string Rendered(const metareview::SFormat& format, const metareview::SReview& review,
                     const metareview::CWords& words) {
  std::string text;
  metareview::SRenderOptions options;
  options.words = &words;
  format.write(review, options, [&](std::string_view part) { text += part; });
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  metareview::SReview review;
  const test::SError error =
      test::ErrorOf([&] { review = metareview::ReadReview(fuzz::Text(data, size), "review.json"); });
  if (!fuzz::Succeeded(error)) {
    fuzz::RequireOneLine(error.message);
    Require(error.message.find("review.json:") == 0, "a fault has a place", error.message);
    return 0;
  }
  const metareview::SFormat& json = *metareview::FindFormat("json");
  const std::string saved = Rendered(json, review, metareview::CWords::English());
  Require(Rendered(json, metareview::ReadReview(saved, "saved"), metareview::CWords::English()) == saved,
          "a review that is read again is the same", saved);
  for (const metareview::SLanguage& language : metareview::Languages()) {
    for (const metareview::SFormat& format : metareview::Formats()) {
      Require(!Rendered(format, review, *metareview::CWords::Find(language.code)).empty(),
              "every format says something", saved);
    }
  }
  return 0;
}
