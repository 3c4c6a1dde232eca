#include "libvarrow/utility/DirCreator.h"

#include <boost/filesystem/operations.hpp>
#include <exception>

#include "libvarrow/log/log.h"

namespace libvarrow {

namespace {

// The spelling "floder" is kept: scripts search for it.
void logFailure(const std::string& path, bool pathIsFolder) {
  LIBVARROW_LOG_ERROR("path:%s", path.c_str());
  LIBVARROW_LOG_ERROR("path_is_floder: %d", pathIsFolder ? 1 : 0);
}

}  // namespace

DirCreator::DirCreator(const std::string& path, bool pathIsFolder) {
  try {
    path_ = path;
    const boost::filesystem::path directory = pathIsFolder ? path_ : path_.parent_path();
    // A bare file name has an empty parent: the current directory, which exists.
    if (directory.empty()) return;
    // Usually only the last directory is missing: one system call creates it.
    boost::system::error_code error;
    boost::filesystem::create_directory(directory, error);
    if (error && !boost::filesystem::exists(directory)) {
      boost::filesystem::create_directories(directory);
    }
  } catch (const std::exception& error) {
    logFailure(path, pathIsFolder);
    LIBVARROW_LOG_ERROR("exception:%s", error.what());
  } catch (...) {
    logFailure(path, pathIsFolder);
  }
}

}  // namespace libvarrow
