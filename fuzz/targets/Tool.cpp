// The whole tool, on an upgrade directory whose upgrade.json, info.json and log4cplus.properties are of any text: it
// ends with one of its three statuses, trouble is one line, and what was saved before is replaced by a whole document
// or not at all.
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "fuzz/support/Failure.h"
#include "fuzz/support/Input.h"
#include "kvxsptjson/JsonObject.h"
#include "kvxsptstring/StringHelper.h"
#include "support/TemporaryDirectory.h"
#include "upgradesrv/CommandLine.h"

namespace {

namespace fs = std::filesystem;
using fuzz::Require;

constexpr const char* kResult = "2024/checkMetaError.json";
constexpr const char* kEarlier = R"({"earlier": true})";

const std::map<std::string, std::string> kMetamodels = {
    {"2024/metamodel.json",
     R"({"generation": 2024, "classes": [{"internal_name": "Part", "properties": [{"internal_name": "Code"}]}],
         "links": [{"internal_name": "Uses"}], "behaviors": [{"internal_name": "Versioned"}]})"},
    {"installation.json",
     R"({"generation": 2024, "classes": [{"internal_name": "Part",
         "properties": [{"internal_name": "Code", "length": 7}]}]})"},
};

bool Holds(std::string text, const std::string& word) {
  CStringHelper::ToLower(text);
  return text.find(word) != std::string::npos;
}

/// Whether a run would ask a server: a fuzzer leaves others alone.
bool AsksServer(const std::string& upgrade) {
  CJsonObject root;
  if (!fuzz::Succeeded(test::ErrorOf([&] { root.CreateFromText(upgrade, "upgrade.json"); })) || !root.IsObject()) {
    return false;
  }
  const std::vector<std::string> keys = {"original_metamodel", "client_metamodel"};
  return std::any_of(keys.begin(), keys.end(), [&root](const std::string& key) {
    return root.HasMember(key) && root.IsString(key) && Holds(root.GetStringValue(key), "postgres");
  });
}

/// The same text without what would make log4cplus write outside of the current directory; empty for one that would
/// send the log to a server.
std::string Harmless(std::string log) {
  if (Holds(log, "socket") || Holds(log, "syslog") || Holds(log, "udp")) {
    return "";
  }
  std::replace(log.begin(), log.end(), '/', '_');
  return log;
}

/// While it exists, a standard stream goes to a file.
class CRedirection {
 public:
  CRedirection(int stream, const std::string& path) : stream_(stream), kept_(dup(stream)) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    Require(file >= 0 && dup2(file, stream_) == stream_, "a stream is redirected");
    close(file);
  }
  ~CRedirection() {
    dup2(kept_, stream_);
    close(kept_);
  }
  CRedirection(const CRedirection&) = delete;
  CRedirection& operator=(const CRedirection&) = delete;

 private:
  int stream_;
  int kept_;
};

struct SRun {
  int status = 0;
  std::string output;
  std::string errors;
};

SRun RunTool(const std::string& directory, const std::string& streams) {
  const std::string output = streams + "/output";
  const std::string errors = streams + "/errors";
  SRun run;
  {
    const CRedirection toOutput(STDOUT_FILENO, output);
    const CRedirection toErrors(STDERR_FILENO, errors);
    const std::array<const char*, 5> arguments = {"upgradesrv", "run", "--module-dir", UPGRADESRV_MODULE_DIRECTORY,
                                                  directory.c_str()};
    run.status = upgradesrv::RunCommandLine(static_cast<int>(arguments.size()), arguments.data());
  }
  run.output = test::ReadFile(output);
  run.errors = test::ReadFile(errors);
  return run;
}

/// The lines of standard error; where no log is configured each is one of the tool or of its log, without control
/// characters.
void RequireClear(const SRun& run, bool isLogConfigured) {
  Require(run.status >= 0 && run.status <= 2, "the status is one of three", std::to_string(run.status));
  std::size_t errors = 0;
  std::istringstream lines(run.errors);
  for (std::string line; std::getline(lines, line);) {
    if (!isLogConfigured) {
      fuzz::RequireOneLine(line);
    }
    errors += line.rfind("upgradesrv: error: ", 0) == 0 ? 1 : 0;
  }
  Require((errors == 1) == (run.status == 2) && errors <= 1, "trouble is one line, and nothing else is", run.errors);
  // The configuration of a log may name standard output.
  Require(run.status != 0 || run.output.empty() || isLogConfigured, "status 0 reports nothing", run.output);
}

/// What a run leaves: its inputs, and a whole document.
void RequireWhole(const test::CTemporaryDirectory& directory, const std::map<std::string, std::string>& inputs,
                  const SRun& run) {
  std::set<std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(directory.Path())) {
    if (entry.is_regular_file()) {
      files.insert(fs::relative(entry.path(), directory.Path()));
    }
  }
  for (const auto& [name, text] : inputs) {
    Require(files.erase(name) == 1 && test::ReadFile(directory.File(name)) == text, "inputs stay as they are", name);
  }
  Require(files == std::set<std::string>{kResult}, "nothing else is there", *files.begin());
  CJsonObject document;
  document.CreateFromFile(directory.File(kResult));
  const bool isEarlier = test::ReadFile(directory.File(kResult)) == kEarlier;
  Require(document.IsObject(), "the document is whole");
  Require(run.status != 1 || !isEarlier, "a run that reports has saved");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const test::CTemporaryDirectory directory;
  static const test::CTemporaryDirectory elsewhere;
  // What a configuration of log4cplus can insert.
  static const bool isCleared = clearenv() == 0;
  // A module that comes and goes would take with it what the fuzzer knows of its code.
  static const void* const module =
      dlopen(UPGRADESRV_MODULE_DIRECTORY "/libcheckmeta2024.so", RTLD_NOW | RTLD_NODELETE);
  Require(isCleared && module != nullptr, "the environment is empty, and the module there");
  fuzz::CDocuments documents;
  if (!documents.Read(fuzz::Text(data, size))) {
    return -1;
  }
  std::map<std::string, std::string> inputs = kMetamodels;
  inputs["upgrade.json"] = documents.Text("upgrade");
  inputs["multilanguage/strings/info.json"] = documents.Text("info");
  const std::string log = Harmless(documents.Text("log"));
  if (AsksServer(inputs["upgrade.json"])) {
    return -1;
  }
  fs::remove(directory.File("log4cplus.properties"));
  if (!log.empty()) {
    inputs["log4cplus.properties"] = log;
  }
  for (const auto& [name, text] : inputs) {
    directory.Write(name, text);
  }
  directory.Write(kResult, kEarlier);
  // Where the files of a log are.
  const fs::path home = fs::current_path();
  fs::create_directory(elsewhere.File("logs"));
  fs::current_path(elsewhere.File("logs"));
  const SRun run = RunTool(directory.Path(), elsewhere.Path());
  fs::current_path(home);
  fs::remove_all(elsewhere.File("logs"));
  RequireClear(run, !log.empty());
  RequireWhole(directory, inputs, run);
  return 0;
}
