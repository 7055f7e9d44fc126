#include "otherhost/Host.h"

#include <algorithm>

#include "kvxsptexception/KVXException.h"
#include "kvxsptjson/JsonObject.h"
#include "kvxsptlog/Log.h"
#include "kvxsptstring/StringHelper.h"
#include "upgradecontext/SupportUpgradeHandler.h"
#include "upgradecontext/UpgradeContext.h"
#include "upgradecontext/UpgradeStrategy.h"

namespace otherhost {
namespace {

CHost* current = nullptr;

}  // namespace

CHost::CHost() {
  current = this;
}

CHost::~CHost() {
  current = nullptr;
}

CHost& CHost::Current() {
  return *current;
}

void CHost::Record(const std::string& call) {
  calls_.push_back(call);
  if (calls_.size() == failingNumber_ || (!failingText_.empty() && call.find(failingText_) != std::string::npos)) {
    throw SFailure{call};
  }
}

void CHost::FailNoMore() {
  failingNumber_ = 0;
  failingText_.clear();
}

std::vector<std::string> CHost::CallsWith(const std::vector<std::string>& texts) const {
  std::vector<std::string> found;
  std::copy_if(calls_.begin(), calls_.end(), std::back_inserter(found), [&texts](const std::string& call) {
    return std::any_of(texts.begin(), texts.end(),
                       [&call](const std::string& text) { return call.find(text) != std::string::npos; });
  });
  return found;
}

std::uint32_t STestAccess::CodeOf(const CKVXException& error) {
  return static_cast<std::uint32_t>(error.code_);
}

std::string STestAccess::MessageOf(const CKVXException& error) {
  return error.message_;
}

}  // namespace otherhost

using otherhost::CHost;

void CLog::Print(const char* file, int line, const char* function, const std::string& logName, int level,
                 const std::string& message) {
  const std::string path = file;
  CHost::Current().Record("Print(" + path.substr(path.rfind('/') + 1) + ", " + std::to_string(line) + ", " + function +
                          ", " + logName + ", " + std::to_string(level) + ", " + message + ")");
}

void CStringHelper::ToLower(std::string& text) {
  CHost::Current().Record("ToLower(" + text + ")");
  for (char& c : text) {
    c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }
}

int CStringHelper::StringCompare(const std::string& a, const std::string& b, bool flag) {
  CHost::Current().Record("StringCompare(" + a + ", " + b + ", " + (flag ? "true" : "false") + ")");
  return a == b ? 0 : 17;
}

std::string CUpgradeContext::GetUpgradeCfgPath() {
  CHost::Current().Record("GetUpgradeCfgPath()");
  return "/cfg";
}

std::string CUpgradeContext::GetVersionUpgradeCfgPath() {
  CHost::Current().Record("GetVersionUpgradeCfgPath()");
  return "/cfg/2024";
}

std::string CUpgradeContext::GetLang() {
  CHost::Current().Record("GetLang()");
  return "en";
}

CUpgradeStrategy::CUpgradeStrategy() = default;

CUpgradeStrategy::CUpgradeStrategy(const CUpgradeStrategy&) = default;

CUpgradeStrategy& CUpgradeStrategy::operator=(const CUpgradeStrategy&) = default;

CUpgradeStrategy::~CUpgradeStrategy() = default;

std::shared_ptr<CJsonObject> CUpgradeStrategy::GetParameter() {
  CHost::Current().Record("GetParameter()");
  return CHost::Current().parameter;
}

void CUpgradeStrategy::SetResult(const std::shared_ptr<CJsonObject>& result) {
  CHost::Current().Record("SetResult(" + otherhost::TextOf(result) + ")");
  CHost::Current().result = result;
}

CSupportUpgradeHandler::CSupportUpgradeHandler(CHandlerContext& /*handlerContext*/, CUpgradeContext& upgradeContext)
    : upgradeContext_(upgradeContext) {}

CSupportUpgradeHandler::CSupportUpgradeHandler(const CSupportUpgradeHandler&) = default;

CSupportUpgradeHandler::~CSupportUpgradeHandler() = default;

CUpgradeContext& CSupportUpgradeHandler::GetUpgradeContext() const {
  return upgradeContext_;
}
