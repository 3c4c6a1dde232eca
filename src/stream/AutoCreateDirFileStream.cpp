#include "libvarrow/stream/AutoCreateDirFileStream.h"

#include "utility/new_folder.h"

namespace libvarrow {

AutoCreateDirFileStream::AutoCreateDirFileStream(const std::string& path) {
  constexpr std::ios_base::openmode kMode = std::ios_base::out | std::ios_base::trunc;
  utility::openInFolder(path, [&] {
    open(path, kMode);
    return is_open();
  });
}

}  // namespace libvarrow
