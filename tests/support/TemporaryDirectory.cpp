#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace test {

CTemporaryDirectory::CTemporaryDirectory() : path_(std::filesystem::temp_directory_path() / "upgradesrv-XXXXXX") {
  if (mkdtemp(path_.data()) == nullptr) {
    throw std::runtime_error("no temporary directory");
  }
}

CTemporaryDirectory::~CTemporaryDirectory() {
  std::error_code error;
  std::filesystem::remove_all(path_, error);
}

std::string CTemporaryDirectory::Write(const std::string& name, const std::string& content) const {
  const std::string path = File(name);
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  std::ofstream file(path, std::ios::binary);
  file << content;
  file.close();
  EXPECT_TRUE(file.good()) << path;
  return path;
}

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.good()) << path;
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

}  // namespace test
