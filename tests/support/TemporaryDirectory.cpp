#include "support/TemporaryDirectory.h"

#include <boost/filesystem/operations.hpp>
#include <fstream>
#include <stdexcept>

namespace test_support {

namespace fs = boost::filesystem;

TemporaryDirectory::TemporaryDirectory()
    : path_(fs::canonical(fs::temp_directory_path()) / fs::unique_path("varrow-%%%%-%%%%-%%%%")),
      before_(fs::current_path()) {
  fs::create_directories(path_);
  fs::current_path(path_);
}

TemporaryDirectory::~TemporaryDirectory() {
  boost::system::error_code ignored;
  fs::current_path(before_, ignored);
  fs::remove_all(path_, ignored);
}

std::string readFile(const fs::path& path) {
  std::ifstream file(path.string());
  if (!file) throw std::runtime_error("no file " + path.string());
  return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const fs::path& path, const std::string& text) {
  if (path.has_parent_path()) fs::create_directories(path.parent_path());
  std::ofstream(path.string()) << text;
}

}  // namespace test_support
