#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "checkmeta2024/CheckBehavior2024Helper.h"
#include "checkmeta2024/CheckClass2024Helper.h"
#include "checkmeta2024/CheckLink2024Helper.h"
#include "checkmeta2024/CheckResultConverterPeer.h"
#include "checkmeta2024/Findings.h"
#include "checkmeta2024/GeneratedMetamodel.h"
#include "support/Error.h"
#include "support/LogCapture.h"

namespace {

using test::Findings;
using test::SListPair;
using test::SMetaKindRow;
using test::SModel;

using Names = std::vector<std::string>;

/// Two metamodels with their comparer and what it finds.
class CCheck {
 public:
  /// Writes both into the folder, which serves one check at a time.
  CCheck(test::CUpgradeFolder& folder, const SModel& client, const SModel& original) : folder_(folder) {
    folder_.SetClient(client);
    folder_.SetOriginal(original);
  }

  bool WithDocument(const SMetaKindRow& kind) { return (helper_.*kind.checkWithDocument)(document_); }
  test::SError WithoutDocument(const SMetaKindRow& kind) {
    return test::ErrorOf([&] { passed_ = (helper_.*kind.check)(); });
  }

  /// What the last check without a document answered.
  bool Passed() const { return passed_; }
  const CJsonObject& Document() const { return *document_; }

  /// The text of the whole document.
  std::string Text() {
    CCheckResultConverter converter(folder_.handlerContext, folder_.context);
    std::string text;
    for (const std::string& kind : test::Keys(*document_)) {
      test::Convert(converter, kind, document_->GetObjectValue(kind), text);
    }
    return text;
  }

 private:
  test::CUpgradeFolder& folder_;
  CCheckMeta2024Helper helper_{folder_.handlerContext, folder_.context};
  std::shared_ptr<CJsonObject> document_ = std::make_shared<CJsonObject>();
  bool passed_ = false;
};

const test::SError kNoError = {0, "nothing was thrown"};

TEST(GeneratedMetamodelTest, AMetamodelComparedWithItselfHasNoFinding) {
  test::CUpgradeFolder folder;
  EXPECT_TRUE(rc::check([&folder] {
    const SModel model = *test::GenModel();
    const test::CLogCapture log;
    CCheck check(folder, model, model);
    for (const SMetaKindRow& kind : test::MetaKindRows()) {
      RC_ASSERT(check.WithDocument(kind));
      RC_ASSERT(check.WithoutDocument(kind) == kNoError);
      RC_ASSERT(check.Passed());
    }
    RC_ASSERT(check.Document().ToText() == "{}");
    RC_ASSERT(log.Lines().empty());
  }));
}

class GeneratedEditTest : public testing::TestWithParam<test::SEdit> {};

TEST_P(GeneratedEditTest, AnEditGivesExactlyItsFinding) {
  test::CUpgradeFolder folder;
  EXPECT_TRUE(rc::check(GetParam().name, [&folder] {
    const test::SEditCase edit = *test::GenEditCase(GetParam());
    CCheck check(folder, edit.client, edit.original);
    for (const SMetaKindRow& kind : test::MetaKindRows()) {
      const test::CLogCapture log;
      const bool passes = kind.kind != edit.kind.kind || edit.failing.empty();
      RC_ASSERT(check.WithDocument(kind) == passes);
      RC_ASSERT(log.Lines().empty());
      const test::SError error = check.WithoutDocument(kind);
      if (passes) {
        RC_ASSERT(error == kNoError);
        RC_ASSERT(check.Passed());
        RC_ASSERT(log.Lines().empty());
      } else {
        RC_ASSERT(error.code == kind.code);
        const test::SLogLine last = log.Lines().back();
        RC_ASSERT(last.line == edit.line);
        RC_ASSERT(last.function == kind.function);
        RC_ASSERT(last.message == kind.logPrefix + edit.failing + "<hr=0x" + kind.codeText + ">");
      }
    }
    RC_ASSERT(Findings(check.Document()) == edit.findings);
  }));
}

INSTANTIATE_TEST_SUITE_P(EachKind, GeneratedEditTest, testing::ValuesIn(test::Edits()),
                         [](const auto& edit) { return edit.param.name; });

/// The names in each state, in the order in which a check must report them.
struct SExpectedOrder {
  explicit SExpectedOrder(const SListPair& lists)
      : inserted(SListPair::InState(lists.client, SListPair::kInserted)),
        updated(SListPair::InState(lists.client, SListPair::kChanged)),
        deleted(SListPair::InState(lists.original, SListPair::kDeleted)) {}

