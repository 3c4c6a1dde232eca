// An output file stream that makes its folder first.
#pragma once

#include <fstream>
#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

/// Creates the parent directory of `path` and opens `path` for writing in text mode, truncating it.
/// A directory that cannot be made is logged; a file that cannot be opened is a failed stream.
class LIBVARROW_API AutoCreateDirFileStream : public std::ofstream {
 public:
  /// `path` is in the narrow encoding; a relative one is taken from the current directory.
  explicit AutoCreateDirFileStream(const std::string& path);
};

}  // namespace libvarrow
