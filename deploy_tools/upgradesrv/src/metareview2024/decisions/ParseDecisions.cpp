#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "metareview2024/DecisionsFile.h"
#include "metareview2024/Path.h"
#include "metareview2024/decisions/DecisionIndex.h"
#include "metareview2024/decisions/Reason.h"
#include "metareview2024/reading/JsonReading.h"

namespace metareview {

namespace {

using Json = CJsonReading::Json;
using Keys = std::unordered_set<std::string>;

/// An entry that accepts, while it is read: what its values are depends on its path.
struct SEntry {
  SDecision decision;
  const Json* original = nullptr;
  const Json* client = nullptr;
};

/// The file, with the keys of the entries that have been read.
struct SFile {
  SDecisions decisions;
  Keys rules;
  Keys accepted;
};

template <typename Words>
typename Words::value_type ReadOneOf(CJsonReading& reading, const Json& json, const Words& words) {
  const std::string text = reading.Text(json);
  std::string names;
  for (const auto word : words) {
    if (NameOf(word) == text) {
      return word;
    }
    names += (names.empty() ? "" : ", ") + std::string(NameOf(word));
  }
  reading.Fail("\"" + text + "\" is not one of " + names);
}

std::string ReadReason(CJsonReading& reading, const Json& json) {
  std::string reason = reading.Text(json);
  if (IsBlank(reason)) {
    reading.Fail("the reason is empty");
  }
  return reason;
}

std::string ReadDay(CJsonReading& reading, const Json& json) {
  std::string day = reading.Text(json);
  if (!IsDate(day)) {
    reading.Fail("\"" + day + "\" is not a day; write YYYY-MM-DD");
  }
  return day;
}

const std::array<CJsonReading::SMember<SRuleDecision>, 3> kRuleMembers = {
    {{"rule", true,
      [](CJsonReading& reading, const Json& json, SRuleDecision& decision) {
        const std::string name = reading.Text(json);
        decision.rule = FindRule(name);
        if (decision.rule == nullptr) {
          reading.Fail("there is no rule \"" + name + "\"" + QuestionAboutRule(name));
        }
      }},
     {"risk", true,
      [](CJsonReading& reading, const Json& json, SRuleDecision& decision) {
        decision.risk = ReadOneOf(reading, json, kRisks);
      }},
     {"reason", false, [](CJsonReading& reading, const Json& json, SRuleDecision& decision) {
        decision.reason = ReadReason(reading, json);
      }}}};

const std::array<CJsonReading::SMember<SEntry>, 7> kEntryMembers = {
    {{"path", true,
      [](CJsonReading& reading, const Json& json, SEntry& entry) {
        entry.decision.path = reading.Text(json);
        if (const auto problem = ProblemOfPattern(entry.decision.path)) {
          reading.Fail(*problem);
        }
      }},
     {"change", true,
      [](CJsonReading& reading, const Json& json, SEntry& entry) {
        entry.decision.change = ReadOneOf(reading, json, kChanges);
      }},
     {"original", false, [](CJsonReading& /*reading*/, const Json& json, SEntry& entry) { entry.original = &json; }},
     {"client", false, [](CJsonReading& /*reading*/, const Json& json, SEntry& entry) { entry.client = &json; }},
     {"reason", true,
      [](CJsonReading& reading, const Json& json, SEntry& entry) {
        entry.decision.acceptance.reason = ReadReason(reading, json);
      }},
     {"by", false,
      [](CJsonReading& reading, const Json& json, SEntry& entry) {
        entry.decision.acceptance.by = reading.Text(json);
      }},
     {"until", false, [](CJsonReading& reading, const Json& json, SEntry& entry) {
        entry.decision.acceptance.until = ReadDay(reading, json);
      }}}};

/// The value of a changed attribute without a wildcard; no other entry may have one.
std::optional<Value> ReadValue(CJsonReading& reading, const SDecision& decision, std::string_view name,
                               const Json* json) {
  if (decision.change != EChange::kChanged || HasWildcard(decision.path)) {
    if (json != nullptr) {
      reading.Fail(name, "only an entry for one changed attribute has values");
    }
    return std::nullopt;
  }
  if (json == nullptr) {
    reading.Fail("the member \"" + std::string(name) + "\" is missing");
  }
  reading.Enter(name);
  Value value;
  if (IsNumeric(ParsePath(decision.path)->attribute)) {
    value = static_cast<std::uint32_t>(reading.Number(*json, std::numeric_limits<std::uint32_t>::max()));
  } else {
    value = reading.Text(*json);
  }
  reading.Leave();
  return value;
}

void ReadRule(CJsonReading& reading, const Json& json, SFile& file) {
  SRuleDecision decision;
  reading.Object(json, decision, kRuleMembers);
  if (!file.rules.emplace(decision.rule->name).second) {
    reading.Fail("rule", "the rule has an entry already");
  }
  file.decisions.rules.push_back(std::move(decision));
}

void ReadEntry(CJsonReading& reading, const Json& json, SFile& file) {
  SEntry entry;
  reading.Object(json, entry, kEntryMembers);
  SDecision& decision = entry.decision;
  if (IsAboutAttributes(decision.path) != (decision.change == EChange::kChanged)) {
    reading.Fail("change", IsAboutAttributes(decision.path)
                               ? "an attribute can only be changed"
                               : "what is not an attribute can only be inserted or deleted");
  }
  if (!file.accepted.insert(KeyOf(decision.path, decision.change)).second) {
    reading.Fail("path", "the path has an entry for this change already");
  }
  decision.original = ReadValue(reading, decision, "original", entry.original);
  decision.client = ReadValue(reading, decision, "client", entry.client);
  file.decisions.accepted.push_back(std::move(decision));
}

const std::array<CJsonReading::SMember<SFile>, 2> kFileMembers = {
    {{"rules", false,
      [](CJsonReading& reading, const Json& json, SFile& file) {
        reading.Array(json, [&](const Json& item) { ReadRule(reading, item, file); });
      }},
     {"accepted", false, [](CJsonReading& reading, const Json& json, SFile& file) {
        reading.Array(json, [&](const Json& item) { ReadEntry(reading, item, file); });
      }}}};

}  // namespace

SDecisions ParseDecisions(const std::string& text, const std::string& name) {
  return ReadJson(text, name, [](const Json& root) {
    CJsonReading reading;
    SFile file;
    reading.Object(root, file, kFileMembers);
    return std::move(file.decisions);
  });
}

}  // namespace metareview
