// Whole text files.
#pragma once

#include <string>

namespace cppbind {

/// Reads the file at `path` into `text`. False when it cannot be opened or read; a directory opens
/// on some systems, but cannot be read.
bool readTextFile(const std::string& path, std::string& text);

/// Writes `text`, in text mode, over what is in the file at `path`. False when that cannot be
/// opened; errors while writing are not reported.
bool writeTextFile(const std::string& path, const std::string& text);

}  // namespace cppbind
