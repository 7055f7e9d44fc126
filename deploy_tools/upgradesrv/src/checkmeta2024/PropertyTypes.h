#pragma once

#include <array>
#include <string_view>

namespace checkmeta {

/// The names of the metamodel's property types, for whoever needs to tell them apart. The check itself treats every
/// type alike.
constexpr std::string_view kTypeBinary = "binary";
constexpr std::string_view kTypeBoolean = "boolean";
constexpr std::string_view kTypeCascadingProperty = "cascading_property";
constexpr std::string_view kTypeClassificationProperty = "classification_property";
constexpr std::string_view kTypeDate = "date";
constexpr std::string_view kTypeDateTime = "datetime";
constexpr std::string_view kTypeEMail = "e-mail";
constexpr std::string_view kTypeFloat32 = "float32";
constexpr std::string_view kTypeFloat64 = "float64";
constexpr std::string_view kTypeIpAddress = "ip_address";
constexpr std::string_view kTypeInt16 = "int16";
constexpr std::string_view kTypeInt32 = "int32";
constexpr std::string_view kTypeInt64 = "int64";
constexpr std::string_view kTypeInt8 = "int8";
constexpr std::string_view kTypeMetaInternalName = "meta_internal_name";
constexpr std::string_view kTypeJsonObject = "json_object";
constexpr std::string_view kTypeJsonArray = "json_array";
constexpr std::string_view kTypeLookup = "lookup";
constexpr std::string_view kTypeMoney = "money";
constexpr std::string_view kTypePrimaryKey = "primary_key";
constexpr std::string_view kTypePassword = "password";
constexpr std::string_view kTypePicture = "picture";
constexpr std::string_view kTypeReferenceObjectArray = "reference_object_array";
constexpr std::string_view kTypeString = "string";
constexpr std::string_view kTypeText = "text";
constexpr std::string_view kTypeTime = "time";
constexpr std::string_view kTypeUrl = "url";

constexpr std::array<std::string_view, 27> kPropertyTypes = {kTypeBinary,
                                                             kTypeBoolean,
                                                             kTypeCascadingProperty,
                                                             kTypeClassificationProperty,
                                                             kTypeDate,
                                                             kTypeDateTime,
                                                             kTypeEMail,
                                                             kTypeFloat32,
                                                             kTypeFloat64,
                                                             kTypeIpAddress,
                                                             kTypeInt16,
                                                             kTypeInt32,
                                                             kTypeInt64,
                                                             kTypeInt8,
                                                             kTypeMetaInternalName,
                                                             kTypeJsonObject,
                                                             kTypeJsonArray,
                                                             kTypeLookup,
                                                             kTypeMoney,
                                                             kTypePrimaryKey,
                                                             kTypePassword,
                                                             kTypePicture,
                                                             kTypeReferenceObjectArray,
                                                             kTypeString,
                                                             kTypeText,
                                                             kTypeTime,
                                                             kTypeUrl};

}  // namespace checkmeta
