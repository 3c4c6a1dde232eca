// The ways in which the crash host crashes.
#pragma once

#include <functional>
#include <map>
#include <string>

using CrashWays = std::map<std::string, std::function<void()>>;

/// Returns the ways that depend on the system.
CrashWays systemCrashWays();

/// Writes to a null pointer.
void fault();
