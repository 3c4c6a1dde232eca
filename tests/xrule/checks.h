// Rules for tests.
#pragma once

#include <memory>

#include "cppbind/cppbind.h"
#include "libvarrow/xrule/Rule.h"
#include "libvarrow/xrule/RuleReason.h"

namespace xrule_test {

class AtMost : public libvarrow::Rule {
 public:
  void setBind(cppbind::Binder* binder, bool) {
    binder->bind("limit", limit);
    binder->bind("rule_level", ownLevel, 0);
  }
  ~AtMost() override { --alive(); }
  AtMost() { ++alive(); }
  bool validate(int value) { return count(value <= limit); }
  static int& alive() {
    static int count = 0;
    return count;
  }
  int limit = 0;
  int ownLevel = 0;
};

class Never : public libvarrow::Rule {
 public:
  void setBind(cppbind::Binder*, bool) { setValidateAllFlag(true); }
};

struct NoRule : cppbind::Object {};

inline cppbind::ClassRegister checks() {
  cppbind::ClassRegister reg;
  reg.regClass<AtMost>("AtMost", "a property");
  reg.regClass<Never>("Never");
  reg.regClass<NoRule>("NoRule");
  return reg;
}

}  // namespace xrule_test
