// The module that checks the schedule against the user's rules.
#pragma once

#include <cppbind/imp/binder.h>
#include <libvarrow/module/Module.h>
#include <libvarrow/xrule/ValidatorReason.h>

#include <string>

namespace jobshop {

class JobShopData;
class RuleFile;

/// Module that reports which rules the schedule breaks, and why.
///
/// In JSON: {"CheckRules": {"file": "rules.json"}}.
class CheckRules : public libvarrow::Module {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields);

  /// Checks the rules and writes the reports. Throws std::runtime_error like RuleFile, when a file
  /// cannot be written, and, after writing the reports, when a rule that ends the run is broken.
  void processImp(libvarrow::ModuleData* data) override;

 private:
  void writeReports(const libvarrow::ValidatorReason& report, const RuleFile& rules,
                    JobShopData& shop) const;
  void logAndThrowIfBroken(const libvarrow::ValidatorReason& report, const RuleFile& rules) const;

  std::string file_;
  bool stop_ = true;
  std::string json_;
  std::string jsonV2_;
  std::string text_;
};

}  // namespace jobshop
