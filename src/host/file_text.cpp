#include "host/file_text.h"

#include <array>
#include <boost/filesystem/operations.hpp>
#include <cerrno>
#include <cstdint>
#include <fstream>

#include "host/system.h"

namespace libvarrow::host {

namespace fs = boost::filesystem;

std::string readFile(const fs::path& path, std::string& text) {
  boost::system::error_code error;
  if (fs::is_directory(path, error)) return "it is a folder";
  text.clear();
  const std::uintmax_t size = fs::file_size(path, error);
  if (!error) text.reserve(size);
  errno = 0;
  std::ifstream file(path.string(), std::ios::binary);
  std::array<char, 65536> block;  // not initialised, as most files are smaller
  while (file.read(block.data(), block.size()) || file.gcount() > 0) {
    text.append(block.data(), static_cast<std::size_t>(file.gcount()));
  }
  return file.is_open() && !file.bad() ? "" : system::errorText(errno);
}

std::string readFileOfRun(const fs::path& path, std::string& text) {
  boost::system::error_code ignored;
  const fs::file_status status = fs::symlink_status(path, ignored);
  return fs::is_other(status) || fs::is_symlink(status) ? "it is a link, a pipe or a device"
                                                        : readFile(path, text);
}

}  // namespace libvarrow::host
