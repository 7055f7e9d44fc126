#include "checkmeta2024/CheckResultConverterPeer.h"

#include <sstream>

#include "support/PrivateMember.h"

namespace test {

using Converter = CCheckResultConverter;
using ObjectList = CCheckResultConverterPeer::ObjectList;
using Text = const std::string&;

struct SConverterBuffer {
  using Type = std::stringstream Converter::*;
  friend Type MemberOf(SConverterBuffer);
};

struct SConverterInit {
  using Type = void (Converter::*)();
  friend Type MemberOf(SConverterInit);
};

struct SConverterByType {
  using Type = void (Converter::*)(Text, Text, Text, const ObjectList&);
  friend Type MemberOf(SConverterByType);
};

struct SConverterUpdated {
  using Type = void (Converter::*)(Text, Text, const ObjectList&);
  friend Type MemberOf(SConverterUpdated);
};

struct SConverterNested {
  using Type = void (Converter::*)(Text, const std::list<std::string>&, const ObjectList&);
  friend Type MemberOf(SConverterNested);
};

struct SConverterNestedOfOneKind {
  using Type = void (Converter::*)(Text, Text, Text, Text, Text, const ObjectList&);
  friend Type MemberOf(SConverterNestedOfOneKind);
};

struct SConverterBehaviorNames {
  using Type = void (Converter::*)(Text, Text, Text, Text, const ObjectList&);
  friend Type MemberOf(SConverterBehaviorNames);
};

struct SConverterChanges {
  using Type = void (Converter::*)(Text, const ObjectList&);
  friend Type MemberOf(SConverterChanges);
};

template struct SPrivateMember<SConverterBuffer, &Converter::buffer_>;
template struct SPrivateMember<SConverterInit, &Converter::Init>;
template struct SPrivateMember<SConverterByType, &Converter::ConversionMetaInfoByType>;
template struct SPrivateMember<SConverterUpdated, &Converter::ConversionUpdatedMetaInfo>;
template struct SPrivateMember<SConverterNested, &Converter::ConversionUpdatedNestedMetaInfo>;
template struct SPrivateMember<SConverterNestedOfOneKind, &Converter::ConversionUpdatedNestedMetaInfo>;
template struct SPrivateMember<SConverterBehaviorNames, &Converter::ConversionUpdatedBehaviorInfoOfClass>;
template struct SPrivateMember<SConverterChanges, &Converter::ConversionUpdatedPropertyInfo>;

}  // namespace test

CCheckResultConverterPeer::CCheckResultConverterPeer(CCheckResultConverter& converter) : converter_(converter) {
  (converter_.*MemberOf(test::SConverterInit()))();
}

std::string CCheckResultConverterPeer::ByType(const std::string& indent, const std::string& changeKind,
                                              const std::string& metaType, const ObjectList& elements) {
  (converter_.*MemberOf(test::SConverterByType()))(indent, changeKind, metaType, elements);
  return Take();
}

std::string CCheckResultConverterPeer::Updated(const std::string& indent, const std::string& metaType,
                                               const ObjectList& elements) {
  (converter_.*MemberOf(test::SConverterUpdated()))(indent, metaType, elements);
  return Take();
}

std::string CCheckResultConverterPeer::Nested(const std::string& indent, const std::list<std::string>& kinds,
                                              const ObjectList& elements) {
  (converter_.*MemberOf(test::SConverterNested()))(indent, kinds, elements);
  return Take();
}

std::string CCheckResultConverterPeer::NestedMethods(const std::string& indent, const ObjectList& elements) {
  (converter_.*MemberOf(test::SConverterNestedOfOneKind()))(indent, "method", "inserted_methods", "deleted_methods",
                                                            "updated_methods", elements);
  return Take();
}

std::string CCheckResultConverterPeer::BehaviorNames(const std::string& indent, const ObjectList& elements) {
  (converter_.*MemberOf(test::SConverterBehaviorNames()))(indent, "inserted_behaviors", "deleted_behaviors",
                                                          "updated_behaviors", elements);
  return Take();
}

std::string CCheckResultConverterPeer::Changes(const std::string& indent, const ObjectList& changes) {
  (converter_.*MemberOf(test::SConverterChanges()))(indent, changes);
  return Take();
}

std::string CCheckResultConverterPeer::Take() {
  std::stringstream& buffer = converter_.*MemberOf(test::SConverterBuffer());
  std::string text = buffer.str();
  buffer.str("");
  return text;
}

namespace test {

std::list<std::shared_ptr<CJsonObject>> Objects(const std::string& array) {
  return Json(R"({"array": )" + array + "}")->GetPropertyObjectArrayValue("array").second;
}

void Convert(CCheckResultConverter& converter, const std::string& kind, const std::shared_ptr<CJsonObject>& section,
             std::string& text) {
  const std::string plural = kind == "class" ? "classes" : kind + "s";
  converter.ConversionMetaInfo(kind, "inserted_" + plural, "deleted_" + plural, "updated_" + plural, section, text);
}

std::string ConverterTest::Text(const std::string& kind, const std::string& section) {
  std::string text;
  Convert(converter_, kind, Json(section), text);
  return text;
}

}  // namespace test
