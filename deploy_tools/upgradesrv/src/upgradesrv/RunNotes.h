#pragma once

#include <string>
#include <vector>

class CUpgradeContext;

namespace upgradesrv {

/// What the reader of a report has to know beside it: which metamodels the run takes, that both are the same, that the
/// display texts do not know the language. What cannot be found out is left to those who need it.
std::vector<std::string> RunNotes(const CUpgradeContext& context);

}  // namespace upgradesrv
