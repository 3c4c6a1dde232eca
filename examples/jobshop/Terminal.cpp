#include "Terminal.h"

#if !defined(_WIN32)
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace jobshop {

#if defined(_WIN32)

std::size_t terminalColumns() {
  return 0;
}

#else

std::size_t terminalColumns() {
  constexpr std::size_t kUsual = 80;  // for terminals that do not report their width
  if (::isatty(STDERR_FILENO) == 0) return 0;
  winsize size{};
  const bool isKnown = ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return isKnown ? size.ws_col : kUsual;
}

#endif

}  // namespace jobshop
