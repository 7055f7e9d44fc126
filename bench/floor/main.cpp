#include <rapidjson/document.h>
#include <rapidjson/error/en.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

namespace {

bool Read(const char* path, std::string& text) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path, "rb"), &std::fclose);
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  text.resize(error ? 0 : size);
  if (file == nullptr || error || std::fread(text.data(), 1, text.size(), file.get()) != text.size()) {
    std::fprintf(stderr, "%s: cannot be read\n", path);
    return false;
  }
  return true;
}

bool Parse(const char* path, rapidjson::Document& document) {
  std::string text;
  if (!Read(path, text)) {
    return false;
  }
  document.Parse(text.c_str());
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
