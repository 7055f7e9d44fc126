#include "metareview2024/render/FindingReader.h"

#include <array>
#include <memory>

#include "metareview2024/DecisionsFile.h"
#include "metareview2024/Path.h"

namespace metareview {

namespace {

using Json = CJsonReading::Json;

constexpr std::uint64_t kMaxNumber = std::numeric_limits<std::uint32_t>::max();

std::uint32_t ReadUint32(CJsonReading& reading, const Json& json) {
  return static_cast<std::uint32_t>(reading.Number(json, kMaxNumber));
}

Value ReadValue(CJsonReading& reading, const Json& json) {
  return json.IsNumber() ? Value(ReadUint32(reading, json)) : Value(reading.Text(json));
}

const SRule* ReadRule(CJsonReading& reading, const Json& json) {
  const std::string name = reading.Text(json);
  const SRule* rule = FindRule(name);
  if (rule == nullptr) {
    reading.Fail("\"" + name + "\" is not a rule");
  }
  return rule;
}

/// An identifier is 16 hexadecimal digits, lower case.
std::uint64_t ReadId(CJsonReading& reading, const Json& json) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  constexpr std::size_t kSize = 16;
  const std::string text = reading.Text(json);
  if (text.size() != kSize || text.find_first_not_of(kDigits) != std::string::npos) {
    reading.Fail("expected 16 hexadecimal digits");
  }
  std::uint64_t id = 0;
  for (const char c : text) {
    id = id << 4U | kDigits.find(c);
  }
  return id;
}

std::string ReadDay(CJsonReading& reading, const Json& json) {
  std::string day = reading.Text(json);
  if (!IsDate(day)) {
    reading.Fail("expected a day, written YYYY-MM-DD");
  }
  return day;
}

template <typename T, std::string T::*kMember>
void Text(CJsonReading& reading, const Json& json, T& target) {
  target.*kMember = reading.Text(json);
}
template <typename T, std::optional<std::string> T::*kMember>
void OptionalText(CJsonReading& reading, const Json& json, T& target) {
  target.*kMember = reading.Text(json);
}
template <typename T, std::optional<Value> T::*kMember>
void OptionalValue(CJsonReading& reading, const Json& json, T& target) {
  target.*kMember = ReadValue(reading, json);
}
template <typename T>
void Change(CJsonReading& reading, const Json& json, T& target) {
  target.change = reading.Word(json, ChangeOf);
}
template <typename T>
void Id(CJsonReading& reading, const Json& json, T& target) {
  target.id = ReadId(reading, json);
}

const std::array<CJsonReading::SMember<STaken>, 4> kTakenMembers = {
    {{"by", true, Text<STaken, &STaken::by>},
     {"class_id", false,
      [](CJsonReading& reading, const Json& json, STaken& taken) { taken.classId = ReadUint32(reading, json); }},
     {"table_name", false, OptionalText<STaken, &STaken::tableName>},
     {"field", false, OptionalText<STaken, &STaken::field>}}};

void ReadTaken(CJsonReading& reading, const Json& json, SFinding& finding) {
  STaken taken;
  reading.Object(json, taken, kTakenMembers);
  if (!ParsePath(taken.by).has_value()) {
    reading.Fail("by", "this is not a path");
  }
  finding.taken = std::make_shared<const STaken>(std::move(taken));
}

/// What was counted is there in whole; where that is nothing, or not everything, a problem is.
struct SReadData {
  SData data;
  bool hasRows = false;
  bool hasOf = false;
  bool hasTables = false;
  bool hasProblem = false;
};

const std::array<CJsonReading::SMember<SReadData>, 4> kDataMembers = {
    {{"rows", false,
      [](CJsonReading& reading, const Json& json, SReadData& read) {
        read.data.rows = reading.Number(json);
        read.hasRows = true;
      }},
     {"of", false,
      [](CJsonReading& reading, const Json& json, SReadData& read) {
        read.data.of = reading.Number(json);
        read.hasOf = true;
      }},
     {"tables", false,
      [](CJsonReading& reading, const Json& json, SReadData& read) {
        reading.Array(json, [&](const Json& item) { read.data.tables.push_back(reading.Text(item)); });
        read.hasTables = true;
      }},
     {"problem", false, [](CJsonReading& reading, const Json& json, SReadData& read) {
        read.data.problem = reading.Text(json);
        read.hasProblem = !read.data.problem.empty();
      }}}};

void ReadData(CJsonReading& reading, const Json& json, SFinding& finding) {
  SReadData read;
  reading.Object(json, read, kDataMembers);
  const bool hasAll = read.hasRows && read.hasOf && read.hasTables;
  const bool hasAny = read.hasRows || read.hasOf || read.hasTables;
  if (hasAll != hasAny || !(hasAll || read.hasProblem)) {
    reading.Fail(R"(expected "rows", "of" and "tables", or "problem", or all four)");
  }
  if (hasAll && !HasCounts(read.data)) {
    reading.Fail("tables", "there is no table, but something was counted");
  }
  if (hasAll && read.data.rows > read.data.of) {
    reading.Fail("rows", "they are more than were looked at");
  }
  finding.data = std::make_shared<const SData>(std::move(read.data));
}

const std::array<CJsonReading::SMember<SAcceptance>, 3> kAcceptanceMembers = {
    {{"reason", true, Text<SAcceptance, &SAcceptance::reason>},
     {"by", false, OptionalText<SAcceptance, &SAcceptance::by>},
     {"until", false, [](CJsonReading& reading, const Json& json, SAcceptance& acceptance) {
        acceptance.until = ReadDay(reading, json);
      }}}};

void ReadAccepted(CJsonReading& reading, const Json& json, SFinding& finding) {
  SAcceptance acceptance;
  reading.Object(json, acceptance, kAcceptanceMembers);
  finding.accepted = std::make_shared<const SAcceptance>(std::move(acceptance));
}

const std::array<CJsonReading::SMember<SFinding>, 17> kFindingMembers = {
    {{"id", true, Id<SFinding>},
     {"path", true, Text<SFinding, &SFinding::path>},
     {"change", true, Change<SFinding>},
     {"rule", true,
      [](CJsonReading& reading, const Json& json, SFinding& finding) { finding.rule = ReadRule(reading, json); }},
     {"risk", true,
      [](CJsonReading& reading, const Json& json, SFinding& finding) { finding.risk = reading.Word(json, RiskOf); }},
     {"origin", true,
      [](CJsonReading& reading, const Json& json, SFinding& finding) {
        finding.origin = reading.Word(json, OriginOf);
      }},
     {"reported", true,
      [](CJsonReading& reading, const Json& json, SFinding& finding) { finding.reported = reading.Truth(json); }},
     {"display_name", false, OptionalText<SFinding, &SFinding::displayName>},
     {"type", false, OptionalText<SFinding, &SFinding::type>},
     {"taken", false, ReadTaken},
     {"base", false, OptionalValue<SFinding, &SFinding::base>},
     {"original", false, OptionalValue<SFinding, &SFinding::original>},
     {"client", false, OptionalValue<SFinding, &SFinding::client>},
     {"data", false, ReadData},
     {"risk_without_data", false,
      [](CJsonReading& reading, const Json& json, SFinding& finding) {
        finding.riskWithoutData = reading.Word(json, RiskOf);
      }},
     {"accepted", false, ReadAccepted},
     {"since", false, [](CJsonReading& reading, const Json& json, SFinding& finding) {
        finding.since = reading.Word(json, SinceOf);
      }}}};

bool IsNumber(EAttribute attribute) {
  return attribute == EAttribute::kClassId || attribute == EAttribute::kLength || attribute == EAttribute::kPrecision;
}

/// The path says whether there are values, and of which type.
void RequireValues(CJsonReading& reading, const SFinding& finding) {
  const bool hasValues = finding.change == EChange::kChanged;
  const auto require = [&](std::string_view name, const std::optional<Value>& value, bool isRequired) {
    if (!value.has_value()) {
      if (isRequired) {
        reading.Fail("the member \"" + std::string(name) + "\" is missing");
      }
      return;
    }
    if (!hasValues) {
      reading.Fail(name, "only an attribute that differs has values");
    }
    if (std::holds_alternative<std::uint32_t>(*value) != IsNumber(finding.attribute)) {
      reading.Fail(name, IsNumber(finding.attribute) ? "expected a number" : "expected a string");
    }
  };
  require("base", finding.base, false);
  require("original", finding.original, hasValues);
  require("client", finding.client, hasValues);
}

const std::array<CJsonReading::SMember<SOutdated>, 9> kOutdatedMembers = {
    {{"path", true,
      [](CJsonReading& reading, const Json& json, SOutdated& outdated) {
        outdated.decision.path = reading.Text(json);
      }},
     {"change", true,
      [](CJsonReading& reading, const Json& json, SOutdated& outdated) { Change(reading, json, outdated.decision); }},
     {"accepted_original", true,
      [](CJsonReading& reading, const Json& json, SOutdated& outdated) {
        outdated.decision.original = ReadValue(reading, json);
      }},
     {"accepted_client", true,
      [](CJsonReading& reading, const Json& json, SOutdated& outdated) {
        outdated.decision.client = ReadValue(reading, json);
      }},
     {"original", true,
      [](CJsonReading& reading, const Json& json, SOutdated& outdated) {
        outdated.original = ReadValue(reading, json);
      }},
     {"client", true,
      [](CJsonReading& reading, const Json& json, SOutdated& outdated) { outdated.client = ReadValue(reading, json); }},
     {"reason", true,
      [](CJsonReading& reading, const Json& json, SOutdated& outdated) {
        outdated.decision.acceptance.reason = reading.Text(json);
      }},
     {"by", false,
      [](CJsonReading& reading, const Json& json, SOutdated& outdated) {
        outdated.decision.acceptance.by = reading.Text(json);
      }},
     {"until", false, [](CJsonReading& reading, const Json& json, SOutdated& outdated) {
        outdated.decision.acceptance.until = ReadDay(reading, json);
      }}}};

const std::array<CJsonReading::SMember<SDecision>, 7> kDecisionMembers = {
    {{"path", true, Text<SDecision, &SDecision::path>},
     {"change", true, Change<SDecision>},
     {"original", false, OptionalValue<SDecision, &SDecision::original>},
     {"client", false, OptionalValue<SDecision, &SDecision::client>},
     {"reason", true,
      [](CJsonReading& reading, const Json& json, SDecision& decision) {
        decision.acceptance.reason = reading.Text(json);
      }},
     {"by", false,
      [](CJsonReading& reading, const Json& json, SDecision& decision) {
        decision.acceptance.by = reading.Text(json);
      }},
     {"until", false, [](CJsonReading& reading, const Json& json, SDecision& decision) {
        decision.acceptance.until = ReadDay(reading, json);
      }}}};

const std::array<CJsonReading::SMember<SGone>, 3> kGoneMembers = {
    {{"id", true, Id<SGone>}, {"path", true, Text<SGone, &SGone::path>}, {"change", true, Change<SGone>}}};

/// What a path is about, which must be a difference of that kind and have that identifier.
SPath RequirePath(CJsonReading& reading, const std::string& text, EChange change, std::uint64_t id) {
  const std::optional<SPath> path = ParsePath(text);
  if (!path.has_value()) {
    reading.Fail("path", "this is not a path of a difference");
  }
  if ((path->attribute != EAttribute::kNone) != (change == EChange::kChanged)) {
    reading.Fail("change", "an attribute is changed, anything else inserted or deleted");
  }
  if (id != FindingId(text, change)) {
    reading.Fail("id", "it does not belong to this path and change");
  }
  return *path;
}

}  // namespace

SFinding ReadFinding(CJsonReading& reading, const Json& json) {
  SFinding finding;
  reading.Object(json, finding, kFindingMembers);
  const SPath path = RequirePath(reading, finding.path, finding.change, finding.id);
  finding.kind = path.kind;
  finding.thing = path.thing;
  finding.attribute = path.attribute;
  RequireValues(reading, finding);
  return finding;
}

SOutdated ReadOutdated(CJsonReading& reading, const Json& json) {
  SOutdated outdated;
  reading.Object(json, outdated, kOutdatedMembers);
  return outdated;
}

SDecision ReadDecision(CJsonReading& reading, const Json& json) {
  SDecision decision;
  reading.Object(json, decision, kDecisionMembers);
  return decision;
}

SGone ReadGone(CJsonReading& reading, const Json& json) {
  SGone gone;
  reading.Object(json, gone, kGoneMembers);
  RequirePath(reading, gone.path, gone.change, gone.id);
  return gone;
}

}  // namespace metareview
