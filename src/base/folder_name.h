// Folders with the names of classes.
#pragma once

#include <string>

namespace libvarrow::base {

/// Returns the name of a class or a module, which is UTF-8, as the name of a folder of this system.
/// On Windows that is systemName() with "_" in place of characters which names of files lack there,
/// such as the colons of "planner::Dispatch".
std::string folderName(std::string name);

}  // namespace libvarrow::base
