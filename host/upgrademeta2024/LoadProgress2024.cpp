#include "upgrademeta2024/LoadProgress2024.h"

#include <mutex>
#include <utility>

namespace {

// Held while an observer is told, so that it is not gone meanwhile.
std::mutex observerMutex;
CLoadObserver2024* theObserver = nullptr;

/// False when there is nobody to tell.
bool Tell(void (CLoadObserver2024::*what)(const CLoadProgress2024&), const CLoadProgress2024& load) {
  const std::lock_guard<std::mutex> lock(observerMutex);
  if (theObserver != nullptr) {
    (theObserver->*what)(load);
  }
  return theObserver != nullptr;
}

}  // namespace

CLoadProgress2024::CLoadProgress2024(std::string source, EUnit unit)
    : source_(std::move(source)), unit_(unit), observed_(Tell(&CLoadObserver2024::LoadBegins, *this)) {}

CLoadProgress2024::~CLoadProgress2024() {
  Tell(&CLoadObserver2024::LoadEnds, *this);
}

CLoadObserver2024::CLoadObserver2024() = default;

CLoadObserver2024::~CLoadObserver2024() = default;

void CLoadObserver2024::Install(CLoadObserver2024* observer) {
  const std::lock_guard<std::mutex> lock(observerMutex);
  theObserver = observer;
}
