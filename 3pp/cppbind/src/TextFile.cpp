#include "TextFile.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <memory>

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

bool writeTextFile(const std::string& path, const std::string& text) {
  // Not a stream: setting one up costs as much as opening the file.
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "w"),
                                                             std::fclose);
  if (!file) return false;
  std::setvbuf(file.get(), nullptr, _IONBF, 0);  // the text is one block already
  std::fwrite(text.data(), 1, text.size(), file.get());
  return true;
}

}  // namespace cppbind
