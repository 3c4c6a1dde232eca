// The folder of one run.
#pragma once

#include <boost/filesystem/path.hpp>
#include <string>

#include "host/system.h"

namespace libvarrow::host {

/// A new run folder, locked until the object is destroyed. It contains "run.json" (see RunRecord),
/// by which a later run recognises it, and "run.lock".
class RunFolder {
 public:
  /// Makes the folder. An existing one must be empty, or, with `overwrite`, the folder of an
  /// earlier run, whose files are removed except its record, which the new run replaces. Throws
  /// std::runtime_error, and changes nothing, for any other folder, when another run uses it, when
  /// it contains another run, or when files were added to it after the earlier run.
  RunFolder(const boost::filesystem::path& path, bool overwrite);

  /// Returns the absolute path.
  const boost::filesystem::path& path() const { return path_; }
  /// Returns the path of a file or folder in it.
  boost::filesystem::path operator/(const char* name) const { return path_ / name; }

 private:
  boost::filesystem::path path_;
  system::FileLock lock_;
};

/// Creates and returns a new folder, "runs/TIME_PIPELINE", and makes "runs/latest" point to it.
/// Folders of the same second get a number.
boost::filesystem::path newRunFolder(const boost::filesystem::path& runs,
                                     const boost::filesystem::path& pipeline);

}  // namespace libvarrow::host
