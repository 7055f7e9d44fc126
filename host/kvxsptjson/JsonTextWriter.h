#pragma once

#include <algorithm>
#include <cstddef>

#include "kvxsptfile/AtomicFile.h"
#include "kvxsptjson/JsonWriter.h"

namespace rapidjson {

/// Indentation; in general it is written character by character.
template <>
inline void PutN(kvx::CAtomicFile& file, char c, std::size_t count) {
  file.PutN(c, count);
}

}  // namespace rapidjson

namespace kvx {

/// Writes JSON text into a file, indented by two spaces. Strings without anything to escape, nearly all there are, are
/// written as a whole instead of character by character.
class CJsonTextWriter : public PrettyJsonWriter<CAtomicFile> {
 public:
  using Base = PrettyJsonWriter<CAtomicFile>;

  explicit CJsonTextWriter(CAtomicFile& file) : Base(file) { SetIndent(' ', 2); }

  bool String(const char* text, rapidjson::SizeType size, bool copy = false) {
    if (!std::all_of(text, text + size, StandsAsItIs)) {
      return Base::String(text, size, copy);
    }
    PrettyPrefix(rapidjson::kStringType);
    os_->Put('"');
    os_->Write(text, size);
    os_->Put('"');
    return true;
  }
  bool Key(const char* text, rapidjson::SizeType size, bool copy = false) { return String(text, size, copy); }

 private:
  static bool StandsAsItIs(char c) { return static_cast<unsigned char>(c) >= ' ' && c != '"' && c != '\\'; }
};

}  // namespace kvx
