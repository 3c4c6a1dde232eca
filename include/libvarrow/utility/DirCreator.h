// Creation of directories.
#pragma once

#include <boost/filesystem/path.hpp>
#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

/// A helper whose constructor creates a directory with all missing ancestors: `path` if
/// `pathIsFolder` is true, else the parent directory of `path`. Never throws; logs errors at ERROR.
class LIBVARROW_API DirCreator {
 public:
  /// Creates the directory. `path` is in the narrow encoding; a relative one is relative to the
  /// current directory.
  DirCreator(const std::string& path, bool pathIsFolder);

 private:
  boost::filesystem::path path_;
};

}  // namespace libvarrow
