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
  /// A broken rule.
  struct BreakRuleInfo {
    /// The class name of the rule, as RuleReason::ruleName has it.
    std::string ruleName;
    /// The reason in words; may be empty.
    std::string reason;
  };

  /// Appends a broken rule.
  void add(const std::string& ruleName, const std::string& reason);
  /// Room for `count` broken rules.
  void reserve(std::size_t count) { breakRules_.reserve(count); }
  /// In the order they were added; valid until the next is.
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
  /// What one validator says.
  struct LIBVARROW_API RuleReasonInfo {
    /// `reason` may be null.
    RuleReasonInfo(const std::string& validatorName, boost::shared_ptr<RuleValidatorReason> reason);

    /// As the host calls the validator.
    std::string validatorName;
    boost::shared_ptr<RuleValidatorReason> reason;  ///< may be null
  };

  /// `refObj`: the object that the report is about, as people call it.
  explicit ValidatorReason(std::string refObj = std::string());

  ///@{
  /// Appends what validators say; shares the reasons, which may be null.
  void addReason(std::string validatorName, boost::shared_ptr<RuleValidatorReason> reason);
  void addReason(const std::vector<RuleReasonInfo>& reasons);
  ///@}

  /// The object that the report is about.
  const std::string& refObj() const { return refObj_; }
  /// In the order they were added.
  const std::vector<RuleReasonInfo>& reasonInfos() const { return reasons_; }

  /// Every rule reason, in order. Null ones are passed over.
  std::vector<boost::shared_ptr<RuleReason>> getFailedReasons() const;
  /// How many getFailedReasons() has.
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
