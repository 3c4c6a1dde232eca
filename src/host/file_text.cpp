#include "host/file_text.h"

#include <array>
#include <boost/filesystem/operations.hpp>
#include <cerrno>
#include <fstream>

#include "host/system.h"

namespace libvarrow::host {

std::string readFile(const boost::filesystem::path& path, std::string& text) {
  boost::system::error_code ignored;
  if (boost::filesystem::is_directory(path, ignored)) return "it is a folder";
  text.clear();
  errno = 0;
  std::ifstream file(path.string(), std::ios::binary);
  std::array<char, 65536> block;  // not initialised, as most files are smaller
  while (file.read(block.data(), block.size()) || file.gcount() > 0) {
    text.append(block.data(), static_cast<std::size_t>(file.gcount()));
  }
  return file.is_open() && !file.bad() ? "" : system::errorText(errno);
}

}  // namespace libvarrow::host
