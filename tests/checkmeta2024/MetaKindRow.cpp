#include "checkmeta2024/MetaKindRow.h"

namespace test {
namespace {

std::vector<SProperty> OneProperty(const SElement& element) {
  SProperty property = Property("Code");
  property.length = element.length;
  return {property};
}

std::vector<SClass> Classes(const std::vector<SElement>& elements) {
  std::vector<SClass> classes;
  for (const SElement& element : elements) {
    classes.push_back({element.name, {}, OneProperty(element)});
  }
  return classes;
}

SModel ClassModel(const std::vector<SElement>& elements) {
  return {Classes(elements), {}, {}};
}

SModel LinkModel(const std::vector<SElement>& elements) {
  return {{}, Classes(elements), {}};
}

SModel BehaviorModel(const std::vector<SElement>& elements) {
  SModel model;
  for (const SElement& element : elements) {
    model.behaviors.push_back({element.name, {}, OneProperty(element)});
  }
  return model;
}

}  // namespace

void PrintTo(const SMetaKindRow& row, std::ostream* output) {
  *output << row.kind;
}

const std::vector<SMetaKindRow>& MetaKindRows() {
  using Helper = CCheckMeta2024Helper;
  static const std::vector<SMetaKindRow> rows = {
      {"class", "inserted_classes", "updated_classes", "deleted_classes", &Helper::CheckMetaClasses,
       &Helper::CheckMetaClasses, &ClassModel,
       "meta check class error.class:", "CCheckMeta2024Helper::CheckMetaClasses", 0xA4520005, "A4520005", 56, 69},
      {"link", "inserted_links", "updated_links", "deleted_links", &Helper::CheckMetaLinks, &Helper::CheckMetaLinks,
       &LinkModel, "meta check link error.link:", "CCheckMeta2024Helper::CheckMetaLinks", 0xA4520006, "A4520006", 161,
       174},
      {"behavior", "inserted_behaviors", "updated_behaviors", "deleted_behaviors", &Helper::CheckMetaBehaviors,
       &Helper::CheckMetaBehaviors, &BehaviorModel, "meta check behavior error.behavior:",
       "CCheckMeta2024Helper::CheckMetaBehaviors", 0xA4520004, "A4520004", 266, 279},
  };
  return rows;
}

}  // namespace test
