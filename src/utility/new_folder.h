// Opening files whose folder may be missing.
#pragma once

#include <string>

namespace libvarrow::utility {

/// Creates the folder of `path` if the calling thread's last folder was missing and was another
/// one: a run into a new folder creates one for each step. Leaves errors to the opening of the
/// file.
void createProbablyMissingFolder(const std::string& path);

/// Creates the missing folder of `path`. Logs errors.
void createMissingFolder(const std::string& path);

/// Returns the result of `open`, which opens the file at `path` and returns whether it did.
/// Creates the file's folder if it is missing. The folder usually exists, or is the next one of
/// many new ones: neither case costs a system call more than necessary.
template <class Open>
bool openInFolder(const std::string& path, Open open) {
  createProbablyMissingFolder(path);
  if (open()) return true;
  createMissingFolder(path);
  return open();
}

}  // namespace libvarrow::utility
