#include "libvarrow/xrule/ValidatorReason.h"

#include <boost/make_shared.hpp>
#include <utility>

namespace libvarrow {

void SimpleValidatorReason::add(const std::string& ruleName, const std::string& reason) {
  breakRules_.push_back({ruleName, reason});
}

ValidatorReason::RuleReasonInfo::RuleReasonInfo(const std::string& name,
                                                boost::shared_ptr<RuleValidatorReason> why)
    : validatorName(name), reason(std::move(why)) {}

ValidatorReason::ValidatorReason(std::string refObj) : refObj_(std::move(refObj)) {}

void ValidatorReason::addReason(std::string validatorName,
                                boost::shared_ptr<RuleValidatorReason> reason) {
  reasons_.emplace_back(validatorName, std::move(reason));
}

void ValidatorReason::addReason(const std::vector<RuleReasonInfo>& reasons) {
  // Uses an index, because the list may be the one that grows.
  for (std::size_t i = 0, count = reasons.size(); i < count; ++i) reasons_.push_back(reasons[i]);
}

std::vector<boost::shared_ptr<RuleReason>> ValidatorReason::getFailedReasons() const {
  std::vector<boost::shared_ptr<RuleReason>> failed;
  for (const RuleReasonInfo& info : reasons_) {
    if (info.reason == nullptr) continue;
    for (const auto& reason : info.reason->reasons()) {
      if (reason != nullptr) failed.push_back(reason);
    }
  }
  return failed;
}

std::size_t ValidatorReason::getFailedReasonCount() const {
  return getFailedReasons().size();
}

Json::Value ValidatorReason::getJsonValueInfo() const {
  Json::Value json(Json::objectValue);
  json["refObj"] = refObj_;
  Json::Value& list = json["ruleValidatorReasonList"] = Json::Value(Json::arrayValue);
  for (const RuleReasonInfo& info : reasons_) {
    Json::Value& entry = list.append(Json::Value(Json::objectValue));
    entry["ruleValidatorName"] = info.validatorName;
    if (info.reason != nullptr) entry["ruleValidatorReason"] = info.reason->getJsonValueInfo();
  }
  return json;
}

Json::Value ValidatorReason::getJsonValueInfoV2() const {
  Json::Value json(Json::objectValue);
  json["refObj"] = refObj_;
  for (const RuleReasonInfo& info : reasons_) {
    for (Json::Value& reason : info.reason->getJsonValueInfoV2()) {
      json["rulesBreak"].append(std::move(reason));
    }
  }
  return json;
}

boost::shared_ptr<SimpleValidatorReason> ValidatorReason::toSimple() const {
  const auto failed = getFailedReasons();
  auto simple = boost::make_shared<SimpleValidatorReason>();
  simple->reserve(failed.size());
  for (const auto& reason : failed) simple->add(reason->ruleName(), reason->reasonStr());
  return simple;
}

}  // namespace libvarrow
