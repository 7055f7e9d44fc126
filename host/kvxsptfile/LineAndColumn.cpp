#include "kvxsptfile/LineAndColumn.h"

namespace kvx {

std::string LineAndColumn(const char* text, std::size_t offset) {
  std::size_t line = 1;
  std::size_t column = 1;
  for (std::size_t i = 0; i < offset; ++i) {
    const bool continuation = (static_cast<unsigned char>(text[i]) & 0xC0U) == 0x80U;
    if (text[i] == '\n') {
      ++line;
      column = 1;
    } else if (!continuation) {
      ++column;
    }
  }
  return std::to_string(line) + ":" + std::to_string(column);
}

}  // namespace kvx
