// The classes that a job-shop pipeline may name.
#pragma once

#include <cppbind/ClassRegister.h>

#include <boost/shared_ptr.hpp>

namespace jobshop {

/// The named registry of the modules, to which plug-ins add theirs.
inline constexpr const char* kModuleRegister = "jobshop";

/// Registers the host's own modules there; once in a process. Returns the registry.
boost::shared_ptr<cppbind::ClassRegister> registerModules();

}  // namespace jobshop
