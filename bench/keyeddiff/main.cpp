#include <simdjson.h>

#include <cstdio>
#include <cstring>
#include <exception>
#include <future>
#include <string_view>
#include <unordered_map>

namespace {

using simdjson::dom::array;
using simdjson::dom::element;
using simdjson::dom::element_type;
using simdjson::dom::object;

std::size_t CountDifferences(element original, element client);

/// What an object of a list is known by; empty for what has no name.
std::string_view NameOf(element item) {
  std::string_view name;
  return item["internal_name"].get(name) == simdjson::SUCCESS ? name : std::string_view();
}

std::size_t CountDifferences(const object& original, const object& client) {
  std::size_t count = 0;
  for (const auto& [key, value] : client) {
    element other;
    count += original.at_key(key).get(other) == simdjson::SUCCESS ? CountDifferences(other, value) : 1;
  }
  for (const auto& [key, value] : original) {
    count += client.at_key(key).error() == simdjson::SUCCESS ? 0 : 1;
  }
  return count;
}

std::size_t CountByName(const array& original, const array& client) {
  std::unordered_map<std::string_view, element> originals;
  for (const element item : original) {
    originals.emplace(NameOf(item), item);
  }
  std::size_t count = 0;
  std::size_t found = 0;
  for (const element item : client) {
    const auto other = originals.find(NameOf(item));
    if (other == originals.end()) {
      ++count;
    } else {
      ++found;
      count += CountDifferences(other->second, item);
    }
  }
  return count + originals.size() - found;
}

std::size_t CountByPlace(const array& original, const array& client) {
  std::size_t count = original.size() > client.size() ? original.size() - client.size() : 0;
  auto other = original.begin();
  for (const element item : client) {
    if (other == original.end()) {
      ++count;
    } else {
      count += CountDifferences(*other, item);
      ++other;
    }
  }
  return count;
}

std::size_t CountDifferences(element original, element client) {
  if (original.type() != client.type()) {
    return 1;
  }
  switch (client.type()) {
    case element_type::OBJECT:
      return CountDifferences(object(original), object(client));
    case element_type::ARRAY: {
      const array items = client;
      const bool hasNames = items.begin() != items.end() && !NameOf(*items.begin()).empty();
      return hasNames ? CountByName(original, items) : CountByPlace(original, items);
    }
    case element_type::STRING:
      return std::string_view(original) == std::string_view(client) ? 0 : 1;
    case element_type::NULL_VALUE:
      return 0;
    case element_type::BOOL:
      return bool(original) == bool(client) ? 0 : 1;
    default:
      return double(original) == double(client) ? 0 : 1;
  }
}

}  // namespace

/// What others might write in an afternoon: parses two documents into trees, matches what has a name by its name and
/// everything else by its place, and counts what differs. Checks nothing, reports nothing, saves nothing.
int main(int argumentCount, char** arguments) {
  const bool oneThread = argumentCount == 4 && std::strcmp(arguments[3], "--one-thread") == 0;
  if (argumentCount != 3 && !oneThread) {
    std::fprintf(stderr, "usage: %s ORIGINAL CLIENT [--one-thread]\n", arguments[0]);
    return 2;
  }
  try {
    simdjson::dom::parser originalParser;
    simdjson::dom::parser clientParser;
    std::future<element> original = std::async(oneThread ? std::launch::deferred : std::launch::async,
                                               [&] { return originalParser.load(arguments[1]).value(); });
    const element client = clientParser.load(arguments[2]);
    std::printf("%zu\n", CountDifferences(original.get(), client));
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "error: %s\n", error.what());
    return 2;
  }
}
