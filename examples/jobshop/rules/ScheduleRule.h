// The base of all rules of this host.
#pragma once

#include <cppbind/imp/binder.h>
#include <json/value.h>
#include <libvarrow/xrule/Rule.h>
#include <libvarrow/xrule/RuleResult.h>

#include <optional>

#include "problem/Instance.h"

namespace jobshop {

/// Rule that checks one object of a schedule at a time and ignores objects of other kinds.
class ScheduleRule : public libvarrow::Rule {
 public:
  /// Binds the keys of every rule. A derived class calls it first.
  void setBind(cppbind::Binder* binder, bool bindFields);

  /// Returns true when the context's parameter keeps the rule, and counts the result. Otherwise
  /// fails the context's result and adds the complaint to its reason, a RuleValidatorReason.
  bool validate(libvarrow::RuleValidateContext& context);

  /// Throws std::runtime_error when the rule is about an object that `instance` does not have. The
  /// rule would silently never apply.
  virtual void requireFits(const Instance& instance) const = 0;

 protected:
  /// The numbers of a complaint, with its text in "reasonStr"; nothing when the rule is kept.
  using Complaint = std::optional<Json::Value>;

 private:
  bool mustValidate() const;
  virtual bool isAbout(const libvarrow::RuleParameter& parameter) const = 0;
  /// Returns the complaint about `parameter`. Precondition: isAbout(parameter).
  virtual Complaint complaintAbout(const libvarrow::RuleParameter& parameter) const = 0;
};

}  // namespace jobshop
