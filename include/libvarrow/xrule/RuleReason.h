// Which rule failed, and its details.
#pragma once

#include <boost/shared_ptr.hpp>
#include <memory>
#include <string>
#include <vector>

#include "libvarrow/xrule/FailReason.h"

namespace libvarrow {

class Rule;

/// In JSON: {"ruleName": the class name that the rule was created under, spelt as in the rule file,
/// "ruleClassName": its run-time type, of one created by name "cppbind::ObjWrapperT<LatestFinish>",
/// "ruleProperty": {"baseProperty", "originParameter"}, what it was created from, "detailInfo":
/// only when there is one}.
class LIBVARROW_API RuleReason : public FailReason {
 public:
  /// Copies what it says of `rule` (not null) and takes `detail` over, which may be null. Its
  /// member "reasonStr", a string, is what the simple report shows.
  ///
  ///     auto detail = std::make_unique<Json::Value>();
  ///     (*detail)["reasonStr"] = "job 3 ends at 57, 2 too late";
  ///     reason.appendReason(new libvarrow::RuleReason(this, detail));
  RuleReason(const Rule* rule, std::unique_ptr<Json::Value>& detail);
  RuleReason(RuleReason&&) = default;
  RuleReason& operator=(RuleReason&&) = default;

  Json::Value getJsonValueInfo() const override;

  /// The class name that the rule was created under.
  const std::string& ruleName() const { return ruleName_; }
  /// The rule's run-time type.
  const std::string& ruleClassName() const { return ruleClassName_; }
  /// What the rule was created from; null of one that was not created by name.
  const Json::Value& ruleProperty() const { return ruleProperty_; }
  /// Null when there is none.
  const Json::Value* detailInfo() const { return detailInfo_.get(); }
  /// The detail's member "reasonStr"; empty when there is no such string.
  std::string reasonStr() const;

  /// The array of the reasons' JSON forms. None may be null.
  static Json::Value getJsonFromObj(const std::vector<boost::shared_ptr<RuleReason>>& reasons);

 private:
  RuleReason() = default;

  std::string ruleClassName_;
  Json::Value ruleProperty_;
  std::string ruleName_;
  std::unique_ptr<Json::Value> detailInfo_;
};

}  // namespace libvarrow
