#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "upgrademeta2024/upgrademeta2024_export.h"

/// One metamodel that is being loaded, and how far that is. The thread that loads it counts; any thread may ask.
class UPGRADEMETA2024_EXPORT CLoadProgress {
 public:
  /// kTables: the source is a table, one of the total, in which stored values are counted.
  enum EUnit { kBytes, kRows, kTables };

  /// Tells the observer that a loading begins; the destructor tells that it has ended, well or not. `source` is the
  /// location for messages, without passwords.
  CLoadProgress(std::string source, EUnit unit);
  ~CLoadProgress();
  CLoadProgress(const CLoadProgress&) = delete;
  CLoadProgress& operator=(const CLoadProgress&) = delete;

  /// Whether an observer was told of the beginning; counting a total that costs time is not worth while otherwise.
  bool IsObserved() const { return observed_; }

  void SetTotal(std::uint64_t total) { total_.store(total, std::memory_order_relaxed); }
  void SetDone(std::uint64_t done) { done_.store(done, std::memory_order_relaxed); }

  const std::string& GetSource() const { return source_; }
  EUnit GetUnit() const { return unit_; }
  std::uint64_t GetDone() const { return done_.load(std::memory_order_relaxed); }
  /// 0 when it is not known.
  std::uint64_t GetTotal() const { return total_.load(std::memory_order_relaxed); }

 private:
  std::string source_;
  EUnit unit_;
  std::atomic<std::uint64_t> done_{0};
  std::atomic<std::uint64_t> total_{0};
  // The last one: whoever is told may ask for the others.
  bool observed_;
};

/// Is told of every loading of the process, by the thread that loads.
class UPGRADEMETA2024_EXPORT CLoadObserver {
 public:
  CLoadObserver();
  virtual ~CLoadObserver();
  CLoadObserver(const CLoadObserver&) = delete;
  CLoadObserver& operator=(const CLoadObserver&) = delete;

  /// `load` may be asked until LoadEnds has been called for it. Neither may throw.
  virtual void LoadBegins(const CLoadProgress& load) = 0;
  virtual void LoadEnds(const CLoadProgress& load) = 0;

  /// Makes an observer the one that is told; null for none, which is the default. The earlier one is told nothing any
  /// more once this returns. The observer stays the caller's.
  static void Install(CLoadObserver* observer);
};
