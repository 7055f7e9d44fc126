#include "upgrademeta2024/LoadProgress.h"

#include <mutex>
#include <utility>

namespace {

// Held while an observer is told, so that it is not gone meanwhile.
std::mutex observerMutex;
CLoadObserver* theObserver = nullptr;

/// False when there is nobody to tell.
bool Tell(void (CLoadObserver::*what)(const CLoadProgress&), const CLoadProgress& load) {
  const std::lock_guard<std::mutex> lock(observerMutex);
  if (theObserver != nullptr) {
    (theObserver->*what)(load);
  }
  return theObserver != nullptr;
}

}  // namespace

CLoadProgress::CLoadProgress(std::string source, EUnit unit)
    : source_(std::move(source)), unit_(unit), observed_(Tell(&CLoadObserver::LoadBegins, *this)) {}

CLoadProgress::~CLoadProgress() {
  Tell(&CLoadObserver::LoadEnds, *this);
}

CLoadObserver::CLoadObserver() = default;

CLoadObserver::~CLoadObserver() = default;

void CLoadObserver::Install(CLoadObserver* observer) {
  const std::lock_guard<std::mutex> lock(observerMutex);
  theObserver = observer;
}
