#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

#include "kvxsptfile/kvxsptfile_export.h"

namespace kvx {

/// Told, while a file is read, how many bytes have been read and how many there are; 0 when that is not known.
using ReadObserver = std::function<void(std::size_t done, std::size_t total)>;

/// How long a pipe is waited for. Where CLoadDeadline is set, it alone limits that.
struct SPipeWait {
  /// Until a program has opened it for writing.
  std::chrono::milliseconds writer = std::chrono::seconds(10);
  /// Until the program writes its first or next bytes.
  std::chrono::milliseconds data = std::chrono::seconds(60);
};

struct SReading {
  /// The text's capacity exceeds its size by at least so many bytes, which are 0.
  std::size_t padding = 0;
  /// May be empty.
  ReadObserver observer;
  bool mayBePipe = false;
  SPipeWait pipeWait;
};

/// Reads a whole file: a regular one, or a pipe if that is allowed. Devices, directories and sockets are refused, and
/// neither these nor pipes are ever waited for endlessly. Throws CKVXException(kFileError, "PATH: cannot be read:
/// reason").
KVXSPTFILE_EXPORT std::string ReadFile(const std::string& path, const SReading& reading = {});

/// Throws what ReadFile() throws for a file that it refuses; for files that a library opens by name and might wait for.
KVXSPTFILE_EXPORT void RequireRegularFile(const std::string& path);

}  // namespace kvx
