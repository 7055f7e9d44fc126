#include "metareview2024/words/Verdict.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "metareview2024/MadeReview.h"

namespace metareview {
namespace {

using test::Accepted;
using test::Made;
using test::MadeReview;

const SFinding kLoss = Made("class/Lost", EChange::kInserted, "class-withdrawn", EOrigin::kVendor);
const SFinding kBlock = Made("class/Taken", EChange::kDeleted, "class-identity-taken", EOrigin::kVendor);
const SFinding kAttention = Made("class/Back", EChange::kDeleted, "class-deleted");
const SFinding kConflict = Made("class/Both", EChange::kDeleted, "class-deleted", EOrigin::kBoth);
const SFinding kSafe = Made("class/Own", EChange::kInserted, "class-inserted");

std::string Verdict(const std::vector<SFinding>& findings, const char* language = "en") {
  return Plain(VerdictSentence(*CWords::Find(language), MadeReview(findings)));
}

TEST(VerdictTest, AFailedReviewHasNoAnswer) {
  SReview review;
  review.complete = false;
  EXPECT_EQ(Plain(VerdictSentence(CWords::English(), review)),
            "No answer. The review did not finish, so nothing on this page may be taken for a result.");
}

TEST(VerdictTest, LossBlockAndConflictsHaveToBeDecided) {
  EXPECT_EQ(Verdict({kLoss, kBlock, kConflict, kAttention, kSafe}), "Not yet. 3 differences have to be decided first.");
}

TEST(VerdictTest, OneDifferenceHasToBeDecided) {
  EXPECT_EQ(Verdict({kSafe, kConflict}), "Not yet. One difference has to be decided first.");
}

TEST(VerdictTest, ThingsWorkDifferently) {
  EXPECT_EQ(Verdict({kAttention, kAttention, kSafe}),
            "Yes, with care. Nothing stored is at risk, but 2 things work differently afterwards.");
  EXPECT_EQ(Verdict({kAttention, kSafe}),
            "Yes, with care. Nothing stored is at risk, but one thing works differently afterwards.");
}

TEST(VerdictTest, DifferencesAreSafe) {
  EXPECT_EQ(Verdict({kSafe, kSafe}), "Yes. 2 differences are left, and none of them touches anything stored.");
  EXPECT_EQ(Verdict({kSafe}), "Yes. One difference is left, and it touches nothing stored.");
}

TEST(VerdictTest, AcceptedDifferencesDoNotCount) {
  EXPECT_EQ(Verdict({Accepted(kLoss, {"known", {}, {}})}), "Yes. Every difference has been accepted.");
  EXPECT_EQ(Verdict({Accepted(kLoss, {"known", {}, {}}), kSafe}),
            "Yes. One difference is left, and it touches nothing stored.");
}

TEST(VerdictTest, NothingDiffers) {
  EXPECT_EQ(Verdict({}), "Yes. Installation and upgrade do not differ.");
}

TEST(VerdictTest, NumbersAreSeparatedAsTheLanguageDoes) {
  const std::vector<SFinding> many(1234, kSafe);
  EXPECT_EQ(Verdict(many), "Yes. 1,234 differences are left, and none of them touches anything stored.");
  EXPECT_EQ(Verdict(many, "de"), "Ja. 1.234 Abweichungen bleiben, und keine berührt etwas Gespeichertes.");
}

}  // namespace
}  // namespace metareview
