// The classes that a rule file may name.
#pragma once

namespace jobshop {

/// Name of the register of rules, to which plug-ins may add theirs: classes derived from
/// ScheduleRule.
inline constexpr const char* kRuleRegister = "jobshop rules";

/// Registers the host's rules there. Call it once in a process.
void registerRules();

}  // namespace jobshop
