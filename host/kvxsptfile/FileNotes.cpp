#include "kvxsptfile/FileNotes.h"

#include <utility>

namespace kvx {
namespace {

CFileNotes::Receiver& TheReceiver() {
  static CFileNotes::Receiver receiver;
  return receiver;
}

}  // namespace

void CFileNotes::SetReceiver(Receiver receiver) {
  TheReceiver() = std::move(receiver);
}

void CFileNotes::Tell(const std::string& note) {
  if (TheReceiver()) {
    TheReceiver()(note);
  }
}

}  // namespace kvx
