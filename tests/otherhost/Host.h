#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "otherhost/Value.h"

class CJsonObject;
class CKVXException;
class CMetaBehavior2024;
class CMetaClass2024;
class CMetaLink2024;
class CMetaProperty2024;

namespace otherhost {

struct SProperty {
  std::string name;
  std::uint32_t length = 32;
  std::string type = "string";
  std::string max = "9";
  std::string min = "1";
  std::string defaultValue = "none";
  std::uint16_t precision = 2;
};

/// A class, link or behavior. Behaviors are a class's, methods a behavior's.
struct SElement {
  std::string name;
  std::vector<SProperty> properties;
  std::vector<std::string> behaviors;
  std::vector<std::string> methods;
};

struct SModel {
  std::vector<SElement> classes;
  std::vector<SElement> links;
  std::vector<SElement> behaviors;
  /// Names for which Exist… answers true and leaves the pointer empty, and for which Get… gives an empty one.
  std::set<std::string> hollowNames;
};

/// Thrown by the call that a test has chosen to fail. Nothing of the module or of a real host knows it.
struct SFailure {
  std::string call;
};

/// Gives the module what a test has laid down, and records every call that the module makes, before the call has done
/// anything:
///
///     LoadClientMeta()                            of the process: by name
///     client: ExistClass(A)                       of a dictionary: by its side
///     client class A: GetProperties()             of an element
///     client class A.Code: GetLength()            of a property or method
///     SetStringValue(internal_name, A)            of a JSON object; objects and arrays as JSON text
///
/// One host is there at a time. What the interface leaves to a host, this one does in its own way: names match exactly,
/// a member that is missing reads as "?", and beside false it gives "stale" instead of nothing.
class CHost {
 public:
  CHost();
  ~CHost();
  CHost(const CHost&) = delete;
  CHost& operator=(const CHost&) = delete;
  static CHost& Current();

  void Record(const std::string& call);

  /// Lets the first call that contains `text` throw SFailure; the other, the call of this number, counted from 1.
  void FailAt(const std::string& text) { failingText_ = text; }
  void FailAt(std::size_t number) { failingNumber_ = number; }
  void FailNoMore();

  const std::vector<std::string>& Calls() const { return calls_; }
  /// The calls that contain one of `texts`.
  std::vector<std::string> CallsWith(const std::vector<std::string>& texts) const;
  void ForgetCalls() { calls_.clear(); }

  SModel client;
  SModel original;
  /// The documents that CreateFromFile reads and SaveToFile writes, by path.
  std::map<std::string, SValue> files;
  /// The strategy's.
  std::shared_ptr<CJsonObject> parameter;
  std::shared_ptr<CJsonObject> result;

 private:
  std::vector<std::string> calls_;
  std::string failingText_;
  std::size_t failingNumber_ = 0;
};

/// What tests look at and the module may not.
struct STestAccess {
  static SValue& ValueOf(CJsonObject& object);
  static std::uint32_t CodeOf(const CKVXException& error);
  static std::string MessageOf(const CKVXException& error);
};

/// An object on a document of its own.
std::shared_ptr<CJsonObject> MakeJson(const SValue& value);
/// The object as JSON text.
std::string TextOf(const std::shared_ptr<CJsonObject>& object);

}  // namespace otherhost
