#include "rules/ScheduleRule.h"

#include <libvarrow/xrule/RuleReason.h>
#include <libvarrow/xrule/RuleValidatorReason.h>

#include <memory>

namespace jobshop {

void ScheduleRule::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  bool enabled = isEnabled();
  bool all = getValidateAllFlag();
  binder->field("enabled", enabled, true).about("False disables the rule.");
  binder->field("all", all, false)
      .about("True: reports each object that breaks the rule. False: only the first.");
  enabled ? enable() : disable();
  setValidateAllFlag(all);
}

bool ScheduleRule::mustValidate() const {
  return isEnabled() && (getValidateAllFlag() || getFailedCountValue() == 0);
}

bool ScheduleRule::validate(libvarrow::RuleValidateContext& context) {
  const libvarrow::RuleParameter& parameter = *context.getParameter();
  if (!mustValidate() || !isAbout(parameter)) return true;
  const Complaint complaint = complaintAbout(parameter);
  if (count(!complaint)) return true;
  libvarrow::RuleResult& result = context.getResult();
  result.setFailed();
  auto detail = std::make_unique<Json::Value>(*complaint);
  dynamic_cast<libvarrow::RuleValidatorReason&>(*result.getReason())
      .appendReason(new libvarrow::RuleReason(this, detail));
  return false;
}

}  // namespace jobshop
