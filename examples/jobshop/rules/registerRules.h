// The classes that a rule file may name.
#pragma once

namespace jobshop {

/// The named registry of the rules, to which plug-ins may add theirs: classes derived from
/// ScheduleRule.
inline constexpr const char* kRuleRegister = "jobshop rules";

/// Registers the host's own rules there; once in a process.
void registerRules();

}  // namespace jobshop
