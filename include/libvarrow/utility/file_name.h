// File names that fit the platform's limits, and removing what is in the way.
#pragma once

#include <string>

#include "libvarrow/Export.h"

namespace libvarrow::utility {

/// Replaces `name` by its absolute path in generic form ("/" as separator). A file name of more
/// than 255 bytes, or a path of more than 259, loses as many bytes as are too many from the end of
/// its stem; the extension stays, and the stem never goes below empty. Two long names may become
/// equal so: the first cut in a directory is logged at WARN with the name before and after (again
/// after a thousand directories).
LIBVARROW_API void adjustFileName(std::string& name);

/// Removes the file, the directory with all its content, or the link `path`. True when nothing is
/// there afterwards; what cannot be removed is logged at ERROR and gives false.
LIBVARROW_API bool removeIfExist(const std::string& path);

}  // namespace libvarrow::utility
