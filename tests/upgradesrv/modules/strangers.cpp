// Strategies by class name, each with one way to end.

#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <map>
#include <memory>
#include <new>
#include <stdexcept>
#include <thread>

#include "kvxsptexception/ErrorCodes.h"
#include "kvxsptexception/KVXException.h"
#include "kvxsptjson/JsonObject.h"
#include "kvxsptlog/Log.h"
#include "upgradecontext/HandlerContext.h"
#include "upgradecontext/UpgradeContext.h"
#include "upgradesrv/modules/Bytes.h"
#include "upgradesrv/modules/Factory.h"

namespace {

constexpr std::uint32_t kCode = 0xA4520008;

/// Its code lies in this module: whoever shows it must do so before the module goes.
class COwnException : public std::exception {
 public:
  const char* what() const noexcept override { return "an exception of the module's own"; }
};

using Result = std::shared_ptr<CJsonObject>;
using Body = Result (*)(CUpgradeStrategy& self, CHandlerContext& handlerContext, CUpgradeContext& upgradeContext);

Result Text(const std::string& text) {
  auto result = std::make_shared<CJsonObject>();
  result->SetStringValue("error_info", text);
  return result;
}

Result Log(int level) {
  CLog::Print("stranger.cpp", 12, "CStranger::Invoke", "errormsg", level, "the stranger's log line");
  return nullptr;
}

void ReadForbiddenMemory() {
  void* page = mmap(nullptr, static_cast<std::size_t>(getpagesize()), PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  static_cast<void>(*static_cast<volatile char*>(page));
}

/// Answers never, unless `depth` comes to an end.
std::size_t UseUpTheStack(std::size_t depth) {
  std::array<volatile char, 1024> room{};
  room[depth % room.size()] = 1;
  return depth == 0 ? 0 : UseUpTheStack(depth - 1) + static_cast<std::size_t>(room[0]);
}

void ThrowUncaught() {
  throw std::runtime_error("nobody catches this");
}

const std::map<std::string, Body> bodies = {
    {"CAborts", [](auto&, auto&, auto&) -> Result { std::abort(); }},
    {"CReadsForbiddenMemory",
     [](auto&, auto&, auto&) -> Result {
       ReadForbiddenMemory();
       return nullptr;
     }},
    {"CReadsForbiddenMemoryInAThread",
     [](auto&, auto&, auto&) -> Result {
       std::thread(ReadForbiddenMemory).join();
       return nullptr;
     }},
    {"CUsesUpTheStack", [](auto&, auto&, auto&) -> Result { return Text(std::to_string(UseUpTheStack(SIZE_MAX))); }},
    {"CThrowsInAThread",
     [](auto&, auto&, auto&) -> Result {
       std::thread(ThrowUncaught).join();
       return nullptr;
     }},
    {"CThrowsMessage", [](auto&, auto&, auto&) -> Result { throw CKVXException(kCode, "the stranger's message"); }},
    {"CLacksAMember",
     [](CUpgradeStrategy& self, auto&, auto&) -> Result { return Text(self.GetParameter()->GetStringValue("fr")); }},
    {"CNamesItsDocument",
     [](auto&, auto&, auto&) -> Result {
       throw CKVXException(kvx::kJsonMemberMissing, "texts.json: the text \"title\" is missing; add it");
     }},
    {"CThrowsCode", [](auto&, auto&, auto&) -> Result { throw CKVXException(kCode); }},
    {"CThrowsBadAlloc", [](auto&, auto&, auto&) -> Result { throw std::bad_alloc(); }},
    {"CThrowsRuntimeError", [](auto&, auto&, auto&) -> Result { throw std::runtime_error("a runtime error"); }},
    {"CThrowsOwnException", [](auto&, auto&, auto&) -> Result { throw COwnException(); }},
    {"CThrowsInt", [](auto&, auto&, auto&) -> Result { throw 42; }},
    {"CThrowsTwoLines", [](auto&, auto&, auto&) -> Result { throw std::runtime_error("one\nupgradesrv: two\x1B[2J"); }},
    {"CEndsTheProcess", [](auto&, auto&, auto&) -> Result { std::exit(0); }},
    {"CSetsNoResult", [](auto&, auto&, auto&) -> Result { return nullptr; }},
    {"CSetsNoText", [](auto&, auto&, auto&) -> Result { return std::make_shared<CJsonObject>(); }},
    {"CSetsNumber",
     [](auto&, auto&, auto&) -> Result {
       auto result = std::make_shared<CJsonObject>();
       result->SetUInt32Value("error_info", 7);
       return result;
     }},
    {"CSetsArray",
     [](auto&, auto&, auto&) -> Result {
       auto result = std::make_shared<CJsonObject>();
       result->SetStringArrayValue("error_info", {"one", "two"});
       return result;
     }},
    {"CSetsEmptyText", [](auto&, auto&, auto&) -> Result { return Text(""); }},
    {"CSetsBytes", [](auto&, auto&, auto&) -> Result { return Text(kBytes); }},
    {"CTellsContext",
     [](CUpgradeStrategy& self, CHandlerContext& handlerContext, CUpgradeContext& context) -> Result {
       return Text(handlerContext.GetStrategyName() + "\n" + context.GetUpgradeCfgPath() + "\n" +
                   context.GetVersionUpgradeCfgPath() + "\n" + context.GetLang() + "\n" +
                   context.GetOriginalMetaLocation() + "\n" + context.GetClientMetaLocation() + "\n" +
                   self.GetParameter()->ToText() + "\n");
     }},
    {"CLogsError", [](auto&, auto&, auto&) -> Result { return Log(40000); }},
    {"CLogsWarning", [](auto&, auto&, auto&) -> Result { return Log(30000); }},
    {"CLogsErrorAndReports",
     [](auto&, auto&, auto&) -> Result {
       Log(40000);
       return Text("what was found\n");
     }},
};

class CStranger : public CUpgradeStrategy {
 public:
  explicit CStranger(Body body) : body_(body) {}
  void Invoke(CHandlerContext& handlerContext, CUpgradeContext& upgradeContext) override {
    SetResult(body_(*this, handlerContext, upgradeContext));
  }

 private:
  Body body_;
};

}  // namespace

CUpgradeStrategy* CreateReflectionClassObject(const std::string& className) {
  const auto found = bodies.find(className);
  return found == bodies.end() ? nullptr : std::make_unique<CStranger>(found->second).release();
}
