#pragma once

#include <optional>
#include <string>
#include <vector>

#include "metareview2024/Finding.h"

/// Fragments of the page's address, which say what is filtered: "kind=class&risk=loss&decision=open". Keys are in the
/// order of the form's fields.
namespace metareview::page {

/// Findings of a kind and a risk that are not accepted; of any where that is empty.
std::string OpenFragment(std::optional<EKind> kind, std::optional<ERisk> risk);
std::string AcceptedFragment(std::optional<EKind> kind);
std::string KindFragment(EKind kind);
std::string SinceFragment(ESince since);
constexpr const char* kUnreportedFragment = "report=no";
constexpr const char* kConflictFragment = "origin=both";

/// All fragments above that the finding is among.
std::vector<std::string> FragmentsOf(const SFinding& finding);

}  // namespace metareview::page