  Names inserted;
  Names updated;
  Names deleted;
};

TEST(GeneratedOrderTest, ElementsFollowTheOrderOfTheirLists) {
  test::CUpgradeFolder folder;
  EXPECT_TRUE(rc::check([&folder] {
    const SMetaKindRow kind = *rc::gen::elementOf(test::MetaKindRows());
    const SListPair lists = *test::GenListPair();
    const auto model = [&kind](const SListPair::List& list, std::uint32_t lengthOfChanged) {
      std::vector<test::SElement> elements;
      for (const auto& [name, state] : list) {
        elements.push_back({name, state == SListPair::kChanged ? lengthOfChanged : 32});
      }
      return kind.model(elements);
    };
    CCheck check(folder, model(lists.client, 64), model(lists.original, 16));
    const SExpectedOrder expected(lists);
    const bool passes = expected.updated.empty() && expected.deleted.empty();
    RC_ASSERT(check.WithDocument(kind) == passes);
    RC_ASSERT(check.Document().HasMember(kind.kind) == !passes);
    if (!passes) {
      const auto section = check.Document().GetObjectValue(kind.kind);
      RC_ASSERT(test::Names(*section, kind.insertedKey) == expected.inserted);
      RC_ASSERT(test::Names(*section, kind.updatedKey) == expected.updated);
      RC_ASSERT(test::Names(*section, kind.deletedKey) == expected.deleted);
    }
  }));
}

TEST(GeneratedOrderTest, PropertiesFollowTheOrderOfTheirLists) {
  EXPECT_TRUE(rc::check([] {
    const SListPair lists = *test::GenListPair();
    const auto link = [](const SListPair::List& list, std::uint32_t lengthOfChanged) {
      test::SClass values = {"Uses", {}, {}};
      for (const auto& [name, state] : list) {
        values.properties.push_back(test::Property(name));
        values.properties.back().length = state == SListPair::kChanged ? lengthOfChanged : 32;
      }
      return test::MakeLink(values);
    };
    const auto client = link(lists.client, 64);
    const auto original = link(lists.original, 16);
    auto entry = std::make_shared<CJsonObject>();
    CCheckLink2024Helper(*client, *original).CheckLink(entry);
    SExpectedOrder expected(lists);
    for (std::string& name : expected.updated) {
      name += ".length: 16 > 64";
    }
    RC_ASSERT(test::Names(*entry, "inserted_properties") == expected.inserted);
    RC_ASSERT(test::Changes(*entry) == expected.updated);
    RC_ASSERT(test::Names(*entry, "deleted_properties") == expected.deleted);
  }));
}

TEST(GeneratedOrderTest, MethodsFollowTheOrderOfTheirLists) {
  EXPECT_TRUE(rc::check([] {
    const SListPair lists = *test::GenListPair();
    const auto behavior = [](const SListPair::List& list) {
      test::SBehavior values = {"Versioned", {}, {}};
      for (const auto& item : list) {
        values.methods.push_back(item.first);
      }
      return test::MakeBehavior(values);
    };
    const auto client = behavior(lists.client);
    const auto original = behavior(lists.original);
    auto entry = std::make_shared<CJsonObject>();
    CCheckBehavior2024Helper(*client, *original).CheckBehavior(entry);
    const SExpectedOrder expected(lists);
    RC_ASSERT(test::Names(*entry, "inserted_methods") == expected.inserted);
    RC_ASSERT(test::Names(*entry, "deleted_methods") == expected.deleted);
  }));
}

TEST(GeneratedOrderTest, BehaviorNamesFollowTheOrderOfTheirLists) {
  EXPECT_TRUE(rc::check([] {
    const SListPair lists = *test::GenListPair();
    const auto part = [](const SListPair::List& list) {
      test::SClass values = {"Part", {}, {}};
      for (const auto& item : list) {
        values.behaviors.push_back(item.first);
      }
      return test::MakeClass(values);
    };
    const auto client = part(lists.client);
    const auto original = part(lists.original);
    auto entry = std::make_shared<CJsonObject>();
    CCheckClass2024Helper(*client, *original).CheckClass(entry);
    const auto names = [&entry](const std::string& key) {
      const auto list = entry->GetPropertyStringArrayValue(key).second;
      return Names(list.begin(), list.end());
    };
    const SExpectedOrder expected(lists);
    RC_ASSERT(names("inserted_behaviors") == expected.inserted);
    RC_ASSERT(names("deleted_behaviors") == expected.deleted);
  }));
}

TEST(GeneratedTextTest, TheTextOfAnyResultNamesWhatWasInsertedDeletedAndUpdatedInEachKind) {
  test::CUpgradeFolder folder;
  EXPECT_TRUE(rc::check([&folder] {
    const SModel client = *test::GenModel();
    const SModel original = *test::GenModel();
    CCheck check(folder, client, original);
    for (const SMetaKindRow& kind : test::MetaKindRows()) {
      check.WithDocument(kind);
    }
    const std::string text = check.Text();
    RC_ASSERT(text.empty() == (check.Document().ToText() == "{}"));
    for (const SMetaKindRow& kind : test::MetaKindRows()) {
      const auto section = check.Document().GetPropertyObjectValue(kind.kind);
      if (section == nullptr) {
        continue;
      }
      for (const std::string& key : {kind.insertedKey, kind.updatedKey, kind.deletedKey}) {
        for (const std::string& name : test::Names(*section, key)) {
          RC_ASSERT(text.find(" name:" + name + ",shown as:") != std::string::npos);
        }
      }
    }
  }));
}

}  // namespace
