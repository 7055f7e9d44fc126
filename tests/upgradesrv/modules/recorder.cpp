// A module that appends to the file "record" of its parameter what becomes of it: "invoked NAME", "destroyed NAME" and,
// once the module goes, "unloaded". NAME, the parameter's too, is what it reports.

#include <fstream>
#include <memory>

#include "kvxsptjson/JsonObject.h"
#include "upgradesrv/modules/Factory.h"

namespace {

class CRecord {
 public:
  CRecord() = default;
  ~CRecord() { Append("unloaded"); }
  CRecord(const CRecord&) = delete;
  CRecord& operator=(const CRecord&) = delete;

  void Open(const std::string& path) { path_ = path; }
  void Append(const std::string& line) const { std::ofstream(path_, std::ios::app) << line << "\n"; }

 private:
  std::string path_;
};

CRecord record;

class CRecorder : public CUpgradeStrategy {
 public:
  CRecorder() = default;
  CRecorder(const CRecorder&) = delete;
  CRecorder& operator=(const CRecorder&) = delete;
  ~CRecorder() override { record.Append("destroyed " + name_); }

  void Invoke(CHandlerContext& /*handlerContext*/, CUpgradeContext& /*upgradeContext*/) override {
    name_ = GetParameter()->GetStringValue("name");
    record.Open(GetParameter()->GetStringValue("record"));
    record.Append("invoked " + name_);
    const auto result = std::make_shared<CJsonObject>();
    result->SetStringValue("error_info", name_ + "\n");
    SetResult(result);
  }

 private:
  std::string name_;
};

}  // namespace

CUpgradeStrategy* CreateReflectionClassObject(const std::string& /*className*/) {
  return std::make_unique<CRecorder>().release();
}
