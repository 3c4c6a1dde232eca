// What a rule is given and what it answers.
#pragma once

#include <string>

#include "libvarrow/Export.h"
#include "libvarrow/xrule/FailReason.h"

namespace libvarrow {

class RuleValidatorReason;

/// Base of the data that a rule checks.
class LIBVARROW_API RuleParameter {
 public:
  RuleParameter() = default;
  RuleParameter(const RuleParameter&) = default;
  RuleParameter(RuleParameter&&) = default;
  RuleParameter& operator=(const RuleParameter&) = default;
  RuleParameter& operator=(RuleParameter&&) = default;
  virtual ~RuleParameter();

  /// The run-time type's name; a host says more.
  virtual std::string dumpStr() const;
};

/// The outcome of one check: good or not, and why not.
class LIBVARROW_API RuleResult {
 public:
  /// The rule holds.
  static constexpr bool FLAG_GOOD = true;
  /// The rule is broken.
  static constexpr bool FLAG_FAILED = false;
  /// The same as FLAG_FAILED: a result records only good or not good.
  static constexpr bool FLAG_FAILED_OVER_FLOW = false;

  ///@{
  /// FLAG_GOOD at first. Setting it leaves the reason as it is.
  bool isGood() const { return flag_; }
  bool getFlag() const { return flag_; }
  void setGood() { flag_ = FLAG_GOOD; }
  void setFailed() { flag_ = FLAG_FAILED; }
  void setFlag(bool flag) { flag_ = flag; }
  ///@}

  ///@{
  /// Not owned; null at first. It must outlive the result.
  FailReason* getReason() const { return reason_; }
  void setReason(FailReason* reason) { reason_ = reason; }
  ///@}

  /// "PASS" or "FAIL".
  static std::string flagType2Str(bool flag);

  /// "flag: PASS", or "flag: FAIL; failed_reason: " and the reason's text; the reason stands there
  /// whenever there is one.
  std::string dumpStr() const;

 private:
  bool flag_ = FLAG_GOOD;
  FailReason* reason_ = nullptr;
};

/// A parameter together with its result, as a check hands them through its rules. Owns neither the
/// parameter nor the reason.
class LIBVARROW_API RuleValidateContext {
 public:
  /// The result starts good, with `reason` (may be null) as its reason.
  RuleValidateContext(RuleParameter* parameter, RuleValidatorReason* reason);

  /// As given; not owned.
  RuleParameter* getParameter() const { return parameter_; }
  ///@{
  /// For the rules to set.
  RuleResult& getResult() { return result_; }
  const RuleResult& getResult() const { return result_; }
  ///@}

  /// "parameter: " and its text, "; result: " and its text.
  std::string dumpStr() const;

 private:
  RuleParameter* parameter_;
  RuleResult result_;
};

}  // namespace libvarrow
