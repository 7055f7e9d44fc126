// A damaged SQLite database is read exactly as SQLite alone reads it, or refused with its name and for a cause that
// SQLite alone finds, too; reading changes nothing, and what is stored over it is there as a whole or not at all.
//
// An input is a list of damages to a sound database: most bytes of a database file are of no consequence. Pages may be
// those of another place, or of an earlier time, when the database had fewer rows.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <filesystem>

#include "fuzz/support/Failure.h"
#include "fuzz/support/PlainReading.h"
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

/// A sound database at two times. What is there later has only been added.
struct SSound {
  std::string earlier;
  std::string later;
  std::string earlierText;
  std::string laterText;
};

constexpr const char* kForgetCounts =
    "CREATE TABLE head AS SELECT generation, 1 AS schema_version FROM metamodel; DROP TABLE metamodel; "
    "ALTER TABLE head RENAME TO metamodel";

std::string AddRows(bool hasCounts) {
  std::string statements;
  for (const std::string table : {"meta_classes", "meta_links", "meta_behaviors"}) {
    const bool isBehavior = table == "meta_behaviors";
    statements += "INSERT INTO " + table + " SELECT ordinal + 100, 'Later' || internal_name, display_name" +
                  (isBehavior ? "" : ", class_id, table_name") + " FROM " + table + ";";
  }
  for (const std::string kind : {"class", "link", "behavior"}) {
    statements += "INSERT INTO meta_" + kind + "_properties SELECT " + kind +
                  "_ordinal, ordinal + 100, 'Later' || internal_name, display_name, field, type, length, "
                  "default_value, precision, max, min, lookup_internal_name FROM meta_" +
                  kind + "_properties;";
  }
  statements +=
      "INSERT INTO meta_class_behaviors SELECT class_ordinal, ordinal + 100, behavior FROM meta_class_behaviors;"
      "INSERT INTO meta_methods SELECT behavior_ordinal, ordinal + 100, 'Later' || internal_name, display_name FROM "
      "meta_methods;";
  for (const std::string table :
       {"meta_classes", "meta_links", "meta_behaviors", "meta_class_properties", "meta_link_properties",
        "meta_behavior_properties", "meta_class_behaviors", "meta_link_behaviors", "meta_methods"}) {
    statements += hasCounts ? "UPDATE metamodel SET " + table + "_rows = (SELECT count(*) FROM " + table + ");" : "";
  }
  return statements;
}

SSound MakeSound(const test::CTemporaryDirectory& directory, std::size_t elements, bool hasCounts) {
  const std::string path = directory.File("sound.db");
  OpenMetaStorage(path)->Save(*MakeMetamodel(elements));
  if (!hasCounts) {
    fuzz::ExecutePlainly(path, kForgetCounts);
  }
  SSound sound;
  sound.earlier = test::ReadFile(path);
  sound.earlierText = fuzz::ReadPlainly(path).text;
  fuzz::ExecutePlainly(path, AddRows(hasCounts));
  sound.later = test::ReadFile(path);
  sound.laterText = fuzz::ReadPlainly(path).text;
  std::filesystem::remove(path);
  Require(!sound.earlierText.empty() && sound.earlierText.size() < sound.laterText.size(), "sound files are read");
  return sound;
}

void Overwrite(std::string& file, std::size_t offset, const std::string& bytes) {
  const std::size_t size = std::min(bytes.size(), file.size() - std::min(offset, file.size()));
  file.replace(std::min(offset, file.size()), size, bytes, 0, size);
}

struct SDamaged {
  std::string file;
  /// Whether all damages are pages of an earlier time.
  bool isOnlyStale = true;
};

SDamaged Damage(const SSound& sound, FuzzedDataProvider& input) {
  constexpr std::size_t kPage = 8192;
  const std::size_t pages = sound.later.size() / kPage;
  SDamaged damaged{sound.later};
  std::string& file = damaged.file;
  // A list of stale pages alone makes the strictest promise, and is rare among lists of anything.
  const int leastKind = input.ConsumeBool() ? 0 : 6;
  while (input.remaining_bytes() > 0) {
    const std::size_t page = input.ConsumeIntegralInRange<std::size_t>(0, pages - 1) * kPage;
    const int kind = input.ConsumeIntegralInRange(leastKind, 6);
    damaged.isOnlyStale = damaged.isOnlyStale && kind == 6;
    switch (kind) {
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
      case 4:  // a page of another place
        Overwrite(file, page,
                  sound.later.substr(input.ConsumeIntegralInRange<std::size_t>(0, pages - 1) * kPage, kPage));
        break;
      case 5:
        file.resize(std::min(file.size(), page + (input.ConsumeBool() ? 0 : input.ConsumeIntegral<std::uint8_t>())));
        break;
      default:  // a page of an earlier time
        Overwrite(file, page, sound.earlier.substr(std::min(page, sound.earlier.size()), kPage));
    }
  }
  return damaged;
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

void RequireAsPlainlyRead(const std::string& path, const std::string& content) {
  const fuzz::SPlainReading plain = fuzz::ReadPlainly(path);
  if (content.empty()) {
    Require(!plain.fault.empty() || plain.hasTextOrdinals || !fuzz::IsSoundPlainly(path), "what is refused has a fault",
            plain.text);
    return;
  }
  Require(plain.fault.empty(), "what is read has no fault", plain.fault);
  Require(content == plain.text + "end\n", "what is read is what SQLite reads", content + "\n" + plain.text);
  Require(plain.hasCounts || fuzz::IsSoundPlainly(path), "a file without the numbers of rows is sound");
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
  static const std::vector<SSound> soundFiles = {MakeSound(directory, 1, true), MakeSound(directory, 12, true),
                                                 MakeSound(directory, 12, false)};

  FuzzedDataProvider input(data, size);
  // Storing takes many times as long as reading.
  const bool isReplaced = input.ConsumeIntegralInRange(0, 7) == 0;
  const std::size_t chosen = input.ConsumeIntegralInRange<std::size_t>(0, soundFiles.size() - 1);
  const SSound& sound = soundFiles[chosen];
  const SDamaged damaged = Damage(sound, input);
  const std::string path = directory.Write("meta.db", damaged.file);
  const std::string content = Load(path);
  Require(test::ReadFile(path) == damaged.file && CountFiles(directory) == 1, "reading changes nothing");
  RequireAsPlainlyRead(path, content);
  if (damaged.isOnlyStale && chosen != soundFiles.size() - 1 && !content.empty()) {
    Require(content == sound.laterText + "end\n" || content == sound.earlierText + "end\n",
            "of pages of two times nothing is read but the whole of one", content);
  }
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
