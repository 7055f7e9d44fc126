#pragma once

#include <string_view>

/// The members of a document and of its elements that hold no single value of an element.
inline constexpr std::string_view kGenerationMember = "generation";
inline constexpr std::string_view kClassesMember = "classes";
inline constexpr std::string_view kLinksMember = "links";
inline constexpr std::string_view kBehaviorsMember = "behaviors";
inline constexpr std::string_view kMethodsMember = "methods";
inline constexpr std::string_view kPropertiesMember = "properties";
