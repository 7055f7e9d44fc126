#pragma once

#include <cstdint>

/// The module's shared words: kinds, JSON keys, error codes. Texts become a std::string where an operation takes one:
/// strings made while the module is loaded would need memory that may not be there.
namespace checkmeta {

/// Kinds of elements, in "execute_elements", as top-level keys of the check result document and as display keys.
constexpr const char* kClass = "class";
constexpr const char* kLink = "link";
constexpr const char* kBehavior = "behavior";
/// Kinds of what elements carry.
constexpr const char* kMethod = "method";
constexpr const char* kProperty = "property";

/// Kinds of changes, also display keys.
constexpr const char* kInserted = "inserted";
constexpr const char* kDeleted = "deleted";
constexpr const char* kUpdated = "updated";
/// Display key of the words between an old and a new value.
constexpr const char* kUpdatedTo = "updated_to";

constexpr const char* kInsertedClasses = "inserted_classes";
constexpr const char* kDeletedClasses = "deleted_classes";
constexpr const char* kUpdatedClasses = "updated_classes";
constexpr const char* kInsertedLinks = "inserted_links";
constexpr const char* kDeletedLinks = "deleted_links";
constexpr const char* kUpdatedLinks = "updated_links";
constexpr const char* kInsertedBehaviors = "inserted_behaviors";
constexpr const char* kDeletedBehaviors = "deleted_behaviors";
constexpr const char* kUpdatedBehaviors = "updated_behaviors";
constexpr const char* kInsertedMethods = "inserted_methods";
constexpr const char* kDeletedMethods = "deleted_methods";
constexpr const char* kUpdatedMethods = "updated_methods";
constexpr const char* kInsertedProperties = "inserted_properties";
constexpr const char* kDeletedProperties = "deleted_properties";
constexpr const char* kUpdatedProperties = "updated_properties";

/// Members of a property update entry.
constexpr const char* kUpdatedField = "updated_field";
constexpr const char* kClientProperty = "client_property";
constexpr const char* kOriginalProperty = "original_property";

/// Members of an element JSON. Every kind has the first two; they are display keys as well.
constexpr const char* kInternalName = "internal_name";
constexpr const char* kDisplayName = "display_name";
constexpr const char* kClassId = "class_id";
constexpr const char* kTableName = "table_name";
constexpr const char* kField = "field";
constexpr const char* kType = "type";
constexpr const char* kLength = "length";
constexpr const char* kDefaultValue = "default_value";
constexpr const char* kPrecision = "precision";
constexpr const char* kMax = "max";
constexpr const char* kMin = "min";
constexpr const char* kLookupInternalName = "lookup_internal_name";

/// Parameter and result of the strategy.
constexpr const char* kExecuteElements = "execute_elements";
constexpr const char* kErrorInfo = "error_info";

constexpr std::uint32_t kPropertyCheckError = 0xA4520003;
constexpr std::uint32_t kBehaviorCheckError = 0xA4520004;
constexpr std::uint32_t kClassCheckError = 0xA4520005;
constexpr std::uint32_t kLinkCheckError = 0xA4520006;
/// An unknown kind of element or change; logged only.
constexpr std::uint32_t kUnknownKindError = 0xA4520008;

}  // namespace checkmeta
