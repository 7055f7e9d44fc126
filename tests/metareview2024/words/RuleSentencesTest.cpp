#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "metareview2024/MadeReview.h"
#include "metareview2024/words/FindingSentence.h"

/// What the review says under each rule, in English, in each of its cases.
namespace metareview {
namespace {

using test::Counted;
using test::Made;
using test::MadeChange;

constexpr EChange kInserted = EChange::kInserted;
constexpr EChange kDeleted = EChange::kDeleted;
constexpr EOrigin kCustomer = EOrigin::kCustomer;
constexpr EOrigin kVendor = EOrigin::kVendor;
constexpr EOrigin kBoth = EOrigin::kBoth;
constexpr EOrigin kUnknown = EOrigin::kUnknown;

struct SCase {
  SFinding finding;
  std::string sentence;
};

class RuleSentencesTest : public testing::Test {
 protected:
  static void ExpectSentences(const std::vector<SCase>& cases) {
    for (const SCase& one : cases) {
      const SReview review = test::MadeReview({one.finding});
      EXPECT_EQ(Plain(CFindingSentences(CWords::English(), review).Of(one.finding)), one.sentence);
    }
  }

  /// What is said about none, one, and many stored values, after what happens.
  static void ExpectCounts(const SFinding& finding, const std::string& happens, const std::string& none,
                           const std::string& one, const std::string& many) {
    ExpectSentences({{Counted(finding, 0, 9000), happens + " " + none},
                     {Counted(finding, 1, 9000), happens + " " + one},
                     {Counted(finding, 2500, 9000), happens + " " + many}});
  }

  static SFinding WithTaken(SFinding finding, const STaken& taken) {
    finding.taken = std::make_shared<const STaken>(taken);
    return finding;
  }

