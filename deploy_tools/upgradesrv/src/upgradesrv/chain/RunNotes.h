#pragma once

#include <string>
#include <vector>

class CUpgradeContext;

namespace upgradesrv {

/// What the reader of a report has to know of the metamodels: which ones the run takes, that both are the same. What
/// cannot be found out is left to those who need it.
std::vector<std::string> RunNotes(const CUpgradeContext& context);

}  // namespace upgradesrv
