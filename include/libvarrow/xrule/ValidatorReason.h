// All reasons against one object, by validator, in three forms.
#pragma once

#include <boost/shared_ptr.hpp>
#include <cstddef>
#include <string>
#include <vector>

#include "libvarrow/xrule/FailReason.h"
#include "libvarrow/xrule/RuleValidatorReason.h"

namespace libvarrow {

/// A report for people: rule by rule, the reason in words.
class LIBVARROW_API SimpleValidatorReason {
 public:
  /// A broken rule.
  struct BreakRuleInfo {
    /// The class name of the rule, as in RuleReason::ruleName.
    std::string ruleName;
    /// The reason in words; may be empty.
    std::string reason;
  };

  /// Appends a broken rule.
  void add(const std::string& ruleName, const std::string& reason);
  /// Reserves memory for `count` broken rules.
  void reserve(std::size_t count) { breakRules_.reserve(count); }
  /// Returns the broken rules in order of addition; valid until the next add().
  const std::vector<BreakRuleInfo>& breakRules() const { return breakRules_; }

 private:
  std::vector<BreakRuleInfo> breakRules_;
};

/// The reasons of all validators against one object. In JSON: {"refObj": ...,
/// "ruleValidatorReasonList": [{"ruleValidatorName": ..., "ruleValidatorReason": {...}}, ...]}; an
/// entry without a reason has only its name.
///
///     libvarrow::ValidatorReason report("plan of March 5");
///     report.addReason("machines", machineReason);
///     file << report.dumpJsonValueInfo();
class LIBVARROW_API ValidatorReason : public FailReason {
 public:
  /// The reason of one validator.
  struct LIBVARROW_API RuleReasonInfo {
    /// Takes the name and the reason, which may be null.
    RuleReasonInfo(const std::string& validatorName, boost::shared_ptr<RuleValidatorReason> reason);

    /// The validator's name in the host.
    std::string validatorName;
    boost::shared_ptr<RuleValidatorReason> reason;  ///< may be null
  };

  /// Creates an empty report about the object `refObj`, as people call it.
  explicit ValidatorReason(std::string refObj = std::string());

  ///@{
  /// Appends the reasons of validators and shares them; they may be null.
  void addReason(std::string validatorName, boost::shared_ptr<RuleValidatorReason> reason);
  void addReason(const std::vector<RuleReasonInfo>& reasons);
  ///@}

  /// Returns the object that the report is about.
  const std::string& refObj() const { return refObj_; }
  /// Returns the entries in order of addition.
  const std::vector<RuleReasonInfo>& reasonInfos() const { return reasons_; }

  /// Returns every rule reason, in order, and ignores null ones.
  std::vector<boost::shared_ptr<RuleReason>> getFailedReasons() const;
  /// Returns the number of reasons in getFailedReasons().
  std::size_t getFailedReasonCount() const;

  Json::Value getJsonValueInfo() const override;

  /// Returns {"refObj": ..., "rulesBreak": [...]}: the rule reasons of all validators in one list,
  /// each with the objects of its check; validator names do not appear. Without rule reasons,
  /// "rulesBreak" is absent. Aborts with a back-trace when the reason of an entry is null.
  Json::Value getJsonValueInfoV2() const;

  /// Returns the name and the words of each rule reason, in order. The words are the detail's
  /// "reasonStr", empty when that is not a string. Keep the result while you loop over its
  /// breakRules().
  boost::shared_ptr<SimpleValidatorReason> toSimple() const;

 private:
  std::string refObj_;
  std::vector<RuleReasonInfo> reasons_;
};

}  // namespace libvarrow
