#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "metareview2024/Terms.h"
#include "metareview2024/metareview2024_export.h"

namespace metareview {

/// What a difference is judged as. The rules exist once, as long as the program runs.
struct SRule {
  /// For example "length-shrinks".
  std::string_view name;
  /// What findings under the rule have, unless a decision or stored data says otherwise.
  ERisk risk;
};

/// All rules, each once, in the order in which they are tried.
METAREVIEW2024_EXPORT const std::vector<const SRule*>& Rules();

/// Null when there is no rule of that name.
METAREVIEW2024_EXPORT const SRule* FindRule(std::string_view name);

/// "; did you mean X?" about the rule that an unknown name is spelled like; empty when there is none.
METAREVIEW2024_EXPORT std::string QuestionAboutRule(std::string_view name);

}  // namespace metareview
