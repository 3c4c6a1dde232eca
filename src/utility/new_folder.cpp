#include "utility/new_folder.h"

#include <boost/filesystem/operations.hpp>
#include <functional>
#include <string_view>

#include "base/thread_local_object.h"
#include "libvarrow/utility/DirCreator.h"

namespace libvarrow::utility {

namespace {

struct LastFolder {
  std::string name;
  bool wasMissing = false;
};

// A template would have an object for each of its instances.
void withLastFolder(const std::function<void(LastFolder&)>& use) {
  base::withThreadLocal([] { return LastFolder{}; }, use);
}

std::string_view folderOf(std::string_view path) {
  return path.substr(0, path.rfind('/') + 1);
}

}  // namespace

void createProbablyMissingFolder(const std::string& path) {
  withLastFolder([&](LastFolder& last) {
    if (!last.wasMissing || folderOf(path) == last.name) return;
    last.name = folderOf(path);
    boost::system::error_code ignored;
    last.wasMissing = boost::filesystem::create_directory(last.name, ignored);
  });
}

void createMissingFolder(const std::string& path) {
  DirCreator(path, false);
  withLastFolder([&](LastFolder& last) {
    last.name = folderOf(path);
    last.wasMissing = true;
  });
}

}  // namespace libvarrow::utility
