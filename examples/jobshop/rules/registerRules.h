// The classes that a rule file may name.
#pragma once

#include <cppbind/ClassRegister.h>

namespace jobshop {

/// Name of the register of rules, to which plug-ins may add theirs: classes derived from
/// ScheduleRule.
inline constexpr const char* kRuleRegister = "jobshop rules";

/// Registers the rules of job shops.
void registerRules(cppbind::ClassRegister& classes);

}  // namespace jobshop
