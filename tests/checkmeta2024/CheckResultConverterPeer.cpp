#include "checkmeta2024/CheckResultConverterPeer.h"

CCheckResultConverterPeer::CCheckResultConverterPeer(CCheckResultConverter& converter) : converter_(converter) {
  converter_.Init();
}

std::string CCheckResultConverterPeer::ByType(const std::string& indent, const std::string& changeKind,
                                              const std::string& metaType, const ObjectList& elements) {
  converter_.ConversionMetaInfoByType(indent, changeKind, metaType, elements);
  return Take();
}

std::string CCheckResultConverterPeer::Updated(const std::string& indent, const std::string& metaType,
                                               const ObjectList& elements) {
  converter_.ConversionUpdatedMetaInfo(indent, metaType, elements);
  return Take();
}

std::string CCheckResultConverterPeer::Nested(const std::string& indent, const std::list<std::string>& kinds,
                                              const ObjectList& elements) {
  converter_.ConversionUpdatedNestedMetaInfo(indent, kinds, elements);
  return Take();
}

std::string CCheckResultConverterPeer::NestedMethods(const std::string& indent, const ObjectList& elements) {
  converter_.ConversionUpdatedNestedMetaInfo(indent, "method", "inserted_methods", "deleted_methods", "updated_methods",
                                             elements);
  return Take();
}

std::string CCheckResultConverterPeer::BehaviorNames(const std::string& indent, const ObjectList& elements) {
  converter_.ConversionUpdatedBehaviorInfoOfClass(indent, "inserted_behaviors", "deleted_behaviors",
                                                  "updated_behaviors", elements);
  return Take();
}

std::string CCheckResultConverterPeer::Changes(const std::string& indent, const ObjectList& changes) {
  converter_.ConversionUpdatedPropertyInfo(indent, changes);
  return Take();
}

std::string CCheckResultConverterPeer::Take() {
  std::string text = converter_.buffer_.str();
  converter_.buffer_.str("");
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
