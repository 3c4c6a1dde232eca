#include <cstdio>

#include "base/text_file.h"

namespace libvarrow::base {

TextWritten writeTextFile(const std::string& path, const std::string& text) {
  // Avoids a stream, because constructing one costs as much as opening the file.
  std::FILE* file = std::fopen(path.c_str(), "wN");  // N: children do not inherit it
  if (file == nullptr) return TextWritten::NotOpened;
  std::setvbuf(file, nullptr, _IONBF, 0);  // the text is one block already
  const bool isWritten = std::fwrite(text.data(), 1, text.size(), file) == text.size();
  const bool isClosed = std::fclose(file) == 0;
  return isWritten && isClosed ? TextWritten::Whole : TextWritten::Partly;
}

}  // namespace libvarrow::base
