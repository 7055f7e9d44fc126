#pragma once

#include "metareview2024/Decision.h"
#include "metareview2024/Finding.h"
#include "metareview2024/Review.h"
#include "metareview2024/reading/JsonReading.h"

/// The objects in the lists of a saved review.
namespace metareview {

SFinding ReadFinding(CJsonReading& reading, const CJsonReading::Json& json);
SOutdated ReadOutdated(CJsonReading& reading, const CJsonReading::Json& json);
SDecision ReadDecision(CJsonReading& reading, const CJsonReading::Json& json);
SGone ReadGone(CJsonReading& reading, const CJsonReading::Json& json);

}  // namespace metareview
