#include "base/text_file.h"

#include <array>
#include <fstream>

namespace libvarrow::base {

bool readTextFile(const std::string& path, std::string& text) {
  std::ifstream file(path);
  if (!file.is_open()) return false;
  text.clear();
  std::array<char, 65536> block;
  while (file.read(block.data(), block.size()) || file.gcount() > 0) {
    text.append(block.data(), static_cast<std::size_t>(file.gcount()));
  }
  return !file.bad();
}

}  // namespace libvarrow::base
