// An output file stream that creates its directory.
#pragma once

#include <fstream>
#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

/// An output stream that creates the parent directory of its file. A directory that cannot be
/// created is logged; a file that cannot be opened leaves the stream failed.
class LIBVARROW_VISIBLE_TYPE AutoCreateDirFileStream : public std::ofstream {
 public:
  /// Opens `path` for writing in text mode and truncates it. `path` is in the narrow encoding; a
  /// relative one is relative to the current directory.
  LIBVARROW_API explicit AutoCreateDirFileStream(const std::string& path);
};

}  // namespace libvarrow
