#pragma once

#include <cstdint>
#include <string>

/// The module's shared words: kinds, JSON keys, error codes, property types. Strings are std::string because every
/// operation that takes them does.
namespace checkmeta {

/// Kinds of elements, in "execute_elements", as top-level keys of the check result document and as display keys.
inline const std::string kClass = "class";
inline const std::string kLink = "link";
inline const std::string kBehavior = "behavior";
/// Kinds of what elements carry.
inline const std::string kMethod = "method";
inline const std::string kProperty = "property";

/// Kinds of changes, also display keys.
inline const std::string kInserted = "inserted";
inline const std::string kDeleted = "deleted";
inline const std::string kUpdated = "updated";
/// Display key of the words between an old and a new value.
inline const std::string kUpdatedTo = "updated_to";

inline const std::string kInsertedClasses = "inserted_classes";
inline const std::string kDeletedClasses = "deleted_classes";
inline const std::string kUpdatedClasses = "updated_classes";
inline const std::string kInsertedLinks = "inserted_links";
inline const std::string kDeletedLinks = "deleted_links";
inline const std::string kUpdatedLinks = "updated_links";
inline const std::string kInsertedBehaviors = "inserted_behaviors";
inline const std::string kDeletedBehaviors = "deleted_behaviors";
inline const std::string kUpdatedBehaviors = "updated_behaviors";
inline const std::string kInsertedMethods = "inserted_methods";
inline const std::string kDeletedMethods = "deleted_methods";
inline const std::string kUpdatedMethods = "updated_methods";
inline const std::string kInsertedProperties = "inserted_properties";
inline const std::string kDeletedProperties = "deleted_properties";
inline const std::string kUpdatedProperties = "updated_properties";

/// Members of a property update entry.
inline const std::string kUpdatedField = "updated_field";
inline const std::string kClientProperty = "client_property";
inline const std::string kOriginalProperty = "original_property";

/// Members of an element JSON. The first two stand in every kind's and are display keys as well.
inline const std::string kInternalName = "internal_name";
inline const std::string kDisplayName = "display_name";
inline const std::string kClassId = "class_id";
inline const std::string kTableName = "table_name";
inline const std::string kField = "field";
inline const std::string kType = "type";
inline const std::string kLength = "length";
inline const std::string kDefaultValue = "default_value";
inline const std::string kPrecision = "precision";
inline const std::string kMax = "max";
inline const std::string kMin = "min";
inline const std::string kLookupInternalName = "lookup_internal_name";

/// Parameter and result of the strategy.
inline const std::string kExecuteElements = "execute_elements";
inline const std::string kErrorInfo = "error_info";

constexpr std::uint32_t kPropertyCheckError = 0xA4520003;
constexpr std::uint32_t kBehaviorCheckError = 0xA4520004;
constexpr std::uint32_t kClassCheckError = 0xA4520005;
constexpr std::uint32_t kLinkCheckError = 0xA4520006;
/// An unknown kind of element or change; logged only.
constexpr std::uint32_t kUnknownKindError = 0xA4520008;

}  // namespace checkmeta
