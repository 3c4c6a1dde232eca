// Opening files whose folder may be missing.
#pragma once

#include <string>

#include "libvarrow/utility/DirCreator.h"

namespace libvarrow::utility {

/// Creates the folder of `path` if the calling thread's last folder had to be created and was
/// another one: a run into a new folder creates one for each step. Reports no error: the opening of
/// the file does.
void createProbablyMissingFolder(const std::string& path) noexcept;

/// Tells the function above whether the folder of `path` had to be created.
void rememberFolder(const std::string& path, bool wasMissing) noexcept;

/// Returns the result of `open`, which opens the file at `path` and returns whether it did.
/// Creates the file's folder if it is missing, and logs if that fails. In folders that exist, and
/// in the second and further of several new ones, no system call is in vain.
template <class Open>
bool openInFolder(const std::string& path, Open open) {
  createProbablyMissingFolder(path);
  if (open()) return true;
  DirCreator(path, false);
  const bool isOpen = open();
  rememberFolder(path, isOpen);
  return isOpen;
}

}  // namespace libvarrow::utility
