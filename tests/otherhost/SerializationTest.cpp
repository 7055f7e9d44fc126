#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "checkmeta2024/Meta2024ToJsonConverter.h"
#include "otherhost/Elements.h"
#include "otherhost/HostTest.h"

namespace {

using otherhost::MakeJson;
using otherhost::Object;
using otherhost::TextOf;
using testing::ElementsAre;

using Converter = CMeta2024ToJsonConverter;

class SerializationTest : public otherhost::CHostTest {
 protected:
  const CMetaClass2024 class_{"class", {"A", {}, {}, {}}};
  const CMetaLink2024 link_{"link", {"A", {}, {}, {}}};
  const CMetaBehavior2024 behavior_{"behavior", {"A", {}, {}, {}}};
  const CMetaMethod2024 method_{"method", "M"};
  const CMetaProperty2024 property_{"property", {"P"}};
  std::shared_ptr<CJsonObject> target_ = MakeJson(Object());
};

TEST_F(SerializationTest, AClassIsWrittenInTheOrderOfItsMembers) {
  Converter::ConversionClass2024ToJson(class_, target_);
  EXPECT_THAT(host_.Calls(),
              ElementsAre("class: GetInternalName()", "SetStringValue(internal_name, A)", "class: GetDisplayName()",
                          "SetStringValue(display_name, A!)", "class: GetClassId()", "SetUInt32Value(class_id, 7)",
                          "class: GetTableName()", "SetStringValue(table_name, T_A)"));
}

TEST_F(SerializationTest, ALinkIsWrittenAsAClass) {
  Converter::ConversionLink2024ToJson(link_, target_);
  EXPECT_THAT(host_.CallsWith({"Set"}),
              ElementsAre("SetStringValue(internal_name, A)", "SetStringValue(display_name, A!)",
                          "SetUInt32Value(class_id, 7)", "SetStringValue(table_name, T_A)"));
}

TEST_F(SerializationTest, ABehaviorAndAMethodAreTheirNames) {
  Converter::ConversionBehavior2024ToJson(behavior_, target_);
  Converter::ConversionMethod2024ToJson(method_, target_);
  EXPECT_THAT(host_.Calls(), ElementsAre("behavior: GetInternalName()", "SetStringValue(internal_name, A)",
                                         "behavior: GetDisplayName()", "SetStringValue(display_name, A!)",
                                         "method.M: GetInternalName()", "SetStringValue(internal_name, M)",
                                         "method.M: GetDisplayName()", "SetStringValue(display_name, M!)"));
}

TEST_F(SerializationTest, APropertysLimitsAreFetchedOnceAndBeforeTheFirstMemberIsWritten) {
  Converter::ConversionProperty2024ToJson(property_, target_);
  const std::vector<std::string> calls = host_.Calls();
  EXPECT_EQ(calls.front(), "property.P: GetMaxMinValue()");
  EXPECT_THAT(host_.CallsWith({"GetMaxMinValue"}).size(), 1U);
  EXPECT_THAT(
      host_.CallsWith({"Set"}),
      ElementsAre("SetStringValue(internal_name, P)", "SetStringValue(display_name, P!)", "SetStringValue(field, F_P)",
                  "SetStringValue(type, string)", "SetUInt32Value(length, 32)", "SetStringValue(default_value, none)",
                  "SetUInt32Value(precision, 2)", "SetStringValue(max, 9)", "SetStringValue(min, 1)",
                  "SetStringValue(lookup_internal_name, Unit)"));
}

TEST_F(SerializationTest, MembersThatWereSetBeforeAFailureStay) {
  for (const auto& [call, left] : std::vector<std::pair<std::string, std::string>>{
           {"property.P: GetMaxMinValue", "{}"},
           {"SetStringValue(internal_name", "{}"},
           {"property.P: GetField", R"({"internal_name":"P","display_name":"P!"})"},
           {"SetUInt32Value(length", R"({"internal_name":"P","display_name":"P!","field":"F_P","type":"string"})"}}) {
    target_ = MakeJson(Object());
    host_.FailAt(call);
    ExpectFailure([this] { Converter::ConversionProperty2024ToJson(property_, target_); });
    EXPECT_EQ(TextOf(target_), left) << call;
  }
}

TEST_F(SerializationTest, AnObjectThatWasMadeForAnEmptyTargetStaysInIt) {
  target_ = nullptr;
  host_.FailAt("class: GetDisplayName");
  ExpectFailure([this] { Converter::ConversionClass2024ToJson(class_, target_); });
  ASSERT_NE(target_, nullptr);
  EXPECT_EQ(TextOf(target_), R"({"internal_name":"A"})");
}

TEST_F(SerializationTest, ATargetIsMadeBeforeAnythingOfTheElementIsRead) {
  target_ = nullptr;
  host_.FailAt("property.P: GetMaxMinValue");
  ExpectFailure([this] { Converter::ConversionProperty2024ToJson(property_, target_); });
  EXPECT_THAT(host_.Calls(), ElementsAre("CJsonObject()", "property.P: GetMaxMinValue()"));
  EXPECT_EQ(TextOf(target_), "{}");
}

}  // namespace
