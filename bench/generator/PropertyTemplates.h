#pragma once

#include "upgrademeta2024/MetaProperty2024.h"

namespace bench {

/// What a property of one type commonly looks like, without its names; `draw` is any number. All types come up, common
/// ones more often.
const SMetaPropertyValues2024& PropertyTemplate(std::uint32_t draw);

/// The template of the first property of each element.
const SMetaPropertyValues2024& PrimaryKeyTemplate();

/// Changes one attribute that the check compares; which one, `draw` decides.
void ChangeOneAttribute(SMetaPropertyValues2024& values, std::uint32_t draw);

}  // namespace bench
