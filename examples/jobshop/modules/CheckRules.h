// The module that holds the schedule against the user's rules.
#pragma once

#include <cppbind/imp/binder.h>
#include <libvarrow/module/Module.h>
#include <libvarrow/xrule/ValidatorReason.h>

#include <string>

namespace jobshop {

class JobShopData;
class RuleFile;

/// Reports which rules the schedule breaks, and why.
///
/// In JSON: {"CheckRules": {"file": "rules.json"}}.
class CheckRules : public libvarrow::Module {
 public:
  /// - "file", required: the rule file, from the pipeline file's folder unless absolute;
  /// - "stop", true: whether a broken rule ends the run;
  /// - "json", "rule_report.json"; "json_v2", "rule_report_v2.json"; "text", "rule_report.txt":
  /// where
  ///   to write the report in its full, its flat and its readable form, from the run's folder
  ///   unless absolute; "" leaves it out.
  void setBind(cppbind::Binder* binder, bool bindFields);

  /// Throws std::runtime_error as RuleFile, for a file that cannot be written, and when a rule that
  /// is to stop the run is broken; the reports are there then.
  void processImp(libvarrow::ModuleData* data) override;

 private:
  void writeReports(const libvarrow::ValidatorReason& report, const RuleFile& rules,
                    JobShopData& shop) const;
  void judge(const libvarrow::ValidatorReason& report, const RuleFile& rules) const;

  std::string file_;
  bool stop_ = true;
  std::string json_;
  std::string jsonV2_;
  std::string text_;
};

}  // namespace jobshop
