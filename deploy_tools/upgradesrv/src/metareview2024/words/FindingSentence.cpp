#include "metareview2024/words/FindingSentence.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "metareview2024/Path.h"
#include "metareview2024/words/RuleWords.h"

namespace metareview {

namespace {

/// What the placeholders of one finding's sentence stand for.
struct SSubject {
  const CWords& words;
  const SFinding& finding;
  SPath path;
  const SOutdated* outdated;
  const SDecision* expired;
};

Sentence NoValue() {
  return {};
}

Sentence OptionalValue(const CWords& words, const std::optional<Value>& value) {
  return value.has_value() ? ValueWords(words, *value) : NoValue();
}

/// Kind and name of a thing, in the form that the sentence asks for.
Sentence Thing(const CWords& words, EThing thing, const std::string& name, std::string_view form) {
  const std::string key = "thing." + std::string(NameOf(thing)) + std::string(form);
  return FillIn(words.Text(key), [&](std::string_view) { return AsValue(name); });
}

Sentence Element(const SSubject& subject, std::string_view form) {
  const std::array<EThing, 3> things = {EThing::kClass, EThing::kLink, EThing::kBehavior};
  return Thing(subject.words, things[static_cast<std::size_t>(subject.path.kind)], subject.path.element, form);
}

Sentence Identity(const SSubject& subject) {
  const std::shared_ptr<const STaken>& taken = subject.finding.taken;
  if (taken == nullptr) {
    return NoValue();
  }
  const bool hasBoth = taken->classId.has_value() && taken->tableName.has_value();
  const std::string_view key = hasBoth                      ? "identity.class-id-and-table"
                               : taken->classId.has_value() ? "identity.class-id"
                                                            : "identity.table";
  return FillIn(subject.words.Text(key), [&](std::string_view placeholder) {
    return placeholder == "class_id" ? AsValue(std::to_string(taken->classId.value_or(0)))
                                     : AsValue(taken->tableName.value_or(""));
  });
}

Sentence Other(const SSubject& subject) {
  const std::shared_ptr<const STaken>& taken = subject.finding.taken;
  const std::optional<SPath> path = taken == nullptr ? std::nullopt : ParsePath(taken->by);
  return path.has_value() ? Thing(subject.words, path->thing, path->Name(), "") : NoValue();
}

Sentence Tables(const SSubject& subject) {
  std::vector<Sentence> tables;
  if (subject.finding.data != nullptr) {
    for (const std::string& table : subject.finding.data->tables) {
      tables.push_back(AsValue(table));
    }
  }
  return JoinList(subject.words, tables);
}

Sentence Number(const SSubject& subject, std::uint64_t SData::*count) {
  return subject.finding.data == nullptr ? NoValue() : AsWords(subject.words.Number((*subject.finding.data).*count));
}

struct SPlaceholder {
  std::string_view name;
  Sentence (*find)(const SSubject& subject);
};

const std::array<SPlaceholder, 20> kPlaceholders = {
    {{"name", [](const SSubject& subject) { return AsValue(subject.path.Name()); }},
     {"element", [](const SSubject& subject) { return Element(subject, ""); }},
     {"Element", [](const SSubject& subject) { return Element(subject, ".start"); }},
     {"element.of", [](const SSubject& subject) { return Element(subject, ".of"); }},
     {"element.to", [](const SSubject& subject) { return Element(subject, ".to"); }},
     {"client", [](const SSubject& subject) { return OptionalValue(subject.words, subject.finding.client); }},
     {"original", [](const SSubject& subject) { return OptionalValue(subject.words, subject.finding.original); }},
     {"base", [](const SSubject& subject) { return OptionalValue(subject.words, subject.finding.base); }},
     {"attribute",
      [](const SSubject& subject) {
        return AsWords(subject.words.Text("attribute." + std::string(NameOf(subject.finding.attribute))));
      }},
     {"rows", [](const SSubject& subject) { return Number(subject, &SData::rows); }},
     {"of", [](const SSubject& subject) { return Number(subject, &SData::of); }},
     {"table", Tables},
     {"problem", [](const SSubject& subject) { return AsValue(subject.finding.data->problem); }},
     {"identity", Identity},
     {"other", Other},
     {"column",
      [](const SSubject& subject) {
        return subject.finding.taken == nullptr ? NoValue() : AsValue(subject.finding.taken->field.value_or(""));
      }},
     {"risk",
      [](const SSubject& subject) {
        return AsWords(subject.words.Text("risk." + std::string(NameOf(*subject.finding.riskWithoutData))));
      }},
     {"accepted_client",
      [](const SSubject& subject) { return OptionalValue(subject.words, subject.outdated->decision.client); }},
     {"accepted_original",
      [](const SSubject& subject) { return OptionalValue(subject.words, subject.outdated->decision.original); }},
     {"until", [](const SSubject& subject) { return AsValue(subject.expired->acceptance.until.value_or("")); }}}};

Sentence Say(const SSubject& subject, std::string_view text) {
  return FillIn(text, [&](std::string_view name) {
    const auto* found = std::find_if(std::begin(kPlaceholders), std::end(kPlaceholders),
                                     [&](const SPlaceholder& placeholder) { return placeholder.name == name; });
    return found == std::end(kPlaceholders) ? NoValue() : found->find(subject);
  });
}

Sentence Happens(const SSubject& subject, const SRuleWords& rule) {
  const std::string key = HappensKey(rule, subject.finding);
  if (rule.plural == nullptr) {
    return Say(subject, subject.words.Text(key));
  }
  const std::optional<Value>& value = subject.finding.*rule.plural;
  const bool isNumber = value.has_value() && std::holds_alternative<std::uint32_t>(*value);
  return Say(subject, subject.words.Text(key, isNumber ? std::get<std::uint32_t>(*value) : 0));
}

/// How many are touched. A sentence that says of how many makes no sense where there are none at all.
Sentence Count(const SSubject& subject, const std::string& key) {
  const SData& data = *subject.finding.data;
  if (data.rows != 0) {
    return Say(subject, subject.words.Text(key, data.rows));
  }
  const std::string_view none = subject.words.Text(key + ".none");
  const bool saysOfHowMany = none.find("{of}") != std::string_view::npos;
  return Say(subject, data.of == 0 && saysOfHowMany ? subject.words.Text("general.nothing-stored") : none);
}

/// What is known about stored values; nothing for a rule that does not count them.
Sentence Counted(const SSubject& subject, const SRuleWords& rule) {
  const CWords& words = subject.words;
  if (!rule.isCounted) {
    return {};
  }
  if (subject.finding.data == nullptr) {
    return AsWords(words.Text("general.not-counted"));
  }
  const SData& data = *subject.finding.data;
  if (!HasCounts(data)) {
    return Say(subject, words.Text("general.not-countable"));
  }
  Sentence count = Count(subject, std::string(rule.rule) + ".counted");
  if (data.problem.empty()) {
    return count;
  }
  return JoinSentences(words, {count, Say(subject, words.Text("general.too-low"))});
}

std::string_view ConflictKey(const SFinding& finding) {
  if (!finding.base.has_value()) {
    return "general.both.base-absent";
  }
  return *finding.base == Value(std::string()) ? "general.both.base-empty" : "general.both";
}

}  // namespace

CFindingSentences::CFindingSentences(const CWords& words, const SReview& review) : words_(words) {
  for (const SOutdated& outdated : review.outdated) {
    outdated_.emplace(FindingId(outdated.decision.path, outdated.decision.change), &outdated);
  }
  for (const SDecision& expired : review.expired) {
    if (!HasWildcard(expired.path)) {
      expired_.emplace(FindingId(expired.path, expired.change), &expired);
    } else {
      expiredPatterns_.push_back(&expired);
    }
  }
}

const SOutdated* CFindingSentences::FindOutdated(const SFinding& finding) const {
  const auto found = outdated_.find(finding.id);
  return found == outdated_.end() ? nullptr : found->second;
}

const SDecision* CFindingSentences::FindExpired(const SFinding& finding) const {
  if (const auto found = expired_.find(finding.id); found != expired_.end()) {
    return found->second;
  }
  if (!PatternMayAccept(finding.risk)) {
    return nullptr;
  }
  const auto found = std::find_if(expiredPatterns_.begin(), expiredPatterns_.end(), [&](const SDecision* decision) {
    return decision->change == finding.change && MatchesPath(decision->path, finding.path);
  });
  return found == expiredPatterns_.end() ? nullptr : *found;
}

Sentence CFindingSentences::Of(const SFinding& finding) const {
  const SSubject subject{words_, finding, ParsePath(finding.path).value_or(SPath()), FindOutdated(finding),
                         FindExpired(finding)};
  const SRuleWords* rule = FindRuleWords(finding.rule->name);
  if (rule == nullptr) {
    return AsWords(finding.rule->name);
  }
  std::vector<Sentence> sentences = {Happens(subject, *rule), Counted(subject, *rule)};
  const auto add = [&](std::string_view key) { sentences.push_back(Say(subject, words_.Text(key))); };
  if (finding.change == EChange::kChanged && finding.origin == EOrigin::kBoth) {
    add(ConflictKey(finding));
  }
  if (finding.riskWithoutData.has_value()) {
    add("general.without-count");
  }
  // Another decision may have accepted it.
  if (finding.accepted == nullptr) {
    if (subject.outdated != nullptr) {
      add("general.outdated");
    }
    if (subject.expired != nullptr) {
      add("general.expired");
    }
  }
  return JoinSentences(words_, sentences);
}

Sentence ValueWords(const CWords& words, const Value& value) {
  if (const auto* number = std::get_if<std::uint32_t>(&value)) {
    return AsValue(std::to_string(*number));
  }
  const auto& text = std::get<std::string>(value);
  return text.empty() ? AsWords(words.Text("value.empty")) : AsValue(text);
}

Sentence AcceptanceSentence(const CWords& words, const SAcceptance& acceptance) {
  std::string key = "decision.accepted";
  if (acceptance.by.has_value() && acceptance.until.has_value()) {
    key += ".by-until";
  } else if (acceptance.by.has_value()) {
    key += ".by";
  } else if (acceptance.until.has_value()) {
    key += ".until";
  }
  return FillIn(words.Text(key), [&](std::string_view name) {
    return AsValue(name == "reason" ? acceptance.reason
                   : name == "by"   ? acceptance.by.value_or("")
                                    : acceptance.until.value_or(""));
  });
}

namespace {

Sentence Join(const CWords& words, std::string_view key, const std::vector<Sentence>& parts) {
  Sentence joined;
  for (const Sentence& part : parts) {
    if (joined.empty()) {
      joined = part;
    } else if (!part.empty()) {
      joined = FillIn(words.Text(key), [&](std::string_view name) { return name == "first" ? joined : part; });
    }
  }
  return joined;
}

}  // namespace

Sentence JoinSentences(const CWords& words, const std::vector<Sentence>& sentences) {
  return Join(words, "list.sentences", sentences);
}

Sentence JoinList(const CWords& words, const std::vector<Sentence>& items) {
  return Join(words, "list.comma", items);
}

}  // namespace metareview
