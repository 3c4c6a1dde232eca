#include <windows.h>

#include "base/FilePatience.h"

namespace libvarrow::base {

bool FilePatience::mayBeOpen(const boost::system::error_code& error) noexcept {
  switch (error.value()) {
    case ERROR_ACCESS_DENIED:  // a rename onto an open file; a removal that waits for its closing
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE:
      return true;
    default:
      return false;
  }
}

}  // namespace libvarrow::base
