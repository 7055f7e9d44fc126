#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "kvxsptjson/JsonObject.h"
#include "kvxsptjson/JsonText.h"
#include "kvxsptjson/LargeObject.h"

namespace {

using test::Json;
using test::LargeObject;
using Object = std::shared_ptr<CJsonObject>;

/// Does by chance what can be done with a few objects, and the same with their JSON texts, of which each is parsed
/// anew.
class CRandomSteps {
 public:
  explicit CRandomSteps(unsigned seed) : random_(seed) {
    for (Object& object : objects_) {
      object = Pick(2) == 0 ? LargeObject() : Json("{}");
    }
    for (const Object& object : objects_) {
      texts_.push_back(object->ToText());
    }
  }

  void Step() {
    const std::size_t at = Pick(objects_.size());
    const std::size_t other = Pick(objects_.size());
    if (texts_[at].size() + texts_[other].size() > 200000) {
      Replace(at, Pick(2) == 0 ? LargeObject() : Json("{}"));
      return;
    }
    const std::size_t step = Pick(6);
    const std::size_t deep = Pick(3);
    const std::string value = std::to_string(Pick(100));
    const auto change = [&](CJsonObject& root, const Object& source) {
      const Object node = Node(root, deep);
      CJsonObject& target = node != nullptr ? *node : root;
      switch (step) {
        case 0:
          target.SetStringValue("n", value);
          break;
        case 1:
          target.SetObjectArrayValue("list", {source, source});
          break;
        default:
          target.SetObjectValue("inner", source);
      }
    };
    const Object model = Json(texts_[at]);
    change(*model, Alone(texts_[other]));
    change(*objects_[at], objects_[other]);
    texts_[at] = model->ToText();
    if (step == 5) {
      Replace(other, std::make_shared<CJsonObject>());
    }
  }

  void ExpectSame() const {
    for (std::size_t i = 0; i < objects_.size(); ++i) {
      ASSERT_TRUE(objects_[i]->ToText() == texts_[i]) << "object " << i;
    }
  }

 private:
  std::size_t Pick(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_); }

  void Replace(std::size_t at, const Object& object) {
    objects_[at] = object;
    texts_[at] = object->ToText();
  }

  /// An object that is copied at once because another view is kept.
  Object Alone(const std::string& text) {
    kept_ = Json(text);
    return std::make_shared<CJsonObject>(*kept_);
  }

  static Object Node(const CJsonObject& root, std::size_t deep) {
    Object node;
    for (std::size_t i = 0; i < deep; ++i) {
      const CJsonObject& from = node != nullptr ? *node : root;
      const auto [found, items] = from.GetPropertyObjectArrayValue("list");
      const Object next = found && !items.empty() && i % 2 == 1 ? items.back() : from.GetPropertyObjectValue("inner");
      if (next == nullptr) {
        break;
      }
      node = next;
    }
    return node;
  }

  std::mt19937 random_;
  std::vector<Object> objects_ = std::vector<Object>(3);
  std::vector<std::string> texts_;
  Object kept_;
};

TEST(GeneratedSharingTest, WhateverIsDoneEachObjectIsAsIfAllWereCopied) {
  for (unsigned seed = 0; seed < 40; ++seed) {
    SCOPED_TRACE(seed);
    CRandomSteps steps(seed);
    for (int i = 0; i < 20; ++i) {
      steps.Step();
      ASSERT_NO_FATAL_FAILURE(steps.ExpectSame()) << "after step " << i;
    }
  }
}

}  // namespace
