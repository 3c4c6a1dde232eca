// The module that checks the schedule against the user's rules.
#pragma once

#include <cppbind/imp/binder.h>
#include <libvarrow/module/InputFile.h>
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

  /// Checks the rules, writes the reports and tells the run which rules are broken. Throws
  /// std::runtime_error like RuleFile and when a file cannot be written; afterwards
  /// libvarrow::RulesBroken when broken rules end the run.
  void processImp(libvarrow::ModuleData* data) override;

 private:
  void writeReports(const libvarrow::ValidatorReason& report, const RuleFile& rules,
                    JobShopData& shop) const;
  void tellBroken(const libvarrow::ValidatorReason& report, const RuleFile& rules,
                  const JobShopData& shop) const;

  libvarrow::RuleFileName file_;
  bool stop_ = true;
  std::string json_;
  std::string jsonV2_;
  std::string text_;
};

}  // namespace jobshop