  static SFinding PropertyChange(const std::string& attribute, const std::string& rule, const Value& client,
                                 const Value& original) {
    return MadeChange("class/Part/property/Code/" + attribute, rule, client, original);
  }
};

TEST_F(RuleSentencesTest, Withdrawn) {
  const std::string notCounted = " Stored values were not counted.";
  ExpectSentences({
      {Made("class/Gear", kInserted, "class-withdrawn", kVendor),
       "Class Gear was shipped before and is no longer shipped. If the upgrade removes it, its objects are lost." +
           notCounted},
      {Made("class/Gear", kInserted, "class-withdrawn", kBoth),
       "Class Gear was shipped before, was changed here, and is no longer shipped. If the upgrade removes it, its "
       "objects are lost." +
           notCounted},
      {Made("link/Uses", kInserted, "link-withdrawn", kVendor),
       "Link Uses was shipped before and is no longer shipped. If the upgrade removes it, its connections are lost." +
           notCounted},
      {Made("link/Uses", kInserted, "link-withdrawn", kBoth),
       "Link Uses was shipped before, was changed here, and is no longer shipped. If the upgrade removes it, its "
       "connections are lost." +
           notCounted},
      {Made("behavior/Rated", kInserted, "behavior-columns-withdrawn", kVendor),
       "Behavior Rated was shipped before and is no longer shipped. If the upgrade removes it, the stored values of "
       "its "
       "properties are lost wherever it is listed." +
           notCounted},
      {Made("behavior/Rated", kInserted, "behavior-columns-withdrawn", kBoth),
       "Behavior Rated was shipped before, was changed here, and is no longer shipped. If the upgrade removes it, the "
       "stored values of its properties are lost wherever it is listed." +
           notCounted},
      {Made("behavior/Rated", kInserted, "behavior-withdrawn", kVendor),
       "Behavior Rated was shipped before and is no longer shipped. If the upgrade removes it, everything that lists "
       "it "
       "loses its methods and properties."},
      {Made("behavior/Rated", kInserted, "behavior-withdrawn", kBoth),
       "Behavior Rated was shipped before, was changed here, and is no longer shipped. If the upgrade removes it, "
       "everything that lists it loses its methods and properties."},
      {Made("class/Part/behavior/Rated", kInserted, "listed-behavior-columns-withdrawn", kVendor),
       "Class Part was shipped with behavior Rated and no longer is. If the upgrade takes it off the list, the stored "
       "values of its properties are lost there." +
           notCounted},
      {Made("link/Uses/behavior/Rated", kInserted, "listed-behavior-withdrawn", kVendor),
       "Link Uses was shipped with behavior Rated and no longer is. If the upgrade takes it off the list, the "
       "behavior's methods and properties are gone there."},
      {Made("behavior/Rated/method/Rate", kInserted, "method-withdrawn", kVendor),
       "Method Rate of behavior Rated was shipped before and is no longer shipped. If the upgrade removes it, calls to "
       "it fail."},
      {Made("behavior/Rated/method/Rate", kInserted, "method-withdrawn", kBoth),
       "Method Rate of behavior Rated was shipped before, was changed here, and is no longer shipped. If the upgrade "
       "removes it, calls to it fail."},
      {Made("class/Part/property/Code", kInserted, "property-withdrawn", kVendor),
       "Property Code of class Part was shipped before and is no longer shipped. If the upgrade removes it, its stored "
       "values are lost." +
           notCounted},
      {Made("class/Part/property/Code", kInserted, "property-withdrawn", kBoth),
       "Property Code of class Part was shipped before, was changed here, and is no longer shipped. If the upgrade "
       "removes it, its stored values are lost." +
           notCounted},
  });
}

TEST_F(RuleSentencesTest, WithdrawnAndCounted) {
  ExpectCounts(
      Made("class/Gear", kInserted, "class-withdrawn", kVendor),
      "Class Gear was shipped before and is no longer shipped. If the upgrade removes it, its objects are lost.",
      "T is empty.", "T holds one.", "T holds 2,500 of them.");
  ExpectCounts(
      Made("link/Uses", kInserted, "link-withdrawn", kVendor),
      "Link Uses was shipped before and is no longer shipped. If the upgrade removes it, its connections are lost.",
      "T is empty.", "T holds one.", "T holds 2,500 of them.");
  ExpectCounts(
      Made("behavior/Rated", kInserted, "behavior-columns-withdrawn", kVendor),
      "Behavior Rated was shipped before and is no longer shipped. If the upgrade removes it, the stored values "
      "of its properties are lost wherever it is listed.",
      "None of 9,000 objects has a value in any of its columns.",
      "One of 9,000 objects has a value in one of its columns.",
      "2,500 of 9,000 objects have a value in one of its columns.");
  ExpectCounts(Made("class/Part/behavior/Rated", kInserted, "listed-behavior-columns-withdrawn", kVendor),
               "Class Part was shipped with behavior Rated and no longer is. If the upgrade takes it off the list, the "
               "stored values of its properties are lost there.",
               "None of 9,000 objects has a value in any of its columns.",
               "One of 9,000 objects has a value in one of its columns.",
               "2,500 of 9,000 objects have a value in one of its columns.");
  ExpectCounts(
      Made("class/Part/property/Code", kInserted, "property-withdrawn", kVendor),
      "Property Code of class Part was shipped before and is no longer shipped. If the upgrade removes it, its "
      "stored values are lost.",
      "None of 9,000 rows has a value in it.", "One of 9,000 rows has a value in it.",
      "2,500 of 9,000 rows have a value in it.");
}

TEST_F(RuleSentencesTest, Inserted) {
  ExpectSentences({
      {Made("class/Gear", kInserted, "class-inserted"),
       "Only this installation has class Gear. The upgrade leaves it alone."},
      {Made("link/Uses", kInserted, "link-inserted"),
       "Only this installation has link Uses. The upgrade leaves it alone."},
      {Made("behavior/Rated", kInserted, "behavior-inserted"),
       "Only this installation has behavior Rated. The upgrade leaves it alone."},
      {Made("class/Part/behavior/Rated", kInserted, "listed-behavior-inserted"),
       "Only here does class Part list behavior Rated. The upgrade leaves it there."},
      {Made("behavior/Rated/method/Rate", kInserted, "method-inserted"),
       "Only here does behavior Rated have method Rate. The upgrade leaves it alone."},
      {Made("link/Uses/property/Count", kInserted, "property-inserted"),
       "Only here does link Uses have property Count. The upgrade leaves it and its values alone."},
  });
}

TEST_F(RuleSentencesTest, Taken) {
  ExpectSentences({
      {WithTaken(Made("class/Gear", kDeleted, "class-identity-taken", kVendor), {"class/Own", 1001, {}, {}}),
       "The upgrade adds class Gear with class id 1001, which class Own already has here."},
      {WithTaken(Made("class/Gear", kDeleted, "class-identity-taken", kVendor), {"link/Own", {}, "t_gear", {}}),
       "The upgrade adds class Gear with table t_gear, which link Own already has here."},
      {WithTaken(Made("link/Uses", kDeleted, "link-identity-taken", kVendor), {"class/Own", 1001, "T_USES", {}}),
       "The upgrade adds link Uses with class id 1001 and table T_USES, which class Own already has here."},
      {WithTaken(Made("class/Part/property/Code", kDeleted, "property-field-taken", kVendor),
                 {"class/Part/property/OwnCode", {}, {}, "F_CODE"}),
       "The upgrade adds property Code to class Part with column F_CODE, which property OwnCode already uses here."},
  });
}

TEST_F(RuleSentencesTest, New) {
  ExpectSentences({
      {Made("class/Gear", kDeleted, "class-new", kVendor), "The upgrade adds class Gear. It was not shipped before."},
      {Made("link/Uses", kDeleted, "link-new", kVendor), "The upgrade adds link Uses. It was not shipped before."},
      {Made("behavior/Rated", kDeleted, "behavior-new", kVendor),
       "The upgrade adds behavior Rated. It was not shipped before."},
      {Made("class/Part/behavior/Rated", kDeleted, "listed-behavior-new", kVendor),
       "The upgrade adds behavior Rated to class Part. It was not listed there before."},
      {Made("behavior/Rated/method/Rate", kDeleted, "method-new", kVendor),
       "The upgrade adds method Rate to behavior Rated. It was not shipped before."},
      {Made("class/Part/property/Code", kDeleted, "property-new", kVendor),
       "The upgrade adds property Code to class Part. It was not shipped before."},
  });
}

TEST_F(RuleSentencesTest, Deleted) {
  const std::string unknown = " Without a base nobody can tell whether it is new or was removed here.";
  const std::string both = ", and the upgrade ships a changed one. The upgrade adds it again.";
  ExpectSentences({
      {Made("class/Gear", kDeleted, "class-deleted", kCustomer),
       "Class Gear was removed here. The upgrade adds it again."},
      {Made("class/Gear", kDeleted, "class-deleted", kBoth), "Class Gear was removed here" + both},
      {Made("class/Gear", kDeleted, "class-deleted", kUnknown),
       "Only the upgrade has class Gear, and adds it." + unknown},
      {Made("link/Uses", kDeleted, "link-deleted", kCustomer),
       "Link Uses was removed here. The upgrade adds it again."},
      {Made("link/Uses", kDeleted, "link-deleted", kBoth), "Link Uses was removed here" + both},
      {Made("link/Uses", kDeleted, "link-deleted", kUnknown), "Only the upgrade has link Uses, and adds it." + unknown},
      {Made("behavior/Rated", kDeleted, "behavior-deleted", kCustomer),
       "Behavior Rated was removed here. The upgrade adds it again."},
      {Made("behavior/Rated", kDeleted, "behavior-deleted", kBoth), "Behavior Rated was removed here" + both},
      {Made("behavior/Rated", kDeleted, "behavior-deleted", kUnknown),
       "Only the upgrade has behavior Rated, and adds it." + unknown},
      {Made("class/Part/behavior/Rated", kDeleted, "listed-behavior-deleted", kCustomer),
       "Behavior Rated was taken off class Part here. The upgrade lists it again."},
      {Made("class/Part/behavior/Rated", kDeleted, "listed-behavior-deleted", kUnknown),
       "The upgrade lists behavior Rated for class Part, which does not list it here. Without a base nobody can tell "
       "whether it is new or was taken off here."},
      {Made("behavior/Rated/method/Rate", kDeleted, "method-deleted", kCustomer),
       "Method Rate was removed from behavior Rated here. The upgrade adds it again."},
      {Made("behavior/Rated/method/Rate", kDeleted, "method-deleted", kBoth),
       "Method Rate was removed from behavior Rated here" + both},
      {Made("behavior/Rated/method/Rate", kDeleted, "method-deleted", kUnknown),
       "Only the upgrade has method Rate of behavior Rated, and adds it." + unknown},
      {Made("class/Part/property/Code", kDeleted, "property-deleted", kCustomer),
       "Property Code was removed from class Part here. The upgrade adds it again."},
      {Made("class/Part/property/Code", kDeleted, "property-deleted", kBoth),
       "Property Code was removed from class Part here" + both},
      {Made("class/Part/property/Code", kDeleted, "property-deleted", kUnknown),
       "Only the upgrade has property Code of class Part, and adds it." + unknown},
  });
}

TEST_F(RuleSentencesTest, Names) {
  ExpectSentences({
      {MadeChange("class/part/internal_name", "spelling", "part", "Part"),
       "The upgrade spells part as Part. Only upper and lower case differ."},
      {PropertyChange("lookup_internal_name", "spelling", "part", "Part"),
       "The upgrade spells the class that Code looks up as Part instead of part. Only upper and lower case differ."},
      {MadeChange("class/Part/display_name", "display-name", "Teil", "Part"),
       "The upgrade changes the display name of Part from Teil to Part."},
      {MadeChange("class/Part/display_name", "display-name", "", "Part"),
       "The upgrade gives Part the display name Part. It has none here."},
      {MadeChange("class/Part/display_name", "display-name", "Teil", ""),
       "The upgrade takes away the display name of Part, which is Teil here."},
      {MadeChange("class/Part/class_id", "class-id", 7U, 1001U),
       "The upgrade changes the class id of Part from 7 to 1001."},
      {MadeChange("class/Part/class_id", "class-id", 0U, 1001U),
       "The upgrade gives Part the class id 1001. It has none here."},
      {MadeChange("class/Part/class_id", "class-id", 7U, 0U),
       "The upgrade takes away the class id of Part, which is 7 here."},
  });
}

TEST_F(RuleSentencesTest, Places) {
  ExpectSentences({
      {MadeChange("class/Part/table_name", "table-unset", "", "T_PART"),
       "The upgrade keeps Part in table T_PART. No table is named here."},
      {MadeChange("class/Part/table_name", "table-unset", "T_PART", ""),
       "The upgrade names no table for Part. It is T_PART here."},
      {PropertyChange("field", "field-unset", "", "F_CODE"),
       "The upgrade keeps Code in column F_CODE. No column is named here."},
      {PropertyChange("field", "field-unset", "F_CODE", ""),
       "The upgrade names no column for Code. It is F_CODE here."},
      {PropertyChange("lookup_internal_name", "lookup-moved", "User", "Person"),
       "The upgrade lets Code look up Person instead of User. Stored references to User may be refused."},
      {PropertyChange("lookup_internal_name", "lookup-unset", "", "Person"),
       "The upgrade lets Code look up Person. It looks up nothing here."},
      {PropertyChange("lookup_internal_name", "lookup-unset", "User", ""),
       "The upgrade lets Code look up nothing. It looks up User here."},
  });
  ExpectCounts(MadeChange("class/Part/table_name", "table-moved", "T_OWN", "T_PART"),
               "The upgrade keeps Part in table T_PART instead of T_OWN. The rows in T_OWN would be left behind.",
               "There are none.", "There is one.", "There are 2,500 of them.");
  ExpectCounts(PropertyChange("field", "field-moved", "F_OWN", "F_CODE"),
               "The upgrade keeps Code in column F_CODE instead of F_OWN. The values in F_OWN would be left behind.",
               "None of 9,000 rows has one.", "One of 9,000 rows has one.", "2,500 of 9,000 rows have one.");
}

TEST_F(RuleSentencesTest, Types) {
  const auto change = [](const char* client, const char* original) {
    return std::string("The upgrade changes the type of Code from ") + client + " to " + original + ".";
  };
  ExpectSentences({
      {PropertyChange("type", "type-widened", "int8", "int16"), change("int8", "int16") + " Every stored value fits."},
      {PropertyChange("type", "type-relaxed", "url", "string"),
       change("url", "string") + " Stored values stay, but are no longer checked or shown as url."},
      {PropertyChange("type", "type-changed", "string", "int32"),
       change("string", "int32") + " There is no known way to convert stored values, so the upgrade may be refused."},
  });
  const auto expectNarrowed = [&](const char* client, const char* original, const std::string& what) {
    ExpectCounts(PropertyChange("type", "type-narrowed", client, original), change(client, original) + " " + what,
                 "All 9,000 stored values fit.", "One of 9,000 stored values does not fit.",
                 "2,500 of 9,000 stored values do not fit.");
  };
  expectNarrowed("int64", "int32", "Values outside the range of int32 would not fit.");
  expectNarrowed("int16", "int8", "Values outside the range of int8 would not fit.");
  expectNarrowed("float32", "int64",
                 "Fractions would be cut off, and values outside the range of int64 would not fit.");
  expectNarrowed("float64", "int8", "Fractions would be cut off, and values outside the range of int8 would not fit.");
  expectNarrowed("money", "int16", "Everything after the decimal point would be cut off.");
  expectNarrowed("float64", "float32", "Values with many digits would be rounded.");
  expectNarrowed("int32", "float32", "Values with many digits would be rounded.");
  expectNarrowed("int64", "float64", "Values with many digits would be rounded.");
  expectNarrowed("text", "string", "Long texts would be cut or refused.");
  expectNarrowed("datetime", "date", "The time of day would be lost.");
  expectNarrowed("datetime", "time", "The day would be lost.");
  expectNarrowed("lookup", "string", "Stored references would become plain text and no longer lead to an object.");
  expectNarrowed("lookup", "text", "Stored references would become plain text and no longer lead to an object.");
}

TEST_F(RuleSentencesTest, Lengths) {
  ExpectSentences({
      {PropertyChange("length", "follows-type", 8U, 4U),
       "The upgrade sets the length of Code from 8 to 4, because its type changes."},
      {PropertyChange("precision", "follows-type", 2U, 0U),
       "The upgrade sets the precision of Code from 2 to 0, because its type changes."},
      {PropertyChange("length", "length-unset", 0U, 32U),
       "The upgrade gives Code the length 32. It is 0 here, which may mean no limit."},
      {PropertyChange("length", "length-unset", 32U, 0U),
       "The upgrade sets the length of Code from 32 to 0, which may mean no limit."},
      {PropertyChange("length", "length-grows", 32U, 48U), "The upgrade lengthens Code from 32 to 48 characters."},
      {PropertyChange("precision", "precision-takes-digits", 0U, 2U),
       "The upgrade gives Code 2 decimal places instead of 0. Fewer digits are left before the decimal point."},
      {PropertyChange("precision", "precision-takes-digits", 0U, 1U),
       "The upgrade gives Code 1 decimal place instead of 0. Fewer digits are left before the decimal point."},
      {PropertyChange("precision", "precision-grows", 2U, 4U),
       "The upgrade keeps 4 instead of 2 decimal places of Code."},
      {PropertyChange("precision", "precision-grows", 1U, 4U),
       "The upgrade keeps 4 instead of 1 decimal place of Code."},
  });
  ExpectCounts(PropertyChange("length", "length-shrinks", 48U, 32U),
               "The upgrade shortens Code from 48 to 32 characters.", "None of 9,000 stored values is longer.",
               "One of 9,000 stored values is longer and would be cut or refused.",
               "2,500 of 9,000 stored values are longer and would be cut or refused.");
  ExpectCounts(PropertyChange("precision", "precision-shrinks", 4U, 1U),
               "The upgrade keeps 1 instead of 4 decimal places of Code.", "None of 9,000 stored values has more.",
               "One of 9,000 stored values has more and would be rounded.",
               "2,500 of 9,000 stored values have more and would be rounded.");
  ExpectCounts(PropertyChange("precision", "precision-shrinks", 1U, 0U),
               "The upgrade keeps 0 instead of 1 decimal place of Code.", "None of 9,000 stored values has more.",
               "One of 9,000 stored values has more and would be rounded.",
               "2,500 of 9,000 stored values have more and would be rounded.");
}

TEST_F(RuleSentencesTest, Limits) {
  ExpectSentences({
      {PropertyChange("max", "same-number", "1.0", "1"),
       "The upgrade writes the maximum of Code as 1 instead of 1.0. It is the same number."},
      {PropertyChange("min", "same-number", "1.0", "1"),
       "The upgrade writes the minimum of Code as 1 instead of 1.0. It is the same number."},
      {PropertyChange("default_value", "same-number", "1.0", "1"),
       "The upgrade writes the default value of Code as 1 instead of 1.0. It is the same number."},
      {PropertyChange("max", "max-relaxes", "5", "9"), "The upgrade raises the maximum of Code from 5 to 9."},
      {PropertyChange("max", "max-relaxes", "5", ""), "The upgrade takes away the maximum of Code, which is 5 here."},
      {PropertyChange("min", "min-relaxes", "5", "1"), "The upgrade lowers the minimum of Code from 5 to 1."},
      {PropertyChange("min", "min-relaxes", "5", ""), "The upgrade takes away the minimum of Code, which is 5 here."},
      {PropertyChange("max", "limit-unclear", "5", "many"),
       "The upgrade changes the maximum of Code from 5 to many. They are not both numbers, so it is not known which is "
       "stricter."},
      {PropertyChange("min", "limit-unclear", "few", "5"),
       "The upgrade changes the minimum of Code from few to 5. They are not both numbers, so it is not known which is "
       "stricter."},
  });
  const auto expectMax = [](const SFinding& finding, const std::string& happens) {
    ExpectCounts(finding, happens, "None of 9,000 stored values is greater.",
                 "One of 9,000 stored values is greater and could not be saved again.",
                 "2,500 of 9,000 stored values are greater and could not be saved again.");
  };
  expectMax(PropertyChange("max", "max-tightens", "9", "5"), "The upgrade lowers the maximum of Code from 9 to 5.");
  expectMax(PropertyChange("max", "max-tightens", "", "5"), "The upgrade gives Code the maximum 5. It has none here.");
  const auto expectMin = [](const SFinding& finding, const std::string& happens) {
    ExpectCounts(finding, happens, "None of 9,000 stored values is smaller.",
                 "One of 9,000 stored values is smaller and could not be saved again.",
                 "2,500 of 9,000 stored values are smaller and could not be saved again.");
  };
  expectMin(PropertyChange("min", "min-tightens", "1", "5"), "The upgrade raises the minimum of Code from 1 to 5.");
  expectMin(PropertyChange("min", "min-tightens", "", "0"), "The upgrade gives Code the minimum 0. It has none here.");
}

TEST_F(RuleSentencesTest, Defaults) {
  ExpectSentences({
      {PropertyChange("default_value", "default-changes", "a", "b"),
       "The upgrade lets new objects start with b in Code instead of a."},
      {PropertyChange("default_value", "default-changes", "", "b"),
       "The upgrade lets new objects start with b in Code. It has no default here."},
      {PropertyChange("default_value", "default-changes", "a", ""),
       "The upgrade lets new objects start without a value in Code instead of with a."},
  });
}

}  // namespace
}  // namespace metareview
