#include "libvarrow/xrule/Rule.h"

#include <typeinfo>

#include "base/json_text.h"

namespace libvarrow {

Rule::Rule(const Rule& other)
    : cppbind::Object(other),
      passedCount_(other.getPassedCountValue()),
      failedCount_(other.getFailedCountValue()),
      ruleGenType_(other.ruleGenType_),
      validateAll_(other.validateAll_),
      enabled_(other.enabled_) {}

Rule& Rule::operator=(const Rule& other) {
  cppbind::Object::operator=(other);
  passedCount_ = other.getPassedCountValue();
  failedCount_ = other.getFailedCountValue();
  ruleGenType_ = other.ruleGenType_;
  validateAll_ = other.validateAll_;
  enabled_ = other.enabled_;
  return *this;
}

Rule::~Rule() = default;

void Rule::resetStatisticsCount() {
  passedCount_.exchange(0);
  failedCount_.exchange(0);
}

Json::Value Rule::getRuleBasicInfo(std::string* text) const {
  Json::Value info(Json::objectValue);
  info["passed_count"] = getPassedCountValue();
  info["failed_count"] = getFailedCountValue();
  info["rule_class"] = cppbind::typeName(typeid(*this));
  if (text != nullptr) *text = base::json_text::styled(info, "\t");
  return info;
}

std::string Rule::dumpStr() const {
  return cppbind::Object::dumpStr();
}

bool Rule::count(bool hasPassed) {
  ++(hasPassed ? passedCount_ : failedCount_);
  return hasPassed;
}

}  // namespace libvarrow
