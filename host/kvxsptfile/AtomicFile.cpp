#include "kvxsptfile/AtomicFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace kvx {
namespace {

// How much is written before the system is asked to bring it to disk.
constexpr std::size_t kEarlyPart = std::size_t{8} * 1024 * 1024;

}  // namespace

CAtomicFile::CAtomicFile(const std::string& path)
    : file_(path), buffer_(std::make_unique<std::array<char, kBufferSize>>()) {}

void CAtomicFile::WriteAll(const char* data, std::size_t size) {
  while (size > 0) {
    const ssize_t count = write(file_.GetDescriptor(), data, size);
    if (count < 0) {
      if (errno == EINTR) {
        continue;
      }
      file_.Fail(errno);
    }
    if (count == 0) {
      // Not an error by the letter, but trying again might go on for ever.
      file_.Fail(EIO);
    }
    data += count;
    size -= static_cast<std::size_t>(count);
    written_ += static_cast<std::size_t>(count);
  }
  BeginFlush();
}

void CAtomicFile::BeginFlush() {
  if (written_ - flushing_ < kEarlyPart) {
    return;
  }
  // Only asked for: what goes wrong, the flush of the whole file tells.
  static_cast<void>(sync_file_range(file_.GetDescriptor(), static_cast<off_t>(flushing_),
                                    static_cast<off_t>(written_ - flushing_), SYNC_FILE_RANGE_WRITE));
  flushing_ = written_;
}

void CAtomicFile::FlushBuffer() {
  WriteAll(buffer_->data(), used_);
  used_ = 0;
}

void CAtomicFile::Write(const char* data, std::size_t size) {
  if (size > kBufferSize - used_) {
    FlushBuffer();
  }
  if (size > kBufferSize) {
    WriteAll(data, size);
  } else {
    std::memcpy(buffer_->data() + used_, data, size);
    used_ += size;
  }
}

void CAtomicFile::PutN(char c, std::size_t count) {
  while (count > 0) {
    if (used_ == kBufferSize) {
      FlushBuffer();
    }
    const std::size_t part = std::min(count, kBufferSize - used_);
    std::memset(buffer_->data() + used_, c, part);
    used_ += part;
    count -= part;
  }
}

void CAtomicFile::Commit() {
  FlushBuffer();
  file_.Commit();
}

bool CAtomicFile::CommitNew() {
  FlushBuffer();
  return file_.CommitNew();
}

}  // namespace kvx
