// Makes sure that a directory exists.
#pragma once

#include <boost/filesystem/path.hpp>
#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

/// Creates, with all missing ancestors, the directory `path` when `pathIsFolder` is true, else the
/// parent directory of `path`. Never throws: what goes wrong is logged at ERROR.
class LIBVARROW_API DirCreator {
 public:
  /// Does it. `path` is in the narrow encoding; a relative one is taken from the current directory.
  DirCreator(const std::string& path, bool pathIsFolder);

 private:
  boost::filesystem::path path_;
};

}  // namespace libvarrow
