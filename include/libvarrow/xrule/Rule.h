// A check that a host runs against its data.
#pragma once

#include <json/value.h>

#include <atomic>
#include <cstdint>
#include <string>

#include "cppbind/Object.h"
#include "libvarrow/Export.h"

namespace libvarrow {

/// The purpose of a rule; the host defines the values: `constexpr RuleGenType kByUser{1};`.
enum class RuleGenType : std::int32_t {};

/// Base of a host's rules, which RuleLoader creates from a rule file. The host defines how a rule
/// runs: give the rules your own base, with an operation that takes the data, counts, and reports
/// the reason of a failure.
///
///     class LatestFinish : public libvarrow::Rule {
///      public:
///       void setBind(cppbind::Binder* binder, bool bindFields) {
///         if (bindFields) binder->bind("limit", limit_);
///       }
///       bool validate(const Plan& plan) { return count(plan.end() <= limit_); }
///      private:
///       int limit_ = 0;
///     };
///
/// Derives from Object virtually, so that a rule may have another base that derives virtually from
/// Object. When several bases of a rule are rules, each must derive virtually from Rule.
///
/// The counters are thread-safe; the rest is not.
class LIBVARROW_API Rule : virtual public cppbind::Object {
 public:
  Rule() = default;
  ///@{
  /// Copies the counters too.
  Rule(const Rule& other);
  Rule& operator=(const Rule& other);
  ///@}
  ~Rule() override;

  ///@{
  /// Enables or disables the rule, or returns whether it is enabled; the host must respect it. A
  /// new rule is enabled.
  void enable() { enabled_ = true; }
  void disable() { enabled_ = false; }
  bool isEnabled() const { return enabled_; }
  ///@}

  ///@{
  /// Returns how often the rule passed or failed since it was created or reset.
  std::int32_t getPassedCountValue() const { return passedCount_.load(); }
  std::int32_t getFailedCountValue() const { return failedCount_.load(); }
  ///@}
  /// Sets both counters to 0, one after the other.
  void resetStatisticsCount();

  ///@{
  /// Returns or sets the purpose of the rule, RuleGenType{0} at first.
  RuleGenType getRuleGenType() const { return ruleGenType_; }
  void setRuleGenType(RuleGenType type) { ruleGenType_ = type; }
  ///@}

  /// Returns whether the rule wants everything checked, also after its first failure; the host must
  /// respect it. False unless the rule's class sets it.
  bool getValidateAllFlag() const { return validateAll_; }

  /// Returns {"passed_count", "failed_count", "rule_class"}. The class is the run-time type,
  /// "cppbind::ObjWrapperT<LatestFinish>" for a rule created by name. Also writes it to `*text`, as
  /// text indented by tabs, unless `text` is null.
  Json::Value getRuleBasicInfo(std::string* text) const;

  /// Returns the class name under which the rule was created, else its run-time type.
  std::string dumpStr() const override;

 protected:
  /// Counts one check and returns its outcome.
  bool count(bool hasPassed);
  /// Sets getValidateAllFlag(); for constructors of rules that want everything checked.
  void setValidateAllFlag(bool validateAll) { validateAll_ = validateAll; }

 private:
  std::atomic<std::int32_t> passedCount_{0};
  std::atomic<std::int32_t> failedCount_{0};
  RuleGenType ruleGenType_{};
  bool validateAll_ = false;
  bool enabled_ = true;
};

}  // namespace libvarrow
