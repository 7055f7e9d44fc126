#include "upgrademeta2024/storage/MetaLocation.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>

#include "kvxsptstring/StringHelper.h"

namespace {

constexpr std::string_view kSqliteScheme = "sqlite3://";
constexpr std::array<std::string_view, 2> kPostgresqlSchemes = {"postgresql://", "postgres://"};
constexpr std::array<std::string_view, 2> kSqliteEndings = {".db", ".sqlite"};

bool BeginsWith(std::string_view text, std::string_view begin) {
  return text.substr(0, begin.size()) == begin;
}

bool EndsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

/// The location with `change(path)` in place of the relative path in it; what has none stays as it is.
template <typename Change>
std::string WithRelativePath(const std::string& location, const Change& change) {
  const SMetaLocation parsed = ParseMetaLocation(location);
  const bool hasScheme = location.find("://") != std::string::npos;
  if (parsed.kind == SMetaLocation::kPostgresql || (parsed.kind == SMetaLocation::kUnknown && hasScheme)) {
    return location;
  }
  const std::string path = parsed.kind == SMetaLocation::kUnknown ? location : parsed.name;
  if (std::filesystem::path(path).is_absolute()) {
    return location;
  }
  return location.substr(0, location.size() - path.size()) + change(path);
}

}  // namespace

SMetaLocation ParseMetaLocation(const std::string& location) {
  std::string form = location;
  CStringHelper::ToLower(form);
  for (const std::string_view scheme : kPostgresqlSchemes) {
    if (BeginsWith(form, scheme)) {
      return {SMetaLocation::kPostgresql, location.substr(scheme.size())};
    }
  }
  if (BeginsWith(form, kSqliteScheme) && form.size() > kSqliteScheme.size()) {
    return {SMetaLocation::kSqlite, location.substr(kSqliteScheme.size())};
  }
  if (form.find("://") != std::string::npos) {
    return {};
  }
  if (EndsWith(form, ".json")) {
    return {SMetaLocation::kDocument, location};
  }
  const bool isSqlite = std::any_of(kSqliteEndings.begin(), kSqliteEndings.end(),
                                    [&form](std::string_view ending) { return EndsWith(form, ending); });
  return isSqlite ? SMetaLocation{SMetaLocation::kSqlite, location} : SMetaLocation{};
}

std::string ResolveMetaLocation(const std::string& location, const std::string& directory) {
  return WithRelativePath(location, [&](const std::string& path) { return directory + "/" + path; });
}

std::string RelateMetaLocation(const std::string& location, const std::string& directory) {
  namespace fs = std::filesystem;
  return WithRelativePath(location, [&](const std::string& path) {
    const fs::path file = fs::absolute(path);
    const fs::path where = fs::weakly_canonical(file.parent_path()) / file.filename();
    return where.lexically_relative(fs::weakly_canonical(fs::absolute(directory))).string();
  });
}
