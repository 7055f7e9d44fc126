#pragma once

#include <functional>
#include <string>

#include "kvxsptfile/kvxsptfile_export.h"

namespace kvx {

/// What a user has to know of a file or database that was saved or read all the same, one line a note.
class KVXSPTFILE_EXPORT CFileNotes {
 public:
  using Receiver = std::function<void(const std::string& note)>;

  CFileNotes() = delete;

  /// Who is told from now on; an empty one for nobody, as at the beginning. For one thread, before files are read or
  /// saved; it may be called by several.
  static void SetReceiver(Receiver receiver);
  static void Tell(const std::string& note);
};

}  // namespace kvx
