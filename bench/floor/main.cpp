#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/filereadstream.h>

#include <array>
#include <cstdio>

namespace {

bool Parse(const char* path, rapidjson::Document& document) {
  std::FILE* const file = std::fopen(path, "rb");
  if (file == nullptr) {
    std::perror(path);
    return false;
  }
  static std::array<char, 65536> buffer;
  rapidjson::FileReadStream stream(file, buffer.data(), buffer.size());
  document.ParseStream(stream);
  std::fclose(file);
  if (document.HasParseError()) {
    std::fprintf(stderr, "%s: %s\n", path, rapidjson::GetParseError_En(document.GetParseError()));
  }
  return !document.HasParseError();
}

}  // namespace

/// The measure of all runs: parses two documents into trees, holds both, and does nothing else.
int main(int argumentCount, char** arguments) {
  if (argumentCount != 3) {
    std::fprintf(stderr, "usage: %s ORIGINAL CLIENT\n", arguments[0]);
    return 2;
  }
  rapidjson::Document original;
  rapidjson::Document client;
  return Parse(arguments[1], original) && Parse(arguments[2], client) ? 0 : 2;
}
