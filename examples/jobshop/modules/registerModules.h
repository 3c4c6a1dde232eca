// The classes that a job-shop pipeline may name.
#pragma once

#include <cppbind/ClassRegister.h>

namespace jobshop {

void registerModules(cppbind::ClassRegister& classes);

}  // namespace jobshop
