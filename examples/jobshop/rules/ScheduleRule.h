// How this host runs rules: the base of them all.
#pragma once

#include <cppbind/imp/binder.h>
#include <json/value.h>
#include <libvarrow/xrule/Rule.h>
#include <libvarrow/xrule/RuleResult.h>

#include <optional>

#include "Instance.h"

namespace jobshop {

/// Looks at one thing of a schedule at a time, and has nothing to say about those of other kinds.
class ScheduleRule : public libvarrow::Rule {
 public:
  /// The keys of every rule:
  /// - "enabled", true: false switches the rule off;
  /// - "all", false: whether to look on after the first thing that breaks the rule.
  void setBind(cppbind::Binder* binder, bool bindFields);

  /// Whether the context's parameter keeps the rule, which counts it. When it does not, the
  /// context's result is failed, and its reason, a RuleValidatorReason, says why.
  bool validate(libvarrow::RuleValidateContext& context);

  /// Throws std::runtime_error when the rule is about something that `instance` does not have,
  /// which it would otherwise never say a word about.
  virtual void requireFits(const Instance& instance) const = 0;

 protected:
  /// The numbers, and in "reasonStr" the words; nothing when all is well.
  using Complaint = std::optional<Json::Value>;

 private:
  bool wantsToLook() const;
  virtual bool isAbout(const libvarrow::RuleParameter& parameter) const = 0;
  /// `parameter` is what the rule is about.
  virtual Complaint complaintAbout(const libvarrow::RuleParameter& parameter) const = 0;
};

/// Throws cppbind::ParseErrorException for the key "limit" of a time that is negative.
void requireLimit(Time limit);

}  // namespace jobshop
