#include "libvarrow/stream/AutoCreateDirFileStream.h"

#include "libvarrow/utility/DirCreator.h"

namespace libvarrow {

AutoCreateDirFileStream::AutoCreateDirFileStream(const std::string& path) {
  constexpr std::ios_base::openmode kMode = std::ios_base::out | std::ios_base::trunc;
  open(path, kMode);
  if (is_open()) return;
  // The directory usually exists, so it is created only when the file cannot be opened.
  DirCreator(path, false);
  open(path, kMode);
}

}  // namespace libvarrow
