// Rules for tests.
#pragma once

#include <memory>

#include "cppbind/cppbind.h"
#include "libvarrow/xrule/Rule.h"
#include "libvarrow/xrule/RuleReason.h"

namespace xrule_test {

struct AtMost : libvarrow::Rule {
  using Rule::setValidateAllFlag;
  void setBind(cppbind::Binder* binder, bool) {
    binder->bind("limit", limit);
    int own = 0;  // of the rule, not of the loader
    binder->bind("rule_level", own, 0);
  }
  bool validate(int value) { return count(value <= limit); }
  int limit = 0;
};

struct Never : libvarrow::Rule {};

struct NoRule : cppbind::Object {};

inline cppbind::ClassRegister checks() {
  cppbind::ClassRegister reg;
  reg.regClass<AtMost>("AtMost", "a property");
  reg.regClass<Never>("Never");
  reg.regClass<NoRule>("NoRule");
  return reg;
}

}  // namespace xrule_test
