#include "libvarrow/stream/AutoCreateDirFileStream.h"

#include "libvarrow/utility/DirCreator.h"

namespace libvarrow {

AutoCreateDirFileStream::AutoCreateDirFileStream(const std::string& path) {
  DirCreator(path, false);
  open(path, std::ios_base::out | std::ios_base::trunc);
}

}  // namespace libvarrow
