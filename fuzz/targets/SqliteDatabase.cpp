// A damaged SQLite database is refused with its name, or gives a metamodel that can be stored; reading changes nothing,
// and what is stored over it is there as a whole or not at all.
//
// An input is a list of damages to a sound database: most bytes of a database file are of no consequence.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <filesystem>

#include "fuzz/support/Failure.h"
#include "kvxsptexception/ErrorCodes.h"
#include "support/MetaMaker.h"
#include "support/MetaText.h"
#include "support/TemporaryDirectory.h"
#include "upgrademeta2024/storage/OpenMetaStorage.h"

namespace {

using fuzz::Require;
using fuzz::Succeeded;

/// `elements` of each kind, with properties enough for some tables to need pages below their first one.
std::shared_ptr<CMetaDictionary2024> MakeMetamodel(std::size_t elements) {
  auto dictionary = std::make_shared<CMetaDictionary2024>();
  for (std::size_t i = 0; i < elements; ++i) {
    const std::string number = std::to_string(i);
    std::vector<test::SProperty> properties;
    for (std::size_t j = 0; j < 12; ++j) {
      properties.push_back(test::Property("Property" + std::to_string(j)));
      properties.back().precision = static_cast<std::uint16_t>(j);
    }
    dictionary->AddClass(test::MakeClass({"Class" + number, {"Behavior0", "Behavior" + number}, properties}));
    dictionary->AddLink(test::MakeLink({"Link" + number, {}, {test::Property("Quantity")}}));
    dictionary->AddBehavior(test::MakeBehavior({"Behavior" + number, {"Check", "Release"}, properties}));
  }
  return dictionary;
}

std::string SoundFile(const test::CTemporaryDirectory& directory, std::size_t elements) {
  const std::string path = directory.File("sound" + std::to_string(elements) + ".db");
  OpenMetaStorage(path)->Save(*MakeMetamodel(elements));
  std::string file = test::ReadFile(path);
  std::filesystem::remove(path);
  return file;
}

void Overwrite(std::string& file, std::size_t offset, const std::string& bytes) {
  const std::size_t size = std::min(bytes.size(), file.size() - std::min(offset, file.size()));
  file.replace(std::min(offset, file.size()), size, bytes, 0, size);
}

std::string Damaged(const std::string& sound, FuzzedDataProvider& input) {
  constexpr std::size_t kPage = 8192;
  const std::size_t pages = sound.size() / kPage;
  std::string file = sound;
  while (input.remaining_bytes() > 0) {
    const std::size_t page = input.ConsumeIntegralInRange<std::size_t>(0, pages - 1) * kPage;
    switch (input.ConsumeIntegralInRange(0, 5)) {
      case 0:  // the header of the file or of a page, and its list of cells
        Overwrite(file, page + input.ConsumeIntegralInRange<std::size_t>(0, 127), input.ConsumeRandomLengthString(8));
        break;
      case 1:  // the cells, which begin at the end of a page
        Overwrite(file, page + kPage - input.ConsumeIntegralInRange<std::size_t>(1, 512),
                  input.ConsumeRandomLengthString(16));
        break;
      case 2:
        Overwrite(file, page + input.ConsumeIntegralInRange<std::size_t>(0, kPage - 1),
                  input.ConsumeRandomLengthString(64));
        break;
      case 3:
        Overwrite(file, page, std::string(kPage, '\0'));
        break;
      case 4:
        Overwrite(file, page, sound.substr(input.ConsumeIntegralInRange<std::size_t>(0, pages - 1) * kPage, kPage));
        break;
      default:
        file.resize(std::min(file.size(), page + (input.ConsumeBool() ? 0 : input.ConsumeIntegral<std::uint8_t>())));
    }
  }
  return file;
}

/// The metamodel as text; empty when it was refused, as it should be.
std::string Load(const std::string& path) {
  std::string text;
  const test::SError error = test::ErrorOf([&] { text = test::TextOf(*OpenMetaStorage(path)->Load()) + "end\n"; });
  if (!Succeeded(error)) {
    Require(error.code == kvx::kMalformedDocument || error.code == kvx::kFileError, "a fault of the file is named so",
            error.message);
    Require(error.message.compare(0, path.size() + 2, path + ": ") == 0, "the file is named", error.message);
    fuzz::RequireOneLine(error.message);
  }
  return text;
}

std::size_t CountFiles(const test::CTemporaryDirectory& directory) {
  const std::filesystem::directory_iterator files(directory.Path());
  return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

void RequireStorable(const test::CTemporaryDirectory& directory, const std::string& path, const std::string& content) {
  if (content.empty()) {
    return;
  }
  const std::string copy = directory.File("copy.json");
  OpenMetaStorage(copy)->Save(*OpenMetaStorage(path)->Load());
  Require(Load(copy) == content, "what was read can be stored", content);
  std::filesystem::remove(copy);
}

/// Stores a small metamodel over a damaged one.
void RequireReplacedOrKept(const std::string& path, const std::string& content) {
  static const std::shared_ptr<CMetaDictionary2024> replacement = MakeMetamodel(1);
  const test::SError error = test::ErrorOf([&path] { OpenMetaStorage(path)->Save(*replacement); });
  const std::string after = Load(path);
  if (Succeeded(error)) {
    Require(after == test::TextOf(*replacement) + "end\n", "what was stored is there as a whole", after);
  } else {
    fuzz::RequireOneLine(error.message);
    Require(after == content, "what could not be replaced is as it was", error.message);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const test::CTemporaryDirectory directory;
  static const std::vector<std::string> soundFiles = {SoundFile(directory, 1), SoundFile(directory, 12)};

  FuzzedDataProvider input(data, size);
  // Storing takes many times as long as reading.
  const bool isReplaced = input.ConsumeIntegralInRange(0, 7) == 0;
  const std::string file = Damaged(soundFiles[input.ConsumeIntegralInRange<std::size_t>(0, 1)], input);
  const std::string path = directory.Write("meta.db", file);
  const std::string content = Load(path);
  Require(test::ReadFile(path) == file && CountFiles(directory) == 1, "reading changes nothing");
  if (isReplaced) {
    Require(Load(path) == content, "one file reads as one metamodel", content);
    RequireStorable(directory, path, content);
    RequireReplacedOrKept(path, content);
  }
  for (const auto& left : std::filesystem::directory_iterator(directory.Path())) {
    std::filesystem::remove(left.path());
  }
  return 0;
}
