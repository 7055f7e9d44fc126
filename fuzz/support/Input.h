#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

class CJsonObject;

namespace fuzz {

/// The bytes of an input as text.
std::string Text(const std::uint8_t* data, std::size_t size);

/// The input of a fuzzer that needs more than one document: a JSON object whose members are the documents.
class CDocuments {
 public:
  /// Whether the input is such an object at all.
  bool Read(const std::string& input);

  /// The text of a document: the content of a string, which need not be JSON, or any other value as JSON. Empty for a
  /// member that is missing.
  std::string Text(const std::string& key) const;
  /// All members as one object.
  std::shared_ptr<CJsonObject> Object() const { return root_; }

 private:
  std::shared_ptr<CJsonObject> root_;
};

}  // namespace fuzz
