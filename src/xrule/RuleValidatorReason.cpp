#include "libvarrow/xrule/RuleValidatorReason.h"

#include <utility>

namespace libvarrow {

RuleValidatorReason::RuleValidatorReason(std::string refObj) : refObjs_{std::move(refObj)} {}

RuleValidatorReason::RuleValidatorReason(std::string first, std::string second)
    : refObjs_{std::move(first), std::move(second)} {}

RuleValidatorReason::RuleValidatorReason(std::vector<std::string> refObjs)
    : refObjs_(std::move(refObjs)) {}

void RuleValidatorReason::addRefObj(const std::string& refObj) {
  refObjs_.push_back(refObj);
}

void RuleValidatorReason::appendReason(RuleReason* reason) {
  appendReason(boost::shared_ptr<RuleReason>(reason));
}

void RuleValidatorReason::appendReason(const boost::shared_ptr<RuleReason>& reason) {
  reasons_.push_back(reason);
}

Json::Value RuleValidatorReason::refObjList() const {
  Json::Value list(Json::arrayValue);
  for (const std::string& refObj : refObjs_) list.append(refObj);
  return list;
}

Json::Value RuleValidatorReason::getJsonValueInfo() const {
  Json::Value json(Json::objectValue);
  if (!refObjs_.empty()) json["refObjList"] = refObjList();
  json["ruleReasonList"] = RuleReason::getJsonFromObj(reasons_);
  return json;
}

std::vector<Json::Value> RuleValidatorReason::getJsonValueInfoV2() const {
  std::vector<Json::Value> list;
  for (const auto& reason : reasons_) {
    list.push_back(reason->getJsonValueInfo());
    list.back()["refObjList"] = refObjList();
  }
  return list;
}

}  // namespace libvarrow
