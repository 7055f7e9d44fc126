#pragma once

#include <rapidjson/fwd.h>

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <utility>

#include "kvxsptjson/kvxsptjson_export.h"

namespace kvx {

class CDeepCopy;
class CJsonAllocator;

/// RapidJSON's document and value, on an allocator that throws (see JsonAllocator.h).
using JsonDocumentBase =
    rapidjson::GenericDocument<rapidjson::UTF8<char>, rapidjson::MemoryPoolAllocator<CJsonAllocator>, CJsonAllocator>;
class JsonDocument;
using JsonValue = rapidjson::GenericValue<rapidjson::UTF8<char>, rapidjson::MemoryPoolAllocator<CJsonAllocator>>;

}  // namespace kvx

/// A view on one object node of a JSON document (UTF-8, members in insertion order). Several views may share one
/// document and keep it alive together. Use from one thread at a time per document; one that has been set into another
/// counts as a part of that.
///
/// Reading, by the operation's name:
/// - Get…Value throws CKVXException: kvx::kJsonMemberMissing "json member [KEY] not exist!" for a missing member,
///   kvx::kJsonWrongType "json member [KEY] is not TYPE!" for one of another type.
/// - GetProperty…Value does not throw for these: it answers false or an empty pointer and sets the last error to the
///   same code.
/// A node that is not an object has no members. Strings are taken with every byte, NUL included.
///
/// Writing copies what it is given, a large document not before one of the two is changed (JsonDocument.h), and keeps
/// the order of the other members. On a node that is not an object it throws CKVXException (kvx::kJsonWrongType, "json
/// node is not Object!").
///
/// A view must not be used any more once the object or array that holds its value has been changed through another
/// view.
class KVXSPTJSON_EXPORT CJsonObject {
 public:
  /// The root of a new document, an object without members.
  CJsonObject();
  /// A view on a value inside `document`. Neither may be null.
  CJsonObject(std::shared_ptr<kvx::JsonDocument> document, kvx::JsonValue* value);
  CJsonObject(const CJsonObject&) = default;
  CJsonObject& operator=(const CJsonObject&) = default;
  ~CJsonObject();

  /// The document that this view and others share.
  std::shared_ptr<kvx::JsonDocument> Share() const;

  /// Turns this view to the root of a new document, the file's; views that shared the old document keep that. The text
  /// must be RFC 8259 JSON in valid UTF-8, at most 512 levels deep, without a lone surrogate, its numbers within the
  /// range of double (a zero with an exponent above 308 is refused as too big, too); a leading byte order mark is
  /// skipped. On failure this view is as before. Throws CKVXException: kvx::kFileError when the file cannot be read,
  /// kvx::kMalformedDocument "PATH:LINE:COLUMN: what is wrong".
  void CreateFromFile(const std::string& path);
  /// The same for a text at hand; messages have `name` in place of the path.
  void CreateFromText(const std::string& text, const std::string& name);

  /// Writes the whole document, indented by two spaces and ended by a line end. The file is replaced as a whole or not
  /// at all (see AtomicFile.h). Throws CKVXException (kvx::kFileError).
  void SaveToFile(const std::string& path) const;
  /// This node as JSON text in the layout of SaveToFile, without the final line end.
  std::string ToText() const;

  /// Whether the node is an object. False only for views on parsed values of other types.
  bool IsObject() const;
  bool HasMember(const std::string& key) const;
  /// Whether the member is there and a string; unlike GetPropertyStringValue, which takes numbers as well.
  bool IsString(const std::string& key) const;
  /// Fills `keys` with the member names in document order; what it held before is dropped.
  void GetAllKey(std::list<std::string>& keys) const;

  /// A string, or a number as decimal text.
  std::string GetStringValue(const std::string& key) const;
  std::pair<bool, std::string> GetPropertyStringValue(const std::string& key) const;

  /// An array whose items are all strings. Another type, or an item of another type, is "not Array String".
  std::list<std::string> GetStringArrayValue(const std::string& key) const;
  std::pair<bool, std::list<std::string>> GetPropertyStringArrayValue(const std::string& key) const;

  /// An object on this document; an empty pointer for null.
  std::shared_ptr<CJsonObject> GetObjectValue(const std::string& key) const;
  /// An object on this document. Null counts as missing: an empty pointer and kvx::kJsonMemberMissing.
  std::shared_ptr<CJsonObject> GetPropertyObjectValue(const std::string& key) const;
  /// True and one object per item for an array; null counts as missing. An item that is not an object throws
  /// CKVXException (kvx::kJsonWrongType, "json member [KEY] is not Array Object!").
  std::pair<bool, std::list<std::shared_ptr<CJsonObject>>> GetPropertyObjectArrayValue(const std::string& key) const;

  /// An existing member keeps its place and gets the new value; a new one is added at the end.
  void SetStringValue(const std::string& key, const std::string& value);
  void SetUInt32Value(const std::string& key, std::uint32_t value);
  void SetStringArrayValue(const std::string& key, const std::list<std::string>& values);
  /// The same, with a deep copy of each object; an empty pointer becomes null.
  void SetObjectArrayValue(const std::string& key, const std::list<std::shared_ptr<CJsonObject>>& objects);
  /// A deep copy of `object` (null for an empty pointer), as the last member: an existing one is removed first.
  void SetObjectValue(const std::string& key, const std::shared_ptr<CJsonObject>& object);

  /// The code that the last failed GetProperty… call on this view has set; 0 before any.
  std::uint32_t GetLastError() const noexcept;

 private:
  kvx::JsonValue* Find(const std::string& key) const;
  kvx::JsonValue& Require(const std::string& key) const;
  kvx::JsonValue* FindNotNull(const std::string& key) const;
  void SetMember(const std::string& key, kvx::JsonValue& value);
  void BeforeChange();
  /// Whether nobody else has a view into the document.
  bool IsOnlyView() const;
  /// The object's value for this document.
  kvx::JsonValue CopyOf(const std::shared_ptr<CJsonObject>& object, kvx::CDeepCopy& copy);
  std::shared_ptr<CJsonObject> View(kvx::JsonValue& value) const;

  std::shared_ptr<kvx::JsonDocument> document_;
  kvx::JsonValue* value_;
  mutable std::uint32_t lastError_ = 0;
};
