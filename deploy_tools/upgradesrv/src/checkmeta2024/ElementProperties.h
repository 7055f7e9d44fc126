#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "checkmeta2024/CheckProperty2024Interface.h"
#include "checkmeta2024/ErrorLog.h"

namespace checkmeta {

/// The properties of a pair of elements, fetched once in the order client, original.
template <typename Element>
struct SPropertyPair {
  SPropertyPair(const Element& client, const Element& original)
      : clientList(client.GetProperties()),
        clientDict(client.GetPropertyDict()),
        originalList(original.GetProperties()),
        originalDict(original.GetPropertyDict()) {}

  CCheckProperty2024Interface::PropertyList clientList;
  CCheckProperty2024Interface::PropertyDict clientDict;
  CCheckProperty2024Interface::PropertyList originalList;
  CCheckProperty2024Interface::PropertyDict originalDict;
};

/// Compares the properties of two elements of a kind; findings go into the entry.
template <typename Element>
bool CheckElementProperties(const Element& client, const Element& original, std::shared_ptr<CJsonObject>& entry) {
  const SPropertyPair<Element> pair(client, original);
  return CCheckProperty2024Interface::CheckProperties(pair.clientList, pair.originalList, pair.clientDict,
                                                      pair.originalDict, entry);
}

/// How a kind's property check logs: one line for each of its three steps that finds something.
struct SPropertyCheckLog {
  const char* file;
  const char* function;
  std::uint32_t code;
  struct SStep {
    int line;
    const char* message;
  };
  SStep deleted;
  SStep inserted;
  SStep updated;
};

/// Compares the properties of two elements of a kind; findings are logged, each line ending in the client's name.
template <typename Element>
bool CheckElementProperties(const Element& client, const Element& original, const SPropertyCheckLog& log) {
  using Interface = CCheckProperty2024Interface;
  const SPropertyPair<Element> pair(client, original);
  bool passed = true;
  const auto report = [&](bool found, const SPropertyCheckLog::SStep& step) {
    if (found) {
      passed = false;
      LogError({log.file, step.line, log.function}, step.message + client.GetInternalName(), log.code);
    }
  };
  Interface::PropertyList found;
  Interface::PropertyList foundOriginal;
  report(Interface::HasDeletedProperties(pair.originalList, pair.clientDict, found), log.deleted);
  report(Interface::HasInsertedProperties(pair.clientList, pair.originalDict, found), log.inserted);
  report(Interface::HasUpdatedProperties(pair.clientList, pair.originalDict, found, foundOriginal), log.updated);
  return passed;
}

/// Writes an element's JSON into an entry the first time that it is called with one flag.
template <typename Element>
void WriteElementOnce(bool& written, const Element& element, std::shared_ptr<CJsonObject>& entry,
                      void (*convert)(const Element&, std::shared_ptr<CJsonObject>&)) {
  if (!written) {
    convert(element, entry);
    written = true;
  }
}

}  // namespace checkmeta
