// All that speaks against one object, by validator, in three forms.
#pragma once

#include <boost/shared_ptr.hpp>
#include <cstddef>
#include <string>
#include <vector>

#include "libvarrow/xrule/FailReason.h"
#include "libvarrow/xrule/RuleValidatorReason.h"

namespace libvarrow {

/// What a person needs of a report: rule by rule, the reason in words.
class LIBVARROW_API SimpleValidatorReason {
 public:
  struct BreakRuleInfo {
    std::string ruleName;
    std::string reason;
  };

  void add(const std::string& ruleName, const std::string& reason);
  void reserve(std::size_t count) { breakRules_.reserve(count); }
  const std::vector<BreakRuleInfo>& breakRules() const { return breakRules_; }

 private:
  std::vector<BreakRuleInfo> breakRules_;
};

/// In JSON: {"refObj": ..., "ruleValidatorReasonList": [{"ruleValidatorName": ...,
/// "ruleValidatorReason": {...}}, ...]}; an entry without a reason has only its name.
///
///     libvarrow::ValidatorReason report("plan of March 5");
///     report.addReason("machines", machineReason);
///     file << report.dumpJsonValueInfo();
class LIBVARROW_API ValidatorReason : public FailReason {
 public:
  struct LIBVARROW_API RuleReasonInfo {
    RuleReasonInfo(const std::string& validatorName, boost::shared_ptr<RuleValidatorReason> reason);

    std::string validatorName;
    boost::shared_ptr<RuleValidatorReason> reason;  ///< may be null
  };

  explicit ValidatorReason(std::string refObj = std::string());

  void addReason(std::string validatorName, boost::shared_ptr<RuleValidatorReason> reason);
  void addReason(const std::vector<RuleReasonInfo>& reasons);

  const std::string& refObj() const { return refObj_; }
  const std::vector<RuleReasonInfo>& reasonInfos() const { return reasons_; }

  /// Every rule reason, in order. Null ones are passed over.
  std::vector<boost::shared_ptr<RuleReason>> getFailedReasons() const;
  std::size_t getFailedReasonCount() const;

  Json::Value getJsonValueInfo() const override;

  /// {"refObj": ..., "rulesBreak": [...]}: the rule reasons of all validators in one list, each
  /// with the objects that its check was about; validator names do not appear. Without rule reasons
  /// there is no "rulesBreak". An entry without a reason ends the process with a back-trace.
  Json::Value getJsonValueInfoV2() const;

  /// Name and words of each rule reason, in order. The words are the detail's "reasonStr", empty
  /// when that is no string. Keep the result while you loop over its breakRules().
  boost::shared_ptr<SimpleValidatorReason> toSimple() const;

 private:
  std::string refObj_;
  std::vector<RuleReasonInfo> reasons_;
};

}  // namespace libvarrow
