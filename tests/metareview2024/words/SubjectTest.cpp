#include "metareview2024/words/Subject.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "metareview2024/MadeReview.h"

namespace metareview {
namespace {

std::string Subject(const std::vector<SFinding>& findings, const char* language = "en") {
  SReview review = test::MadeReview(findings);
  review.data = "data.db";
  return Plain(SubjectSentence(*CWords::Find(language), review));
}

constexpr const char* kCompared =
    "client.json (client) was compared with original.json (original) and base.json (base). The review is complete: "
    "classes, links, behaviors.";

SFinding Moved(const std::string& name) {
  return test::MadeChange("class/" + name + "/table_name", "table-moved", "T_A", "T_B");
}

TEST(SubjectTest, SaysWhereStoredValuesWereLookedUp) {
  EXPECT_EQ(Subject({test::Counted(Moved("A"), 0, 0)}),
            std::string(kCompared) + " Stored values were looked up in data.db.");
}

TEST(SubjectTest, SaysWhereTheyWouldHaveBeenLookedUpThoughNothingWasToBeCounted) {
  const SFinding finding = test::MadeChange("class/A/display_name", "display-name", "a", "b");
  EXPECT_EQ(Subject({finding}), std::string(kCompared) + " Stored values were looked up in data.db.");
  EXPECT_EQ(Subject({}), std::string(kCompared) + " Stored values were looked up in data.db.");
}

TEST(SubjectTest, SaysForHowManyFindingsTheyCouldNotBeCounted) {
  EXPECT_EQ(Subject({test::NotCountable(Moved("A"), "no table T_A"), test::Counted(Moved("B"), 0, 0)}),
            std::string(kCompared) +
                " Stored values were looked up in data.db. For one difference they could not be counted, or not all of "
                "them.");
  EXPECT_EQ(Subject({test::NotCountable(Moved("A"), "no table T_A"), test::CountedInPart(Moved("B"), 1, 1, "hidden")}),
            std::string(kCompared) +
                " Stored values were looked up in data.db. For 2 differences they could not be counted, or not all of "
                "them.");
}

TEST(SubjectTest, DoesNotSoundAsIfCountedWhereNothingCouldBe) {
  EXPECT_EQ(Subject({test::NotCountable(Moved("A"), "?")}),
            std::string(kCompared) + " No stored values could be counted in data.db.");
  const std::vector<SFinding> findings = {test::NotCountable(Moved("A"), "?"), Moved("B"),
                                          test::NotCountable(Moved("C"), "?")};
  for (const auto& [language, sentence] : std::vector<std::pair<const char*, std::string>>{
           {"en", "No stored values could be counted in data.db."},
           {"de", "In data.db konnten keine gespeicherten Werte gezählt werden."},
           {"fr", "Aucune valeur stockée n’a pu être comptée dans data.db."},
           {"es", "No se pudo contar ningún valor guardado en data.db."},
           {"zh", "在 data.db 中未能统计任何存储值。"},
           {"ja", "data.db では保存値を数えられませんでした。"}}) {
    const std::string subject = Subject(findings, language);
    EXPECT_EQ(subject.substr(subject.size() - std::min(subject.size(), sentence.size())), sentence);
  }
}

TEST(SubjectTest, SaysItInEveryLanguage) {
  const std::vector<SFinding> findings = {test::NotCountable(Moved("A"), "?"), test::NotCountable(Moved("B"), "?"),
                                          test::Counted(Moved("C"), 0, 0)};
  for (const auto& [language, sentence] : std::vector<std::pair<const char*, std::string>>{
           {"de", "Bei 2 Abweichungen konnten sie nicht oder nicht alle gezählt werden."},
           {"fr", "Pour 2 différences, elles n’ont pas pu être comptées, ou pas toutes."},
           {"es", "En 2 diferencias no se pudieron contar, o no todos."},
           {"zh", "有 2 处差异无法统计，或未能全部统计。"},
           {"ja", "2 件の差異では、数えられなかったか、一部しか数えられませんでした。"}}) {
    const std::string subject = Subject(findings, language);
    EXPECT_EQ(subject.substr(subject.size() - std::min(subject.size(), sentence.size())), sentence);
  }
}

}  // namespace
}  // namespace metareview
