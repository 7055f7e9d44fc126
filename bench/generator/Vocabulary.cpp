#include "generator/Vocabulary.h"

#include <array>
#include <initializer_list>
#include <string_view>

namespace bench {
namespace {

using Words = std::initializer_list<std::string_view>;

constexpr std::array<std::string_view, 40> kQualifiers = {
    "Actual",  "Annual",  "Base",   "Bound", "Current", "Daily",  "Default",  "Design", "Direct", "Draft",
    "Extra",   "Final",   "First",  "Fixed", "Free",    "Gross",  "Initial",  "Inner",  "Last",   "Legal",
    "Local",   "Lower",   "Main",   "Mean",  "Net",     "Next",   "Nominal",  "Open",   "Outer",  "Own",
    "Planned", "Primary", "Quoted", "Real",  "Second",  "Shared", "Standard", "Target", "Upper",  "Valid"};
constexpr std::array<std::string_view, 48> kNouns = {
    "Amount",  "Angle",  "Area",    "Batch",  "Budget", "Class",  "Code",   "Color",  "Comment", "Cost",
    "Count",   "Date",   "Density", "Depth",  "Duty",   "Effort", "Factor", "Finish", "Form",    "Grade",
    "Group",   "Height", "Index",   "Key",    "Label",  "Length", "Level",  "Limit",  "Mark",    "Mass",
    "Norm",    "Note",   "Number",  "Owner",  "Phase",  "Plant",  "Price",  "Rank",   "Rate",    "Reason",
    "Release", "Scale",  "Series",  "Source", "Stage",  "Status", "Unit",   "Weight"};
constexpr std::array<std::string_view, 20> kFields = {"Bought",   "Cast",      "Digital",  "Electrical", "Electronic",
                                                      "Forged",   "Hydraulic", "Machined", "Mechanical", "Molded",
                                                      "Optical",  "Packed",    "Painted",  "Pneumatic",  "Printed",
                                                      "Software", "Spare",     "Standard", "Tooling",    "Welded"};
constexpr std::array<std::string_view, 40> kThings = {
    "Assembly", "Baseline",   "Bill",     "Box",     "Cable",    "Certificate", "Change",   "Component",
    "Contract", "Customer",   "Document", "Drawing", "Endpoint", "Estimate",    "Fixture",  "Folder",
    "Gauge",    "Inspection", "Issue",    "Item",    "Machine",  "Material",    "Model",    "Notice",
    "Option",   "Order",      "Part",     "Policy",  "Process",  "Product",     "Project",  "Recipe",
    "Request",  "Revision",   "Schedule", "Site",    "Step",     "Substance",   "Supplier", "Template"};
constexpr std::array<std::string_view, 24> kAbilities = {
    "Numbered",   "Audited",    "Versioned",  "Controlled", "Approvable", "Lockable",   "Classifiable", "Accessible",
    "FileHolder", "Viewable",   "Searchable", "Subscribed", "Routed",     "Scheduled",  "Costed",       "Weighable",
    "Effective",  "Configured", "Compliant",  "Archived",   "Commented",  "Translated", "Signed",       "Transferred"};
constexpr std::array<std::string_view, 16> kActions = {"Approve", "Archive", "Assign", "Cancel", "Check",   "Close",
                                                       "Copy",    "Export",  "Lock",   "Open",   "Publish", "Reject",
                                                       "Release", "Reserve", "Revise", "Send"};

char Changed(char c, char first, char last) {
  return c >= first && c <= last ? static_cast<char>(c ^ ('a' ^ 'A')) : c;
}

/// The words that are not empty, followed by a number unless that is 0.
SName Join(Words words, std::uint32_t number = 0) {
  SName name;
  for (const std::string_view word : words) {
    if (word.empty()) {
      continue;
    }
    const bool isFirst = name.internalName.empty();
    name.internalName += word;
    name.displayName += isFirst ? word.substr(0, 1) : std::string{' ', Changed(word[0], 'A', 'Z')};
    name.displayName += word.substr(1);
    name.storedName += isFirst ? "" : "_";
    for (const char c : word) {
      name.storedName += Changed(c, 'a', 'z');
    }
  }
  if (number != 0) {
    const std::string digits = std::to_string(number);
    name.internalName += digits;
    name.displayName += " " + digits;
    name.storedName += digits;
  }
  return name;
}

/// Numbers the combinations of two lists of words and starts again with a number behind.
template <typename First, typename Second>
SName Combine(std::uint32_t index, const First& first, const Second& second, std::string_view between = "") {
  const auto firsts = static_cast<std::uint32_t>(first.size());
  const auto seconds = static_cast<std::uint32_t>(second.size());
  const std::uint32_t round = index / (firsts * seconds);
  return Join({first[index % firsts], between, second[index / firsts % seconds]}, round == 0 ? 0 : round + 1);
}

}  // namespace

const std::vector<SName>& PropertyNames() {
  static const std::vector<SName> names = [] {
    std::vector<SName> all;
    for (const std::string_view qualifier : kQualifiers) {
      for (const std::string_view noun : kNouns) {
        all.push_back(Join({qualifier, noun}));
      }
    }
    return all;
  }();
  return names;
}

SName ClassName(std::uint32_t index) {
  return Combine(index, kFields, kThings);
}

SName LinkName(std::uint32_t index) {
  return Combine(index, kThings, kThings, "To");
}

SName BehaviorName(std::uint32_t index) {
  return Combine(index, kAbilities, kThings, "As");
}

SName MethodName(std::uint32_t index) {
  return Combine(index, kActions, kThings);
}

}  // namespace bench
