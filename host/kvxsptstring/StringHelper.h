#pragma once

#include <string>

#include "kvxsptstring/kvxsptstring_export.h"

/// String operations whose results do not depend on the locale. Letters are the ASCII letters; every other byte,
/// UTF-8 sequences included, is left and compared as it is.
class KVXSPTSTRING_EXPORT CStringHelper {
 public:
  CStringHelper() = delete;

  /// Lower-cases A to Z in place.
  static void ToLower(std::string& text);

  /// Compares byte by byte, bytes taken as unsigned: negative, 0 or positive as `a` sorts before, is equal to or sorts
  /// after `b`. With `ignoreCase`, ASCII letters that differ only in case count as equal.
  static int StringCompare(const std::string& a, const std::string& b, bool ignoreCase);

  /// UTF-8 text with every control character made visible as `\n`, `\t`, `\xHH` or, from U+0080 to U+009F, `\u00HH`, so
  /// that it fits on one line and cannot drive a terminal. Likewise, as `\uHHHH`, the controls that change the
  /// direction of writing (U+061C, U+200E, U+200F, U+202A to U+202E, U+2066 to U+2069) and other line ends (U+2028,
  /// U+2029), and bytes that are not UTF-8, as `\xHH`.
  static std::string ToVisible(const std::string& text);
};
