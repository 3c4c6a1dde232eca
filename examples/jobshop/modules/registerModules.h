// The classes that a job-shop pipeline may name.
#pragma once

#include <cppbind/ClassRegister.h>

namespace jobshop {

/// Name of the register of modules, to which plug-ins add theirs.
inline constexpr const char* kModuleRegister = "jobshop";

/// Registers the modules of job shops.
void registerModules(cppbind::ClassRegister& classes);

}  // namespace jobshop
