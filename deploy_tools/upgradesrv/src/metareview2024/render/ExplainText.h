#pragma once

#include "metareview2024/Decision.h"
#include "metareview2024/Rule.h"
#include "metareview2024/render/Render.h"
#include "metareview2024/words/Words.h"

namespace metareview {

/// All rules, a line each: name, risk, what it is called. `decisions` may set the risk.
void WriteRules(const CWords& words, const SDecisions& decisions, const Sink& sink);

/// What happens under a rule, why it has its risk, and what to do.
void WriteRule(const SRule& rule, const CWords& words, const SDecisions& decisions, const Sink& sink);

}  // namespace metareview
