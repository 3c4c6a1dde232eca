// The classes that a job-shop pipeline may name.
#pragma once

#include <cppbind/ClassRegister.h>

#include <boost/shared_ptr.hpp>

namespace jobshop {

/// Name of the register of modules, to which plug-ins add theirs.
inline constexpr const char* kModuleRegister = "jobshop";

/// Registers the host's modules there and returns the register. Call it once in a process.
boost::shared_ptr<cppbind::ClassRegister> registerModules();

}  // namespace jobshop
