// Reading and writing of whole text files.
#pragma once

#include <string>

namespace libvarrow::base {

/// Reads the file at `path` into `text`. Returns false when it cannot be opened or read; a
/// directory opens on some systems, but cannot be read.
bool readTextFile(const std::string& path, std::string& text);

enum class TextWritten { NotOpened, Partly, Whole };

/// Writes `text`, in text mode, and replaces the content of the file at `path`.
TextWritten writeTextFile(const std::string& path, const std::string& text);

}  // namespace libvarrow::base
