// The input and the result of a rule.
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

  /// Returns the run-time type's name; a host may return more.
  virtual std::string dumpStr() const;
};

/// The outcome of one check: good or not, and the reason if not.
class LIBVARROW_API RuleResult {
 public:
  /// The rule holds.
  static constexpr bool FLAG_GOOD = true;
  /// The rule is broken.
  static constexpr bool FLAG_FAILED = false;
  /// The same as FLAG_FAILED: a result records only good or not good.
  static constexpr bool FLAG_FAILED_OVER_FLOW = false;

  ///@{
  /// Returns or sets the flag, FLAG_GOOD at first. Setting it does not change the reason.
  bool isGood() const { return flag_; }
  bool getFlag() const { return flag_; }
  void setGood() { flag_ = FLAG_GOOD; }
  void setFailed() { flag_ = FLAG_FAILED; }
  void setFlag(bool flag) { flag_ = flag; }
  ///@}

  ///@{
  /// Returns or sets the reason, null at first. The reason is not owned and must outlive the
  /// result.
  FailReason* getReason() const { return reason_; }
  void setReason(FailReason* reason) { reason_ = reason; }
  ///@}

  /// Returns "PASS" or "FAIL".
  static std::string flagType2Str(bool flag);

  /// Returns "flag: PASS" or "flag: FAIL", followed by "; failed_reason: " and the reason's text
  /// whenever a reason is set.
  std::string dumpStr() const;

 private:
  bool flag_ = FLAG_GOOD;
  FailReason* reason_ = nullptr;
};

/// A parameter together with its result, as a check passes them through its rules. Owns neither the
/// parameter nor the reason.
class LIBVARROW_API RuleValidateContext {
 public:
  /// Creates a good result with `reason` (may be null) as its reason.
  RuleValidateContext(RuleParameter* parameter, RuleValidatorReason* reason);

  /// Returns the parameter; not owned.
  RuleParameter* getParameter() const { return parameter_; }
  ///@{
  /// Returns the result, which the rules set.
  RuleResult& getResult() { return result_; }
  const RuleResult& getResult() const { return result_; }
  ///@}

  /// Returns "parameter: " and its text, "; result: " and its text.
  std::string dumpStr() const;

 private:
  RuleParameter* parameter_;
  RuleResult result_;
};

}  // namespace libvarrow
