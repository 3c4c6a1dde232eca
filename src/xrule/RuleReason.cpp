#include "libvarrow/xrule/RuleReason.h"

#include <typeinfo>
#include <utility>

#include "libvarrow/xrule/Rule.h"

namespace libvarrow {

RuleReason::RuleReason(const Rule* rule, std::unique_ptr<Json::Value>& detail)
    : ruleClassName_(cppbind::typeName(typeid(*rule))),
      ruleProperty_(rule->getBaiscInfoJson()),
      ruleName_(rule->dumpStr()),
      detailInfo_(std::move(detail)) {}

Json::Value RuleReason::getJsonValueInfo() const {
  Json::Value json(Json::objectValue);
  json["ruleProperty"] = ruleProperty_;
  json["ruleName"] = ruleName_;
  json["ruleClassName"] = ruleClassName_;
  if (detailInfo_ != nullptr) json["detailInfo"] = *detailInfo_;
  return json;
}

std::string RuleReason::reasonStr() const {
  if (detailInfo_ == nullptr || !detailInfo_->isObject()) return std::string();
  const Json::Value& text = (*detailInfo_)["reasonStr"];
  return text.isString() ? text.asString() : std::string();
}

Json::Value RuleReason::getJsonFromObj(const std::vector<boost::shared_ptr<RuleReason>>& reasons) {
  Json::Value list(Json::arrayValue);
  for (const auto& reason : reasons) list.append(reason->getJsonValueInfo());
  return list;
}

}  // namespace libvarrow
