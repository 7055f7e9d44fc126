#pragma once

#include <cstddef>

namespace test {

/// Lets one call of operator new in this process fail while it lives: the call of this number, counted from 1. Needs
/// FailingNew.cpp in the executable, which replaces the operators. One at a time.
class CFailingNew {
 public:
  explicit CFailingNew(std::size_t number);
  ~CFailingNew();
  CFailingNew(const CFailingNew&) = delete;
  CFailingNew& operator=(const CFailingNew&) = delete;

  /// False when fewer calls were made.
  bool HasFailed() const;
};

}  // namespace test
