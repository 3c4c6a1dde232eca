#include "libvarrow/xrule/RuleResult.h"

#include <typeinfo>

#include "cppbind/Object.h"
#include "libvarrow/xrule/RuleValidatorReason.h"

namespace libvarrow {

RuleParameter::~RuleParameter() = default;

std::string RuleParameter::dumpStr() const {
  return cppbind::typeName(typeid(*this));
}

std::string RuleResult::flagType2Str(bool flag) {
  return flag ? "PASS" : "FAIL";
}

std::string RuleResult::dumpStr() const {
  std::string text = "flag: " + flagType2Str(flag_);
  if (reason_ != nullptr) text += "; failed_reason: " + reason_->toStr();
  return text;
}

RuleValidateContext::RuleValidateContext(RuleParameter* parameter, RuleValidatorReason* reason)
    : parameter_(parameter) {
  result_.setReason(reason);
}

std::string RuleValidateContext::dumpStr() const {
  return "parameter: " + (parameter_ != nullptr ? parameter_->dumpStr() : "null") +
         "; result: " + result_.dumpStr();
}

}  // namespace libvarrow
