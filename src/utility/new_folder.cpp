#include "utility/new_folder.h"

#include <boost/filesystem/operations.hpp>
#include <functional>
#include <string_view>

namespace libvarrow::utility {

namespace {

// Has no destructor, for which a thread would allocate memory.
struct LastFolder {
  std::size_t hash;
  bool wasMissing;
};
thread_local LastFolder lastFolder{0, false};

std::string_view folderOf(std::string_view path) {
  return path.substr(0, path.rfind('/') + 1);
}

}  // namespace

void createProbablyMissingFolder(const std::string& path) noexcept {
  if (!lastFolder.wasMissing) return;
  const std::string_view folder = folderOf(path);
  const std::size_t hash = std::hash<std::string_view>()(folder);
  if (hash == lastFolder.hash) return;
  lastFolder = {hash, false};
  try {
    boost::system::error_code ignored;
    lastFolder.wasMissing = boost::filesystem::create_directory(std::string(folder), ignored);
  } catch (...) {  // no memory: the file may open without it
  }
}

void rememberFolder(const std::string& path, bool wasMissing) noexcept {
  lastFolder = {std::hash<std::string_view>()(folderOf(path)), wasMissing};
}

}  // namespace libvarrow::utility
