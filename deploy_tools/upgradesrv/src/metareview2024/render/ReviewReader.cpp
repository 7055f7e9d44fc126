#include "metareview2024/render/ReviewReader.h"

#include <algorithm>
#include <array>
#include <memory>
#include <unordered_set>

#include "metareview2024/Totals.h"
#include "metareview2024/reading/JsonReading.h"
#include "metareview2024/render/FindingReader.h"
#include "metareview2024/render/JsonText.h"

namespace metareview {

namespace {

using Json = CJsonReading::Json;
using Numbers = std::array<STotals, kKinds.size()>;

struct SDocument {
  SReview review;
  /// As the document has them, of the kinds that it names.
  std::array<std::optional<STotals>, kKinds.size()> totals;
};

const std::array<CJsonReading::SMember<STotals>, 5> kTotalsMembers = {
    {{"loss", true,
      [](CJsonReading& reading, const Json& json, STotals& totals) { totals.risks[0] = reading.Number(json); }},
     {"block", true,
      [](CJsonReading& reading, const Json& json, STotals& totals) { totals.risks[1] = reading.Number(json); }},
     {"attention", true,
      [](CJsonReading& reading, const Json& json, STotals& totals) { totals.risks[2] = reading.Number(json); }},
     {"safe", true,
      [](CJsonReading& reading, const Json& json, STotals& totals) { totals.risks[3] = reading.Number(json); }},
     {"accepted", true,
      [](CJsonReading& reading, const Json& json, STotals& totals) { totals.accepted = reading.Number(json); }}}};

template <EKind kKind>
void ReadTotals(CJsonReading& reading, const Json& json, SDocument& document) {
  STotals totals;
  reading.Object(json, totals, kTotalsMembers);
  document.totals.at(static_cast<std::size_t>(kKind)) = totals;
}

const std::array<CJsonReading::SMember<SDocument>, 3> kKindMembers = {
    {{"class", false, ReadTotals<EKind::kClass>},
     {"link", false, ReadTotals<EKind::kLink>},
     {"behavior", false, ReadTotals<EKind::kBehavior>}}};

void ReadElements(CJsonReading& reading, const Json& json, SReview& review) {
  reading.Array(json, [&](const Json& item) {
    const EKind kind = reading.Word(item, KindOf);
    if (!review.elements.empty() && review.elements.back() >= kind) {
      reading.Fail("the kinds are class, link, behavior, in this order");
    }
    review.elements.push_back(kind);
  });
  if (review.elements.empty()) {
    reading.Fail("no kind was compared");
  }
}

/// A list of objects, each read by a function.
template <typename T>
void ReadList(CJsonReading& reading, const Json& json, std::vector<T>& list, T (*read)(CJsonReading&, const Json&)) {
  reading.Array(json, [&](const Json& item) { list.push_back(read(reading, item)); });
}

void Nothing(CJsonReading& /*reading*/, const Json& /*json*/, SDocument& /*document*/) {}

template <std::string SReview::*kMember>
void ReadText(CJsonReading& reading, const Json& json, SDocument& document) {
  document.review.*kMember = reading.Text(json);
}
template <std::optional<std::string> SReview::*kMember>
void ReadOptionalText(CJsonReading& reading, const Json& json, SDocument& document) {
  document.review.*kMember = reading.Text(json);
}

const std::array<CJsonReading::SMember<SDocument>, 16> kDocumentMembers = {
    {// These three have been read already.
     {"format", true, Nothing},
     {"version", true, Nothing},
     {"complete", true, Nothing},
     {"client", true, ReadText<&SReview::client>},
     {"original", true, ReadText<&SReview::original>},
     {"base", true,
      [](CJsonReading& reading, const Json& json, SDocument& document) {
        if (!json.IsNull()) {
          document.review.base = reading.Text(json);
        }
      }},
     {"directory", true, ReadText<&SReview::directory>},
     {"against", false, ReadOptionalText<&SReview::against>},
     {"data", false, ReadOptionalText<&SReview::data>},
     {"elements", true,
      [](CJsonReading& reading, const Json& json, SDocument& document) {
        ReadElements(reading, json, document.review);
      }},
     {"totals", true,
      [](CJsonReading& reading, const Json& json, SDocument& document) {
        reading.Object(json, document, kKindMembers);
      }},
     {"findings", true,
      [](CJsonReading& reading, const Json& json, SDocument& document) {
        ReadList(reading, json, document.review.findings, ReadFinding);
      }},
     {"outdated", false,
      [](CJsonReading& reading, const Json& json, SDocument& document) {
        ReadList(reading, json, document.review.outdated, ReadOutdated);
      }},
     {"expired", false,
      [](CJsonReading& reading, const Json& json, SDocument& document) {
        ReadList(reading, json, document.review.expired, ReadDecision);
      }},
     {"stale", false,
      [](CJsonReading& reading, const Json& json, SDocument& document) {
        ReadList(reading, json, document.review.stale, ReadDecision);
      }},
     {"gone", false, [](CJsonReading& reading, const Json& json, SDocument& document) {
        ReadList(reading, json, document.review.gone, ReadGone);
      }}}};

/// Whether this is a review that can be read at all; what else is in it may be of a later version.
void RequireReadable(CJsonReading& reading, const Json& json) {
  const auto find = [&](const char* name) -> const Json* {
    const auto found = json.IsObject() ? json.FindMember(name) : Json::ConstMemberIterator();
    return json.IsObject() && found != json.MemberEnd() ? &found->value : nullptr;
  };
  const Json* format = find("format");
  if (format == nullptr || !format->IsString() || format->GetString() != kReviewFormat) {
    reading.Fail("this is not a review that was saved as JSON");
  }
  const Json* version = find("version");
  if (version == nullptr || !version->IsUint64() || version->GetUint64() != kReviewVersion) {
    reading.Fail("version", "only reviews of version " + std::to_string(kReviewVersion) + " can be read");
  }
  const Json* complete = find("complete");
  if (complete == nullptr || !complete->IsBool()) {
    reading.Fail("complete", "it is not known whether the review is complete");
  }
  if (!complete->GetBool()) {
    const Json* problem = find("problem");
    const bool hasProblem = problem != nullptr && problem->IsString();
    reading.Fail("complete", "the review failed" + (hasProblem ? ": " + reading.Text(*problem) : std::string()));
  }
}

/// The members that say the same thing twice must agree.
void RequireAgreement(CJsonReading& reading, const SDocument& document) {
  const SReview& review = document.review;
  const auto isCompared = [&](EKind kind) {
    return std::find(review.elements.begin(), review.elements.end(), kind) != review.elements.end();
  };
  std::unordered_set<std::uint64_t> ids;
  reading.Enter("findings");
  for (std::size_t i = 0; i < review.findings.size(); ++i) {
    const SFinding& finding = review.findings[i];
    if (!isCompared(finding.kind)) {
      reading.Fail(std::to_string(i), "its kind is not in \"elements\"");
    }
    if (!ids.insert(finding.id).second) {
      reading.Fail(std::to_string(i), "the finding is there twice");
    }
  }
  reading.Leave();
  const Numbers counted = CountTotals(review);
  reading.Enter("totals");
  for (const EKind kind : kKinds) {
    const auto place = static_cast<std::size_t>(kind);
    const std::optional<STotals>& written = document.totals.at(place);
    if (written.has_value() != isCompared(kind)) {
      reading.Fail("the kinds are not those in \"elements\"");
    }
    if (written.has_value() &&
        (written->risks != counted.at(place).risks || written->accepted != counted.at(place).accepted)) {
      reading.Fail(NameOf(kind), "the findings are not as many; the document was changed or cut");
    }
  }
  reading.Leave();
}

SReview Read(const Json& json) {
  CJsonReading reading;
  RequireReadable(reading, json);
  SDocument document;
  reading.Object(json, document, kDocumentMembers);
  RequireAgreement(reading, document);
  return std::move(document.review);
}

}  // namespace

SReview ReadReview(const std::string& text, const std::string& name) {
  return ReadJson(text, name, Read);
}

}  // namespace metareview
