#include "TextFile.h"

#include <array>
#include <fstream>

namespace cppbind {

bool readTextFile(const std::string& path, std::string& text) {
  std::ifstream file(path);
  if (!file.is_open()) return false;
  text.clear();
  std::array<char, 16384> block;
  while (file.read(block.data(), block.size()) || file.gcount() > 0) {
    text.append(block.data(), static_cast<std::size_t>(file.gcount()));
  }
  return !file.bad();
}

}  // namespace cppbind
