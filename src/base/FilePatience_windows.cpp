#include <windows.h>

#include "base/FilePatience.h"

namespace libvarrow::base {

namespace {

constexpr int kMostPauses = 12;  // 1, 2, 4, ... 2048 ms

bool mayBeOpen(const boost::system::error_code& error) noexcept {
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

}  // namespace

bool FilePatience::isWorthATry(const boost::system::error_code& error) noexcept {
  if (!mayBeOpen(error) || pauses_ == kMostPauses) return false;
  Sleep(DWORD{1} << pauses_++);
  return true;
}

}  // namespace libvarrow::base
