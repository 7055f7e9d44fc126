#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "checkmeta2024/Findings.h"
#include "checkmeta2024/GeneratedMetamodel.h"
#include "kvxsptstring/StringHelper.h"
#include "metareview2024/DecisionsFile.h"
#include "metareview2024/Metamodels.h"
#include "metareview2024/Path.h"
#include "metareview2024/ReviewSteps.h"
#include "metareview2024/generated/PlantedEdits.h"

namespace {

using metareview::EChange;
using metareview::EKind;
using metareview::EOrigin;
using metareview::SFinding;
using metareview::SReview;
using test::SModel;
using Lines = std::multiset<std::string>;

std::string LowerCase(std::string text) {
  CStringHelper::ToLower(text);
  return text;
}

template <typename Element>
void RespellSome(std::vector<Element>& elements) {
  for (Element& element : elements) {
    if (*rc::gen::arbitrary<bool>()) {
      element.internalName = LowerCase(element.internalName);
    }
  }
}

/// Any metamodel, with some names in lower case and some behaviors listed twice.
SModel AnyModel() {
  SModel model = *test::GenModel();
  RespellSome(model.classes);
  RespellSome(model.links);
  RespellSome(model.behaviors);
  for (auto* elements : {&model.classes, &model.links}) {
    for (test::SClass& element : *elements) {
      RespellSome(element.properties);
      const std::size_t count = element.behaviors.size();
      for (std::size_t i = 0; i < count; ++i) {
        if (*rc::gen::inRange(0, 4) == 0) {
          element.behaviors.push_back(LowerCase(element.behaviors[i]));
        }
      }
    }
  }
  return model;
}

Lines JudgementsOf(const SReview& review) {
  const std::vector<std::string> judgements = test::Judgements(review);
  return {judgements.begin(), judgements.end()};
}

/// A metamodel with some edits planted.
test::SPlanted AnyPlanted() {
  test::SPlanted planted;
  planted.client = AnyModel();
  planted.original = planted.client;
  test::CPlanter planter(planted);
  const int count = *rc::gen::inRange(1, 12);
  for (int i = 0; i < count; ++i) {
    planter.PlantAny();
  }
  return planted;
}

TEST(GeneratedReviewTest, AMetamodelAgainstItselfHasNoFinding) {
  EXPECT_TRUE(rc::check([] {
    const SModel model = AnyModel();
    RC_ASSERT(test::Review(model, model).findings.empty());
    RC_ASSERT(test::Review(model, model, AnyModel()).findings.empty());
  }));
}

TEST(GeneratedReviewTest, EveryPlantedEditIsFoundOnceWithItsRule) {
  EXPECT_TRUE(rc::check([] {
    const test::SPlanted planted = AnyPlanted();
    const SReview review = test::Review(planted.client, planted.original);
    RC_ASSERT(JudgementsOf(review) == Lines(planted.findings.begin(), planted.findings.end()));
  }));
}

/// The rule of a finding without a base when the base is the client's metamodel.
std::string VendorsRule(const std::string& rule, const SFinding& finding, const SModel& client) {
  const auto ends = [&rule](const std::string& end) {
    return rule.size() > end.size() && rule.compare(rule.size() - end.size(), end.size(), end) == 0;
  };
  const auto with = [&rule](const std::string& end, const std::string& other) {
    return rule.substr(0, rule.size() - end.size()) + other;
  };
  if (ends("-inserted")) {
    const std::string name = LowerCase(metareview::ParsePath(finding.path)->Name());
    const bool hasColumns =
        (finding.thing == metareview::EThing::kBehavior || finding.thing == metareview::EThing::kListedBehavior) &&
        std::any_of(client.behaviors.begin(), client.behaviors.end(), [&name](const test::SBehavior& behavior) {
          return LowerCase(behavior.internalName) == name && !behavior.properties.empty();
        });
    return with("-inserted", hasColumns ? "-columns-withdrawn" : "-withdrawn");
  }
  return ends("-deleted") ? with("-deleted", "-new") : rule;
}

TEST(GeneratedReviewTest, WithTheOriginalAsBaseEverythingIsTheCustomersUnderTheSameRules) {
  EXPECT_TRUE(rc::check([] {
    const SModel client = AnyModel();
    const SModel original = AnyModel();
    const SReview without = test::Review(client, original);
    const SReview with = test::Review(client, original, original);
    RC_ASSERT(JudgementsOf(with) == JudgementsOf(without));
    for (const SFinding& finding : with.findings) {
      RC_ASSERT(finding.origin == EOrigin::kCustomer);
      RC_ASSERT(finding.base == finding.original);
    }
  }));
}

TEST(GeneratedReviewTest, WithTheClientAsBaseEverythingIsTheVendorsWithdrawnOrNew) {
  EXPECT_TRUE(rc::check([] {
    const SModel client = AnyModel();
    const SModel original = AnyModel();
    const SReview without = test::Review(client, original);
    const SReview with = test::Review(client, original, client);
    RC_ASSERT(with.findings.size() == without.findings.size());
    for (std::size_t i = 0; i < with.findings.size(); ++i) {
      const SFinding& finding = with.findings[i];
      RC_ASSERT(finding.origin == EOrigin::kVendor);
      RC_ASSERT(finding.base == finding.client);
      RC_ASSERT(finding.path == without.findings[i].path);
      RC_ASSERT(std::string(finding.rule->name) ==
                VendorsRule(std::string(without.findings[i].rule->name), finding, client));
    }
  }));
}

TEST(GeneratedReviewTest, OriginsAreAsTheyAreWhereNeitherSideIsTheBase) {
  EXPECT_TRUE(rc::check([] {
    const SModel client = AnyModel();
    const SModel original = AnyModel();
    const SModel base = AnyModel();
    for (const SFinding& finding : test::Review(client, original, base).findings) {
      RC_ASSERT(finding.origin != EOrigin::kUnknown);
      if (finding.change != EChange::kChanged) {
        continue;
      }
      const bool isConflict = finding.base != finding.original && finding.base != finding.client;
      if (!isConflict) {
        RC_ASSERT(finding.origin == (finding.base == finding.original ? EOrigin::kCustomer : EOrigin::kVendor));
      } else if (finding.origin != EOrigin::kBoth) {
        RC_ASSERT(finding.attribute == metareview::EAttribute::kMax ||
                  finding.attribute == metareview::EAttribute::kMin ||
                  finding.attribute == metareview::EAttribute::kDefaultValue);
      }
    }
  }));
}

/// The rules under which a finding is when client and original change places; those that are not here stay.
const std::map<std::string, std::set<std::string>>& Mirrored() {
  static const std::map<std::string, std::set<std::string>> mirrored = {
      {"class-inserted", {"class-deleted", "class-identity-taken"}},
      {"link-inserted", {"link-deleted", "link-identity-taken"}},
      {"behavior-inserted", {"behavior-deleted"}},
      {"listed-behavior-inserted", {"listed-behavior-deleted"}},
      {"method-inserted", {"method-deleted"}},
      {"property-inserted", {"property-deleted", "property-field-taken"}},
      {"class-deleted", {"class-inserted"}},
      {"class-identity-taken", {"class-inserted"}},
      {"link-deleted", {"link-inserted"}},
      {"link-identity-taken", {"link-inserted"}},
      {"behavior-deleted", {"behavior-inserted"}},
      {"listed-behavior-deleted", {"listed-behavior-inserted"}},
      {"method-deleted", {"method-inserted"}},
      {"property-deleted", {"property-inserted"}},
      {"property-field-taken", {"property-inserted"}},
      {"type-widened", {"type-narrowed"}},
      {"type-narrowed", {"type-widened", "type-changed"}},
      {"type-relaxed", {"type-changed"}},
      {"type-changed", {"type-changed", "type-narrowed", "type-relaxed"}},
      {"length-shrinks", {"length-grows"}},
      {"length-grows", {"length-shrinks"}},
      {"precision-shrinks", {"precision-takes-digits", "precision-grows"}},
      {"precision-takes-digits", {"precision-shrinks"}},
      {"precision-grows", {"precision-shrinks"}},
      {"max-tightens", {"max-relaxes"}},
      {"max-relaxes", {"max-tightens"}},
      {"min-tightens", {"min-relaxes"}},
      {"min-relaxes", {"min-tightens"}},
  };
  return mirrored;
}

/// Tells findings apart that both directions have: the change that the other direction must have comes first.
std::string KeyOf(const SFinding& finding, EChange change) {
  return std::string(NameOf(change)) + " " + LowerCase(finding.path);
}

void RequireMirrored(const SModel& client, const SModel& original) {
  std::map<std::string, SFinding> there;
  for (const SFinding& finding : test::Review(original, client).findings) {
    RC_ASSERT(there.emplace(KeyOf(finding, finding.change), finding).second);
  }
  const SReview here = test::Review(client, original);
  RC_ASSERT(here.findings.size() == there.size());
  for (const SFinding& finding : here.findings) {
    const EChange change = finding.change == EChange::kInserted  ? EChange::kDeleted
                           : finding.change == EChange::kDeleted ? EChange::kInserted
                                                                 : EChange::kChanged;
    const auto found = there.find(KeyOf(finding, change));
    RC_ASSERT(found != there.end());
    const SFinding& other = found->second;
    RC_ASSERT(other.client == finding.original);
    RC_ASSERT(other.original == finding.client);
    const std::string rule(finding.rule->name);
    const auto mirrored = Mirrored().find(rule);
    const std::set<std::string> expected =
        mirrored != Mirrored().end() ? mirrored->second : std::set<std::string>{rule};
    RC_ASSERT(expected.count(std::string(other.rule->name)) == 1);
  }
}

TEST(GeneratedReviewTest, SwappingClientAndOriginalMirrorsEveryDirection) {
  EXPECT_TRUE(rc::check([] {
    RequireMirrored(AnyModel(), AnyModel());
    const test::SPlanted planted = AnyPlanted();
    RequireMirrored(planted.client, planted.original);
  }));
}

std::string TextOf(const metareview::Value& value) {
  return std::visit(
      [](const auto& content) {
        if constexpr (std::is_same_v<std::decay_t<decltype(content)>, std::string>) {
          return content;
        } else {
          return std::to_string(content);
        }
      },
      value);
}

/// A finding as test::Findings() has it.
std::string ReportLineOf(const SFinding& finding) {
  const metareview::SPath path = *metareview::ParsePath(finding.path);
  const std::string kind(NameOf(path.kind));
  const std::string elements = path.kind == EKind::kClass  ? "classes"
                               : path.kind == EKind::kLink ? "links"
                                                           : "behaviors";
  const std::string change(NameOf(finding.change));
  const std::string updated = kind + " updated_" + elements + " " + path.element + " ";
  if (finding.attribute != metareview::EAttribute::kNone) {
    return updated + "updated_properties " + path.part + "." + std::string(NameOf(finding.attribute)) + ": " +
           TextOf(*finding.original) + " > " + TextOf(*finding.client);
  }
  switch (finding.thing) {
    case metareview::EThing::kListedBehavior:
      return updated + change + "_behaviors " + LowerCase(path.part);
    case metareview::EThing::kMethod:
      return updated + change + "_methods " + path.part;
    case metareview::EThing::kProperty:
      return updated + change + "_properties " + path.part;
    default:
      return kind + " " + change + "_" + elements + " " + path.element;
  }
}

/// What the module's own document says. It has a listed behavior as often as the list repeats it.
std::set<std::string> ReportOf(test::CUpgradeFolder& folder, const SModel& client, const SModel& original,
                               const std::vector<EKind>& kinds) {
  folder.SetClient(client);
  folder.SetOriginal(original);
  CCheckMeta2024Helper helper(folder.handlerContext, folder.context);
  auto document = std::make_shared<CJsonObject>();
  for (const EKind kind : kinds) {
    (helper.*test::MetaKindRows().at(static_cast<std::size_t>(kind)).checkWithDocument)(document);
  }
  const std::vector<std::string> lines = test::Findings(*document);
  return {lines.begin(), lines.end()};
}

/// What a run may be asked to compare.
const std::vector<std::vector<EKind>>& AnyKinds() {
  static const std::vector<std::vector<EKind>> kinds = {
      {EKind::kClass}, {EKind::kLink}, {EKind::kBehavior}, {EKind::kClass, EKind::kLink, EKind::kBehavior}};
  return kinds;
}

TEST(GeneratedReviewTest, WhatIsReportedIsExactlyWhatTheChecksDocumentSays) {
  // A case is this many pairs; a hundred cases are thousands.
  constexpr int kPairs = 30;
  test::CUpgradeFolder folder;
  EXPECT_TRUE(rc::check([&folder] {
    for (int i = 0; i < kPairs; ++i) {
      const bool isPlanted = *rc::gen::arbitrary<bool>();
      test::SPlanted pair = isPlanted ? AnyPlanted() : test::SPlanted{AnyModel(), AnyModel(), {}};
      const std::vector<EKind> kinds = *rc::gen::elementOf(AnyKinds());
      const SReview review =
          CompareMetamodels({test::MakeMetamodel(pair.client), test::MakeMetamodel(pair.original), nullptr}, kinds);
      std::set<std::string> reported;
      for (const SFinding& finding : review.findings) {
        if (finding.reported) {
          RC_ASSERT(reported.insert(ReportLineOf(finding)).second);
        }
      }
      RC_ASSERT(reported == ReportOf(folder, pair.client, pair.original, kinds));
    }
  }));
}

TEST(GeneratedReviewTest, DecidingAboutEachFindingAcceptsAll) {
  const std::string today = "2026-11-22";
  EXPECT_TRUE(rc::check([&today] {
    SReview review = test::Review(AnyModel(), AnyModel(), AnyModel());
    std::vector<std::string> paths;
    for (const SFinding& finding : review.findings) {
      paths.push_back(*rc::gen::arbitrary<bool>() ? finding.path : LowerCase(finding.path));
    }
    const std::string text = FormatDecisions(Decide({}, review, paths, {"r", {}, {}}, today));
    ApplyDecisions(metareview::ParseDecisions(text, "FILE"), today, review);
    for (const SFinding& finding : review.findings) {
      RC_ASSERT(finding.accepted != nullptr);
    }
    RC_ASSERT(review.outdated.empty() && review.expired.empty() && review.stale.empty());
    RC_ASSERT(FormatDecisions(metareview::ParseDecisions(text, "FILE")) == text);
  }));
}

TEST(GeneratedReviewTest, PathsOfAnyNamesAreParsedAsTheyWereFormatted) {
  EXPECT_TRUE(rc::check([] {
    metareview::SPath path;
    path.kind = EKind::kBehavior;
    path.thing = metareview::EThing::kMethod;
    path.attribute = metareview::EAttribute::kDisplayName;
    path.element = *rc::gen::nonEmpty(
        rc::gen::container<std::string>(rc::gen::element('~', '/', '*', '0', '1', '2', 'a', '\n', '\xC3')));
    path.part = *rc::gen::nonEmpty<std::string>();
    const std::string text = FormatPath(path);
    RC_ASSERT(std::count(text.begin(), text.end(), '/') == 4);
    const auto parsed = metareview::ParsePath(text);
    RC_ASSERT(parsed.has_value());
    RC_ASSERT(parsed->element == path.element);
    RC_ASSERT(parsed->part == path.part);
    RC_ASSERT(parsed->attribute == path.attribute);
  }));
}

}  // namespace
