#include "metareview2024/Path.h"

#include <algorithm>
#include <array>
#include <utility>

#include "kvxsptstring/StringHelper.h"
#include "metareview2024/PathSegments.h"

namespace metareview {
namespace {

constexpr std::array<std::pair<char, char>, 3> kEscapes = {{{'~', '0'}, {'/', '1'}, {'*', '2'}}};

/// What an element may carry, and the word that says so in a path.
struct SPart {
  EKind kind;
  std::string_view word;
  EThing thing;
};
constexpr std::array<SPart, 6> kParts = {{{EKind::kClass, "behavior", EThing::kListedBehavior},
                                          {EKind::kClass, "property", EThing::kProperty},
                                          {EKind::kLink, "behavior", EThing::kListedBehavior},
                                          {EKind::kLink, "property", EThing::kProperty},
                                          {EKind::kBehavior, "method", EThing::kMethod},
                                          {EKind::kBehavior, "property", EThing::kProperty}}};

void AppendEscaped(std::string& target, std::string_view name) {
  for (const char c : name) {
    const auto* const escape =
        std::find_if(kEscapes.begin(), kEscapes.end(), [c](const auto& row) { return row.first == c; });
    if (escape == kEscapes.end()) {
      target += c;
    } else {
      target += '~';
      target += escape->second;
    }
  }
}

/// Nothing for a segment that no name is written as.
std::optional<std::string> Unescaped(std::string_view segment) {
  std::string name;
  for (std::size_t i = 0; i < segment.size(); ++i) {
    if (segment[i] != '~') {
      name += segment[i];
      continue;
    }
    ++i;
    const auto* const escape = std::find_if(kEscapes.begin(), kEscapes.end(), [&segment, i](const auto& row) {
      return i < segment.size() && row.second == segment[i];
    });
    if (escape == kEscapes.end()) {
      return std::nullopt;
    }
    name += escape->first;
  }
  if (name.empty() || segment.find('*') != std::string_view::npos) {
    return std::nullopt;
  }
  return name;
}

bool IsWord(std::string_view segment, std::string_view word) {
  return segment == word || segment == kWildcard;
}

bool IsName(std::string_view segment) {
  return segment == kWildcard || Unescaped(segment).has_value();
}

/// Whether the rest of a path, from `position` on, is nothing or an attribute of the thing, which `attribute` then is.
bool EndsAt(const PathSegments& segments, std::size_t position, EThing thing, EAttribute& attribute) {
  if (segments.size() == position) {
    attribute = EAttribute::kNone;
    return true;
  }
  const std::vector<EAttribute>& attributes = AttributesOf(thing);
  const auto found = std::find_if(attributes.begin(), attributes.end(),
                                  [&](EAttribute candidate) { return IsWord(segments[position], NameOf(candidate)); });
  if (segments.size() != position + 1 || found == attributes.end()) {
    return false;
  }
  attribute = *found;
  return true;
}

/// What a path or pattern is about if it is about an element of the kind; without names.
std::optional<SPath> ShapeOf(const PathSegments& segments, EKind kind) {
  constexpr std::size_t kPartPosition = 2;
  if (segments.size() < kPartPosition || !IsWord(segments[0], NameOf(kind)) || !IsName(segments[1])) {
    return std::nullopt;
  }
  SPath shape;
  shape.kind = kind;
  shape.thing = ThingOf(kind);
  if (EndsAt(segments, kPartPosition, shape.thing, shape.attribute)) {
    return shape;
  }
  for (const SPart& part : kParts) {
    if (part.kind == kind && segments.size() > kPartPosition + 1 && IsWord(segments[kPartPosition], part.word) &&
        IsName(segments[kPartPosition + 1]) && EndsAt(segments, kPartPosition + 2, part.thing, shape.attribute)) {
      shape.thing = part.thing;
      return shape;
    }
  }
  return std::nullopt;
}

}  // namespace

PathSegments SplitPath(std::string_view text) {
  PathSegments segments;
  std::size_t begin = 0;
  for (std::size_t end = text.find('/'); end != std::string_view::npos; end = text.find('/', begin)) {
    segments.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  segments.push_back(text.substr(begin));
  return segments;
}

bool FitPattern(const PathSegments& pattern, const PathSegments& path) {
  return std::equal(
      pattern.begin(), pattern.end(), path.begin(), path.end(),
      [](std::string_view wanted, std::string_view segment) { return wanted == kWildcard || wanted == segment; });
}

std::string FormatPath(const SPath& path) {
  std::string text(NameOf(path.kind));
  text += '/';
  AppendEscaped(text, path.element);
  const auto* const part = std::find_if(kParts.begin(), kParts.end(), [&path](const SPart& row) {
    return row.kind == path.kind && row.thing == path.thing;
  });
  if (part != kParts.end()) {
    text += '/';
    text += part->word;
    text += '/';
    AppendEscaped(text, path.part);
  }
  if (path.attribute != EAttribute::kNone) {
    text += '/';
    text += NameOf(path.attribute);
  }
  return text;
}

std::optional<SPath> ParsePath(std::string_view text) {
  const PathSegments segments = SplitPath(text);
  const std::optional<EKind> kind = KindOf(segments[0]);
  std::optional<SPath> path = kind && !HasWildcard(text) ? ShapeOf(segments, *kind) : std::nullopt;
  if (path) {
    path->element = *Unescaped(segments[1]);
    if (path->thing != ThingOf(*kind)) {
      path->part = *Unescaped(segments[3]);
    }
  }
  return path;
}

bool HasWildcard(std::string_view pattern) {
  return pattern.find('*') != std::string_view::npos;
}

std::vector<EKind> KindsOfPattern(std::string_view pattern) {
  const PathSegments segments = SplitPath(pattern);
  std::vector<EKind> kinds;
  std::copy_if(kKinds.begin(), kKinds.end(), std::back_inserter(kinds),
               [&segments](EKind kind) { return ShapeOf(segments, kind).has_value(); });
  return kinds;
}

std::optional<std::string> ProblemOfPattern(std::string_view text) {
  const PathSegments segments = SplitPath(text);
  const bool starInside = std::any_of(segments.begin(), segments.end(), [](std::string_view segment) {
    return HasWildcard(segment) && segment != kWildcard;
  });
  if (starInside) {
    return "\"*\" can only stand for one whole segment; in a name it is written ~2";
  }
  if (KindsOfPattern(text).empty()) {
    return "no difference has a path of this form";
  }
  return std::nullopt;
}

bool IsAboutAttributes(std::string_view pattern) {
  // KIND/NAME and KIND/NAME/WORD/NAME are whole things.
  return std::count(pattern.begin(), pattern.end(), '/') % 2 == 0;
}

bool MatchesPath(std::string_view pattern, std::string_view path) {
  std::string lowerPattern(pattern);
  std::string lowerPath(path);
  CStringHelper::ToLower(lowerPattern);
  CStringHelper::ToLower(lowerPath);
  return FitPattern(SplitPath(lowerPattern), SplitPath(lowerPath));
}

}  // namespace metareview
