// A check that a host runs against its data.
#pragma once

#include <json/value.h>

#include <atomic>
#include <cstdint>
#include <string>

#include "cppbind/Object.h"
#include "libvarrow/Export.h"

namespace libvarrow {

/// What a rule was made for; the host defines the values: `constexpr RuleGenType kByUser{1};`.
enum class RuleGenType : std::int32_t {};

/// Base of a host's rules, which RuleLoader creates from a rule file. How a rule is run is the
/// host's: give the rules a base of your own with an operation that takes the data, counts, and
/// says why not.
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
/// Derives from Object virtually, so that a rule may have another base that is virtually an Object;
/// of several bases that are rules each derives from Rule virtually.
///
/// The counters may be used from any thread; the rest belongs to one thread at a time.
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
  /// Switch a rule off and on again, for the host to respect. A new rule is enabled.
  void enable() { enabled_ = true; }
  void disable() { enabled_ = false; }
  bool isEnabled() const { return enabled_; }
  ///@}

  ///@{
  /// How often the rule passed and failed since it was made or reset.
  std::int32_t getPassedCountValue() const { return passedCount_.load(); }
  std::int32_t getFailedCountValue() const { return failedCount_.load(); }
  ///@}
  /// Sets both counters to 0, one after the other.
  void resetStatisticsCount();

  ///@{
  /// RuleGenType{0} at first.
  RuleGenType getRuleGenType() const { return ruleGenType_; }
  void setRuleGenType(RuleGenType type) { ruleGenType_ = type; }
  ///@}

  /// Whether the rule wants everything looked at, also after its first complaint: for the host to
  /// respect. False unless the rule's class sets it.
  bool getValidateAllFlag() const { return validateAll_; }

  /// {"passed_count", "failed_count", "rule_class"}; the class is the run-time type, of a
  /// rule created by name "cppbind::ObjWrapperT<LatestFinish>". Unless null,
  /// `*text` gets it as text indented by tabs.
  Json::Value getRuleBasicInfo(std::string* text) const;

  /// The class name that the rule was created under, else its run-time type.
  std::string dumpStr() const override;

 protected:
  /// Counts one check and returns its outcome.
  bool count(bool hasPassed);
  /// For the constructor of a rule that wants everything looked at.
  void setValidateAllFlag(bool validateAll) { validateAll_ = validateAll; }

 private:
  std::atomic<std::int32_t> passedCount_{0};
  std::atomic<std::int32_t> failedCount_{0};
  RuleGenType ruleGenType_{};
  bool validateAll_ = false;
  bool enabled_ = true;
};

}  // namespace libvarrow
