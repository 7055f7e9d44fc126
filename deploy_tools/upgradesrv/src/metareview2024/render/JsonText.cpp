#include "metareview2024/render/JsonText.h"

#include <functional>
#include <optional>

#include "kvxsptstring/StringHelper.h"
#include "kvxsptstring/Utf8.h"
#include "metareview2024/Totals.h"

namespace metareview {

namespace {

/// Names of files and messages of others may have any bytes; a document is UTF-8.
std::string Utf8Text(const std::string& text) {
  return kvx::IsUtf8(text) ? text : CStringHelper::ToVisible(text);
}

using Writer = kvx::JsonWriter<kvx::JsonTextBuffer>;

std::string_view Text(const kvx::JsonTextBuffer& buffer) {
  return {buffer.GetString(), buffer.GetSize()};
}

void Put(Writer& writer, std::string_view text) {
  writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}
void Put(Writer& writer, std::uint32_t number) {
  writer.Uint(number);
}
void Put(Writer& writer, std::uint64_t number) {
  writer.Uint64(number);
}
void Put(Writer& writer, bool truth) {
  writer.Bool(truth);
}
void Put(Writer& writer, const Value& value) {
  if (const auto* number = std::get_if<std::uint32_t>(&value)) {
    Put(writer, *number);
  } else {
    Put(writer, std::string_view(std::get<std::string>(value)));
  }
}
template <typename Item>
void Put(Writer& writer, const std::vector<Item>& items) {
  writer.StartArray();
  for (const Item& item : items) {
    Put(writer, std::string_view(item));
  }
  writer.EndArray();
}

template <typename T>
void Member(Writer& writer, std::string_view name, const T& value) {
  writer.Key(name.data(), static_cast<rapidjson::SizeType>(name.size()));
  Put(writer, value);
}
void Member(Writer& writer, std::string_view name, const std::string& value) {
  Member(writer, name, std::string_view(value));
}
template <typename T>
void Member(Writer& writer, std::string_view name, const std::optional<T>& value) {
  if (value.has_value()) {
    Member(writer, name, *value);
  }
}

void StartMember(Writer& writer, std::string_view name) {
  writer.Key(name.data(), static_cast<rapidjson::SizeType>(name.size()));
  writer.StartObject();
}

void PutAcceptance(Writer& writer, const SAcceptance& acceptance) {
  Member(writer, "reason", acceptance.reason);
  Member(writer, "by", acceptance.by);
  Member(writer, "until", acceptance.until);
}

void PutTaken(Writer& writer, const STaken& taken) {
  Member(writer, "by", taken.by);
  Member(writer, "class_id", taken.classId);
  Member(writer, "table_name", taken.tableName);
  Member(writer, "field", taken.field);
}

void PutData(Writer& writer, const SData& data) {
  if (HasCounts(data)) {
    Member(writer, "rows", data.rows);
    Member(writer, "of", data.of);
    Member(writer, "tables", data.tables);
  }
  if (!data.problem.empty()) {
    Member(writer, "problem", Utf8Text(data.problem));
  }
}

/// A member that is an object, where there is one.
template <typename T>
void Object(Writer& writer, std::string_view name, const T* object, void (*put)(Writer&, const T&)) {
  if (object != nullptr) {
    StartMember(writer, name);
    put(writer, *object);
    writer.EndObject();
  }
}

std::optional<std::string_view> Name(const std::optional<ERisk>& risk) {
  return risk.has_value() ? std::optional(NameOf(*risk)) : std::nullopt;
}
std::optional<std::string_view> Name(const std::optional<ESince>& since) {
  return since.has_value() ? std::optional(NameOf(*since)) : std::nullopt;
}

void PutFinding(Writer& writer, const SFinding& finding) {
  Member(writer, "id", IdText(finding.id));
  Member(writer, "path", finding.path);
  Member(writer, "change", NameOf(finding.change));
  Member(writer, "rule", finding.rule->name);
  Member(writer, "risk", NameOf(finding.risk));
  Member(writer, "origin", NameOf(finding.origin));
  Member(writer, "reported", finding.reported);
  Member(writer, "display_name", finding.displayName);
  Member(writer, "type", finding.type);
  Object(writer, "taken", finding.taken.get(), PutTaken);
  Member(writer, "base", finding.base);
  Member(writer, "original", finding.original);
  Member(writer, "client", finding.client);
  Object(writer, "data", finding.data.get(), PutData);
  Member(writer, "risk_without_data", Name(finding.riskWithoutData));
  Object(writer, "accepted", finding.accepted.get(), PutAcceptance);
  Member(writer, "since", Name(finding.since));
}

void PutTotals(Writer& writer, const STotals& totals) {
  for (const ERisk risk : kRisks) {
    Member(writer, NameOf(risk), std::uint64_t{totals.Of(risk)});
  }
  Member(writer, "accepted", std::uint64_t{totals.accepted});
}

void PutOutdated(Writer& writer, const SOutdated& outdated) {
  Member(writer, "path", outdated.decision.path);
  Member(writer, "change", NameOf(outdated.decision.change));
  Member(writer, "accepted_original", outdated.decision.original);
  Member(writer, "accepted_client", outdated.decision.client);
  Member(writer, "original", outdated.original);
  Member(writer, "client", outdated.client);
  PutAcceptance(writer, outdated.decision.acceptance);
}

void PutDecision(Writer& writer, const SDecision& decision) {
  Member(writer, "path", decision.path);
  Member(writer, "change", NameOf(decision.change));
  Member(writer, "original", decision.original);
  Member(writer, "client", decision.client);
  PutAcceptance(writer, decision.acceptance);
}

void PutGone(Writer& writer, const SGone& gone) {
  Member(writer, "id", IdText(gone.id));
  Member(writer, "path", gone.path);
  Member(writer, "change", NameOf(gone.change));
}

std::string Written(const std::function<void(Writer&)>& put) {
  kvx::JsonTextBuffer buffer;
  Writer writer(buffer);
  put(writer);
  return std::string(Text(buffer));
}

template <typename T>
SJsonMember Simple(std::string_view name, const T& value) {
  return {name, Written([&](Writer& writer) { Put(writer, value); }), {}};
}

SJsonMember Totals(const SReview& review) {
  const std::array<STotals, kKinds.size()> totals = CountTotals(review);
  return {"totals",
          Written([&](Writer& writer) {
            writer.StartObject();
            for (const EKind kind : review.elements) {
              StartMember(writer, NameOf(kind));
              PutTotals(writer, totals.at(static_cast<std::size_t>(kind)));
              writer.EndObject();
            }
            writer.EndObject();
          }),
          {}};
}

template <typename T>
void AddList(std::vector<SJsonMember>& members, std::string_view name, const std::vector<T>& items,
             void (*put)(Writer&, const T&)) {
  if (items.empty()) {
    return;
  }
  SJsonMember member{name, {}, {}};
  for (const T& item : items) {
    member.items.push_back(Written([&](Writer& writer) {
      writer.StartObject();
      put(writer, item);
      writer.EndObject();
    }));
  }
  members.push_back(std::move(member));
}

}  // namespace

std::string_view CFindingJson::Of(const SFinding& finding) {
  buffer_.Clear();
  writer_.Reset(buffer_);
  writer_.StartObject();
  PutFinding(writer_, finding);
  writer_.EndObject();
  return Text(buffer_);
}

std::vector<SJsonMember> MembersBeforeFindings(const SReview& review) {
  std::vector<SJsonMember> members = {Simple("format", kReviewFormat), Simple("version", kReviewVersion),
                                      Simple("complete", review.complete)};
  const auto add = [&](std::string_view name, const std::string& text) {
    members.push_back(Simple(name, std::string_view(Utf8Text(text))));
  };
  const auto addOptional = [&](std::string_view name, const std::optional<std::string>& text) {
    if (text.has_value()) {
      add(name, *text);
    }
  };
  if (!review.complete) {
    add("problem", review.problem);
    add("directory", review.directory);
    return members;
  }
  add("client", review.client);
  add("original", review.original);
  addOptional("base", review.base);
  if (!review.base.has_value()) {
    members.push_back({"base", "null", {}});
  }
  add("directory", review.directory);
  addOptional("against", review.against);
  addOptional("data", review.data);
  std::vector<std::string_view> elements;
  for (const EKind kind : review.elements) {
    elements.push_back(NameOf(kind));
  }
  members.push_back(Simple("elements", elements));
  members.push_back(Totals(review));
  return members;
}

std::vector<SJsonMember> MembersAfterFindings(const SReview& review) {
  std::vector<SJsonMember> members;
  if (review.complete) {
    AddList(members, "outdated", review.outdated, PutOutdated);
    AddList(members, "expired", review.expired, PutDecision);
    AddList(members, "stale", review.stale, PutDecision);
    AddList(members, "gone", review.gone, PutGone);
  }
  return members;
}

}  // namespace metareview
