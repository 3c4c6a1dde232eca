// File names within the platform's limits, and removal of existing files.
#pragma once

#include <string>

#include "libvarrow/Export.h"

namespace libvarrow::utility {

/// Replaces `name` by its absolute path in generic form ("/" as separator). When the file name has
/// more than 255 bytes or the path more than 259 (on Windows: UTF-16 units), cuts the excess from
/// the end of the stem, at most the whole stem; the extension stays. Two long names may thus become
/// equal: the first cut in a directory is logged at WARN with the name before and after (again
/// after 1,000 directories).
LIBVARROW_API void adjustFileName(std::string& name);

/// Removes `path`: a file, a link, or a directory with all its content. Returns true when nothing
/// exists there afterwards; logs at ERROR and returns false when it cannot be removed.
LIBVARROW_API bool removeIfExist(const std::string& path);

}  // namespace libvarrow::utility
