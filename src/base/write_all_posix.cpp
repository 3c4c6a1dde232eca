#include "base/write_all_posix.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>

namespace libvarrow::base {

bool writeAll(int descriptor, std::string_view text) noexcept {
  while (!text.empty()) {
    const ssize_t written = ::write(descriptor, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0 && errno == EAGAIN) {  // a pipe that does not block is full
      pollfd full{descriptor, POLLOUT, 0};
      ::poll(&full, 1, -1);
      continue;
    }
    if (written < 0) return false;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

}  // namespace libvarrow::base
