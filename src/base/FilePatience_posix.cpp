#include "base/FilePatience.h"

namespace libvarrow::base {

bool FilePatience::mayBeOpen(const boost::system::error_code& /*error*/) noexcept {
  return false;  // open files are removed and renamed like others
}

}  // namespace libvarrow::base
