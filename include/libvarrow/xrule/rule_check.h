// Finds all faults of a rule file, without keeping its rules.
#pragma once

#include <boost/filesystem/path.hpp>
#include <string>

#include "cppbind/ClassRegisterBase.h"
#include "cppbind/Fault.h"
#include "libvarrow/Export.h"

namespace libvarrow {

///@{
/// Returns all faults of a rule file, which RuleLoader reads; see cppbind::Checker. `reg` creates
/// the rules, which are destroyed. Structure and classes that make RuleLoader abort are errors,
/// too. Prints and logs nothing. Throws only std::bad_alloc.
LIBVARROW_API cppbind::Faults checkRuleFile(const boost::filesystem::path& path,
                                            const cppbind::ClassRegisterBase& reg);
LIBVARROW_API cppbind::Faults checkRuleText(const std::string& text,
                                            const cppbind::ClassRegisterBase& reg);
///@}

}  // namespace libvarrow
