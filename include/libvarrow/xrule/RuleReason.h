// A failed rule and its details.
#pragma once

#include <boost/shared_ptr.hpp>
#include <memory>
#include <string>
#include <vector>

#include "libvarrow/xrule/FailReason.h"

namespace libvarrow {

class Rule;

/// The reason of one failed rule. In JSON: {"ruleName": the class name under which the rule was
/// created, spelt as in the rule file, "ruleClassName": its run-time type,
/// "cppbind::ObjWrapperT<LatestFinish>" for a rule created by name, "ruleProperty":
/// {"baseProperty", "originParameter"}, the values from which it was created, "detailInfo": only if
/// present}.
class LIBVARROW_API RuleReason : public FailReason {
 public:
  /// Copies the names and properties of `rule` (not null) and takes ownership of `detail`, which
  /// may be null. The simple report shows the detail's string member "reasonStr".
  ///
  ///     auto detail = std::make_unique<Json::Value>();
  ///     (*detail)["reasonStr"] = "job 3 ends at 57, 2 too late";
  ///     reason.appendReason(new libvarrow::RuleReason(this, detail));
  RuleReason(const Rule* rule, std::unique_ptr<Json::Value>& detail);
  RuleReason(RuleReason&&) = default;
  RuleReason& operator=(RuleReason&&) = default;

  Json::Value getJsonValueInfo() const override;

  /// Returns the class name under which the rule was created.
  const std::string& ruleName() const { return ruleName_; }
  /// Returns the rule's run-time type.
  const std::string& ruleClassName() const { return ruleClassName_; }
  /// Returns the values from which the rule was created; null when it was not created by name.
  const Json::Value& ruleProperty() const { return ruleProperty_; }
  /// Returns the details; null without details.
  const Json::Value* detailInfo() const { return detailInfo_.get(); }
  /// Returns the detail's member "reasonStr"; empty without such a string.
  std::string reasonStr() const;

  /// Returns the array of the reasons' JSON forms. None may be null.
  static Json::Value getJsonFromObj(const std::vector<boost::shared_ptr<RuleReason>>& reasons);

 private:
  RuleReason() = default;

  std::string ruleClassName_;
  Json::Value ruleProperty_;
  std::string ruleName_;
  std::unique_ptr<Json::Value> detailInfo_;
};

}  // namespace libvarrow
