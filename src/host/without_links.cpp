#include "host/without_links.h"

#include <boost/filesystem/operations.hpp>

namespace libvarrow::host {

namespace fs = boost::filesystem;

fs::path withoutLinks(const fs::path& path) {
  boost::system::error_code error;
  for (fs::path part = path; !part.empty(); part = part.parent_path()) {
    if (!fs::is_symlink(part, error)) continue;
    const fs::path real = fs::canonical(path, error);
    return error ? path : real;
  }
  return path;
}

}  // namespace libvarrow::host
