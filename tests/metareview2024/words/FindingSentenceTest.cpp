#include "metareview2024/words/FindingSentence.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "metareview2024/MadeReview.h"

namespace metareview {
namespace {

using test::Counted;
using test::Made;
using test::MadeChange;
using test::MadeReview;

std::string Say(const SReview& review, const char* language = "en") {
  return Plain(CFindingSentences(*CWords::Find(language), review).Of(review.findings.front()));
}

std::string Say(const SFinding& finding, const char* language = "en") {
  return Say(MadeReview({finding}), language);
}

SFinding Default() {
  return MadeChange("class/Part/property/Code/default_value", "default-changes", "a", "b");
}
SFinding Shortened() {
  return MadeChange("class/Part/property/Code/length", "length-shrinks", 48U, 32U);
}

constexpr const char* kDefault = "The upgrade lets new objects start with b in Code instead of a.";
constexpr const char* kShortened = "The upgrade shortens Code from 48 to 32 characters.";

TEST(FindingSentenceTest, SaysWhatHappens) {
  EXPECT_EQ(Say(Default()), kDefault);
}

TEST(FindingSentenceTest, BothSidesChangedIt) {
  SFinding finding = Default();
  finding.origin = EOrigin::kBoth;
  finding.base = "c";
  EXPECT_EQ(Say(finding), std::string(kDefault) + " Both sides changed it from c.");
}

TEST(FindingSentenceTest, BothSidesChangedItFromZero) {
  SFinding finding = MadeChange("class/Part/property/Code/length", "length-grows", 32U, 48U, EOrigin::kBoth);
  finding.base = 0U;
  EXPECT_EQ(Say(finding), "The upgrade lengthens Code from 32 to 48 characters. Both sides changed it from 0.");
}

TEST(FindingSentenceTest, BothSidesSetWhatWasEmpty) {
  SFinding finding = Default();
  finding.origin = EOrigin::kBoth;
  finding.base = "";
  EXPECT_EQ(Say(finding), std::string(kDefault) + " Both sides set it; it was empty before.");
}

TEST(FindingSentenceTest, BothSidesHaveWhatTheBaseDoesNot) {
  SFinding finding = Default();
  finding.origin = EOrigin::kBoth;
  finding.base.reset();
  EXPECT_EQ(Say(finding), std::string(kDefault) + " Both sides have it, and it was not shipped before.");
}

TEST(FindingSentenceTest, AWholeThingOfBothSidesHasItsOwnSentence) {
  EXPECT_EQ(
      Say(Made("behavior/Numbered/method/Next", EChange::kDeleted, "method-deleted", EOrigin::kBoth)),
      "Method Next was removed from behavior Numbered here, and the upgrade ships a changed one. The upgrade adds "
      "it again.");
}

TEST(FindingSentenceTest, SaysThatValuesWereNotCounted) {
  EXPECT_EQ(Say(Shortened()), std::string(kShortened) + " Stored values were not counted.");
}

TEST(FindingSentenceTest, SaysHowManyValuesWereCounted) {
  EXPECT_EQ(Say(Counted(Shortened(), 137, 20341)),
            std::string(kShortened) + " 137 of 20,341 stored values are longer and would be cut or refused.");
  EXPECT_EQ(Say(Counted(Shortened(), 1, 20341)),
            std::string(kShortened) + " One of 20,341 stored values is longer and would be cut or refused.");
  EXPECT_EQ(Say(Counted(Shortened(), 0, 20341)), std::string(kShortened) + " None of 20,341 stored values is longer.");
}

TEST(FindingSentenceTest, SaysWhyValuesCouldNotBeCounted) {
  EXPECT_EQ(Say(test::NotCountable(Shortened(), "no column F_CODE in T_PART")),
            std::string(kShortened) + " Stored values could not be counted: no column F_CODE in T_PART.");
}

TEST(FindingSentenceTest, SaysThatACountMayBeTooLow) {
  EXPECT_EQ(Say(test::CountedInPart(Shortened(), 137, 20341, "T_PART may hide rows")),
            std::string(kShortened) +
                " 137 of 20,341 stored values are longer and would be cut or refused. This count "
                "may be too low: T_PART may hide rows.");
  EXPECT_EQ(Say(test::CountedInPart(Shortened(), 0, 20341, "T_PART may hide rows")),
            std::string(kShortened) +
                " None of 20,341 stored values is longer. This count may be too low: T_PART may "
                "hide rows.");
  EXPECT_EQ(Say(test::CountedInPart(Shortened(), 0, 0, "T_PART may hide rows")),
            std::string(kShortened) + " Nothing is stored there. This count may be too low: T_PART may hide rows.");
}

TEST(FindingSentenceTest, ThereIsNoNumberOfNothing) {
  EXPECT_EQ(Say(Counted(Shortened(), 0, 0)), std::string(kShortened) + " Nothing is stored there.");
  EXPECT_EQ(Say(Counted(MadeChange("class/Part/property/Code/type", "type-narrowed", "int32", "int8"), 0, 0)),
            "The upgrade changes the type of Code from int32 to int8. Values outside the range of int8 would not fit. "
            "Nothing is stored there.");
}

TEST(FindingSentenceTest, AnEmptyTableHasItsOwnWords) {
  EXPECT_EQ(
      Say(Counted(MadeChange("class/Part/table_name", "table-moved", "T_A", "T_B"), 0, 0)),
      "The upgrade keeps Part in table T_B instead of T_A. The rows in T_A would be left behind. There are none.");
}

TEST(FindingSentenceTest, SaysTheRiskWithoutTheCount) {
  SFinding finding = Counted(Shortened(), 0, 9);
  finding.risk = ERisk::kAttention;
  finding.riskWithoutData = ERisk::kLoss;
  EXPECT_EQ(Say(finding),
            std::string(kShortened) + " None of 9 stored values is longer. Without the count it would be judged loss.");
}

TEST(FindingSentenceTest, SaysThatADecisionIsOutdated) {
  SReview review = MadeReview({Shortened()});
  SDecision decision;
  decision.path = "class/part/property/CODE/length";
  decision.original = 32U;
  decision.client = 40U;
  review.outdated.push_back({decision, 32U, 48U});
  EXPECT_EQ(Say(review), std::string(kShortened) +
                             " Stored values were not counted. The decision on record is about 40 here and 32 shipped, "
                             "so it no longer applies.");
}

TEST(FindingSentenceTest, ADecisionOfAnotherChangeIsNotAboutIt) {
  SReview review = MadeReview({Default()});
  SDecision decision;
  decision.path = "class/Part/property/Code/default_value";
  decision.change = EChange::kDeleted;
  decision.acceptance.until = "2026-10-31";
  review.expired.push_back(decision);
  EXPECT_EQ(Say(review), kDefault);
}

TEST(FindingSentenceTest, SaysThatADecisionExpired) {
  SReview review = MadeReview({Default()});
  SDecision decision;
  decision.path = "class/Part/property/Code/default_value";
  decision.acceptance.until = "2026-10-31";
  review.expired.push_back(decision);
  EXPECT_EQ(Say(review), std::string(kDefault) + " The decision on record expired on 2026-10-31.");
}

TEST(FindingSentenceTest, SaysThatADecisionWithAWildcardExpired) {
  SReview review = MadeReview({Default()});
  SDecision decision;
  decision.path = "class/*/property/Code/default_value";
  decision.acceptance.until = "2026-10-31";
  review.expired.push_back(decision);
  EXPECT_EQ(Say(review), std::string(kDefault) + " The decision on record expired on 2026-10-31.");
}

TEST(FindingSentenceTest, OfSeveralWildcardsTheOneThatMatchesExpired) {
  SReview review = MadeReview({Default()});
  SDecision decision;
  decision.path = "class/*/property/Code/default_value";
  decision.acceptance.until = "2026-10-31";
  SDecision other = decision;
  other.path = "link/*/property/*/default_value";
  other.acceptance.until = "2025-01-31";
  review.expired.push_back(other);
  review.expired.push_back(decision);
  EXPECT_EQ(Say(review), std::string(kDefault) + " The decision on record expired on 2026-10-31.");
}

TEST(FindingSentenceTest, ADecisionWithAWildcardHasNeverBeenAboutALoss) {
  SReview review = MadeReview({Shortened()});
  SDecision decision;
  decision.path = "class/*/property/Code/length";
  decision.acceptance.until = "2026-10-31";
  review.expired.push_back(decision);
  EXPECT_EQ(Say(review), std::string(kShortened) + " Stored values were not counted.");
}

TEST(FindingSentenceTest, AnAcceptedFindingNeedsNoOtherDecision) {
  SReview review = MadeReview({test::Accepted(Default(), {"known", {}, {}})});
  SDecision decision;
  decision.path = "class/*/property/Code/default_value";
  decision.acceptance.until = "2026-10-31";
  review.expired.push_back(decision);
  EXPECT_EQ(Say(review), kDefault);
}

TEST(FindingSentenceTest, TheClausesFollowOneOrder) {
  SFinding finding = Counted(Shortened(), 2, 9);
  finding.origin = EOrigin::kBoth;
  finding.base = 36U;
  finding.riskWithoutData = ERisk::kBlock;
  SReview review = MadeReview({finding});
  SDecision decision;
  decision.path = finding.path;
  decision.original = 1U;
  decision.client = 2U;
  decision.acceptance.until = "2026-10-31";
  review.outdated.push_back({decision, 32U, 48U});
  review.expired.push_back(decision);
  EXPECT_EQ(
      Say(review),
      "The upgrade shortens Code from 48 to 32 characters. 2 of 9 stored values are longer and would be cut or "
      "refused. Both sides changed it from 36. Without the count it would be judged block. The decision on record "
      "is about 2 here and 1 shipped, so it no longer applies. The decision on record expired on 2026-10-31.");
}

TEST(FindingSentenceTest, NamesAreSpelledAsTheyAre) {
  EXPECT_EQ(Say(Made("class/a~1b~0c~2d", EChange::kInserted, "class-inserted")),
            "Only this installation has class a/b~c*d. The upgrade leaves it alone.");
}

TEST(FindingSentenceTest, ANumberDecidesOnTheForm) {
  EXPECT_EQ(Say(Counted(MadeChange("class/A/property/P/length", "length-shrinks", 2U, 1U), 0, 1)),
            "The upgrade shortens P from 2 to 1 character. None of 1 stored values is longer.");
}

TEST(FindingSentenceTest, WithoutANumberItTakesTheFormForMany) {
  const std::string notCounted = " Stored values were not counted.";
  EXPECT_EQ(Say(MadeChange("class/A/property/P/max", "length-shrinks", "9", "1")),
            "The upgrade shortens P from 9 to 1 characters." + notCounted);
  EXPECT_EQ(Say(Made("class/A/property/P", EChange::kInserted, "length-shrinks")),
            "The upgrade shortens P from  to  characters." + notCounted);
}

TEST(FindingSentenceTest, NothingStandsForWhatIsNotKnown) {
  SFinding withIdentity = Made("class/A", EChange::kDeleted, "class-identity-taken");
  SFinding withColumn = Made("class/A/property/P", EChange::kDeleted, "property-field-taken");
  withIdentity.taken = std::make_shared<const STaken>(STaken{"link/L", {}, {}, {}});
  withColumn.taken = std::make_shared<const STaken>(STaken{"class/A/property/Own", {}, {}, {}});
  EXPECT_EQ(Say(withIdentity), "The upgrade adds class A with table , which link L already has here.");
  EXPECT_EQ(Say(withColumn),
            "The upgrade adds property P to class A with column , which property Own already uses here.");
  withIdentity.taken = nullptr;
  withColumn.taken = nullptr;
  EXPECT_EQ(Say(withIdentity), "The upgrade adds class A with , which  already has here.");
  EXPECT_EQ(Say(withColumn), "The upgrade adds property P to class A with column , which  already uses here.");
  SReview review = MadeReview({Default()});
  SDecision decision;
  decision.path = "class/Part/property/Code/default_value";
  review.expired.push_back(decision);
  EXPECT_EQ(Say(review), std::string(kDefault) + " The decision on record expired on .");
}

TEST(FindingSentenceTest, OtherLanguagesJoinAndCountInTheirWay) {
  EXPECT_EQ(Say(Counted(Shortened(), 1, 20341), "de"),
            "Das Upgrade kürzt Code von 48 auf 32 Zeichen. Einer von 20.341 gespeicherten Werten ist länger und würde "
            "gekürzt oder abgelehnt.");
  EXPECT_EQ(Say(Counted(Shortened(), 2, 20341), "fr"),
            "La mise à niveau raccourcit Code de 48 à 32 caractères. 2 valeurs stockées sur 20\u202F341 sont plus "
            "longues et seraient coupées ou refusées.");
  EXPECT_EQ(Say(Counted(Shortened(), 2, 20341), "zh"),
            "升级将 Code 由 48 个字符缩短为 32 个字符。20,341 个存储值中有 2 个过长，会被截断或拒绝。");
  EXPECT_EQ(Say(Shortened(), "ja"),
            "アップグレードは Code を 48 文字から 32 文字に短縮します。保存値は数えていません。");
  EXPECT_EQ(Say(Shortened(), "es"),
            "La actualización acorta Code de 48 a 32 caracteres. No se contaron los valores guardados.");
}

TEST(FindingSentenceTest, OtherLanguagesSayThatACountMayBeTooLow) {
  const SFinding finding = test::CountedInPart(Shortened(), 0, 0, "?");
  EXPECT_EQ(Say(finding, "de"),
            "Das Upgrade kürzt Code von 48 auf 32 Zeichen. Dort ist nichts gespeichert. Diese Zahl kann zu niedrig "
            "sein: ?.");
  EXPECT_EQ(Say(finding, "fr"),
            "La mise à niveau raccourcit Code de 48 à 32 caractères. Rien n’y est stocké. Ce nombre peut être trop "
            "bas\u00A0: ?.");
  EXPECT_EQ(Say(finding, "es"),
            "La actualización acorta Code de 48 a 32 caracteres. Allí no hay nada guardado. Este número puede ser "
            "demasiado bajo: ?.");
  EXPECT_EQ(Say(finding, "zh"), "升级将 Code 由 48 个字符缩短为 32 个字符。其中没有任何存储内容。此数目可能偏低：?。");
  EXPECT_EQ(Say(finding, "ja"),
            "アップグレードは Code を 48 文字から 32 文字に短縮します。そこには何も保存されていません。この件数は実際"
            "より少ない可能性があります: ?。");
}

TEST(FindingSentenceTest, OtherLanguagesInflectTheElement) {
  const SFinding finding = Made("link/Uses/property/Count", EChange::kDeleted, "property-new", EOrigin::kVendor);
  EXPECT_EQ(Say(finding, "de"),
            "Das Upgrade fügt der Beziehung Uses die Eigenschaft Count hinzu. Sie wurde zuvor nicht ausgeliefert.");
  EXPECT_EQ(Say(finding, "fr"),
            "La mise à niveau ajoute au lien Uses la propriété Count. Elle n’était pas livrée auparavant.");
  EXPECT_EQ(Say(finding, "es"), "La actualización añade al vínculo Uses la propiedad Count. Antes no se entregaba.");
  const SFinding back = Made("behavior/Numbered/method/Next", EChange::kDeleted, "method-deleted");
  EXPECT_EQ(Say(back, "de"),
            "Methode Next des Verhaltens Numbered wurde hier entfernt. Das Upgrade fügt sie wieder hinzu.");
  EXPECT_EQ(Say(back, "fr"),
            "La méthode Next du comportement Numbered a été supprimée ici. La mise à niveau l’ajoute de nouveau.");
  EXPECT_EQ(Say(back, "es"),
            "El método Next del comportamiento Numbered se eliminó aquí. La actualización lo añade de nuevo.");
}

TEST(FindingSentenceTest, SaysWhoAcceptedIt) {
  const CWords& words = CWords::English();
  EXPECT_EQ(Plain(AcceptanceSentence(words, {"fine", {}, {}})), "Accepted: fine");
  EXPECT_EQ(Plain(AcceptanceSentence(words, {"fine", "jo", {}})), "Accepted by jo: fine");
  EXPECT_EQ(Plain(AcceptanceSentence(words, {"fine", {}, "2027-01-31"})), "Accepted until 2027-01-31: fine");
  EXPECT_EQ(Plain(AcceptanceSentence(words, {"fine", "jo", "2027-01-31"})), "Accepted by jo until 2027-01-31: fine");
}

}  // namespace
}  // namespace metareview
