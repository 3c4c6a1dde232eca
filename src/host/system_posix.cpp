#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <boost/filesystem/operations.hpp>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <stdexcept>

#include "host/system.h"

namespace libvarrow::host::system {

namespace {

namespace fs = boost::filesystem;

struct EndSignal {
  int number;
  const char* name;
};
constexpr std::array kEndSignals = {EndSignal{SIGINT, "SIGINT"}, EndSignal{SIGTERM, "SIGTERM"},
                                    EndSignal{SIGHUP, "SIGHUP"}};

std::atomic<int> receivedSignal{0};
static_assert(std::atomic<int>::is_always_lock_free, "async-signal-safe");
std::array<struct sigaction, kEndSignals.size()> actionsBefore{};

void setAction(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_ONSTACK | SA_RESTART;
  sigemptyset(&action.sa_mask);
  ::sigaction(signal, &action, nullptr);
}

void onSignal(int signal) {
  int none = 0;
  if (receivedSignal.compare_exchange_strong(none, signal)) return;
  setAction(signal, SIG_DFL);
  ::raise(signal);  // delivered when the handler returns
}

std::string reason() {
  return errorText(errno);
}

void flush() {
  std::cout << std::flush;
  std::fflush(stdout);
}

void pointStandardOutputAt(const char* file, int flags) {
  flush();
  const int opened = ::open(file, flags | O_CLOEXEC, 0666);
  if (opened < 0) throw std::runtime_error("cannot write " + std::string(file) + ": " + reason());
  ::dup2(opened, STDOUT_FILENO);
  ::close(opened);
}

// Writes the whole text, in several parts if necessary. Returns false and sets errno on failure.
bool writeAll(int descriptor, const std::string& text) noexcept {
  std::size_t done = 0;
  while (done < text.size()) {
    const ssize_t written = ::write(descriptor, text.data() + done, text.size() - done);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0 && errno == EAGAIN) {  // a pipe that does not block is full
      pollfd full{descriptor, POLLOUT, 0};
      ::poll(&full, 1, -1);
      continue;
    }
    if (written < 0) return false;
    done += static_cast<std::size_t>(written);
  }
  return true;
}

}  // namespace

EndSignals::EndSignals() {
  for (std::size_t i = 0; i < kEndSignals.size(); ++i) {
    ::sigaction(kEndSignals[i].number, nullptr, &actionsBefore[i]);
    if (actionsBefore[i].sa_handler != SIG_IGN) setAction(kEndSignals[i].number, onSignal);
  }
}

EndSignals::~EndSignals() {
  for (std::size_t i = 0; i < kEndSignals.size(); ++i) {
    ::sigaction(kEndSignals[i].number, &actionsBefore[i], nullptr);
  }
}

int EndSignals::received() noexcept {
  return receivedSignal;
}

const char* signalName(int signal) {
  for (const EndSignal& known : kEndSignals) {
    if (known.number == signal) return known.name;
  }
  return "a signal";
}

void endBy(int signal) {
  flush();
  setAction(signal, SIG_DFL);
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, signal);
  ::pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
  ::raise(signal);
  std::_Exit(128 + signal);  // as shells report it
}

const char* errorText(int error) {
#ifdef __GLIBC__
  const char* const text = ::strerrordesc_np(error);
  return text != nullptr ? text : "an unknown error";
#else
  return std::strerror(error);
#endif
}

void openStandardStreams() {
  for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
    // Reading from it or writing to it then fails, as with a closed descriptor.
    const int wrongDirection = descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY;
    if (::fcntl(descriptor, F_GETFD) < 0) ::open("/dev/null", wrongDirection);
  }
}

ResultStream::ResultStream() {
  flush();
  results_ = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  pointStandardOutputAt("/dev/null", O_WRONLY);
}

ResultStream::~ResultStream() {
  if (results_ >= 0) ::close(results_);
  try {
    pointStandardOutputAt("/dev/null", O_WRONLY);
  } catch (const std::exception&) {
    ::close(STDOUT_FILENO);
  }
}

void ResultStream::printToStandardError() {
  flush();
  ::dup2(STDERR_FILENO, STDOUT_FILENO);
}

void ResultStream::printTo(const fs::path& path) {
  pointStandardOutputAt(path.c_str(), O_WRONLY | O_CREAT | O_APPEND);
}

void ResultStream::write(const std::string& text) {
  if (!writeAll(results_, text)) {
    throw std::runtime_error("cannot write standard output: " + reason());
  }
}

void writeError(const std::string& text) noexcept {
  if (!writeAll(STDERR_FILENO, text)) return;  // this cannot be reported
}

std::size_t terminalColumns() {
  constexpr std::size_t kUsual = 80;  // for terminals that do not report their width
  if (::isatty(STDERR_FILENO) == 0) return 0;
  winsize size{};
  const bool isKnown = ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return isKnown ? size.ws_col : kUsual;
}

void pointAt(const fs::path& link, const std::string& name) {
  boost::system::error_code ignored;
  // A folder or a file of that name was not made by a run.
  if (fs::exists(fs::symlink_status(link, ignored)) && !fs::is_symlink(link, ignored)) return;
  const fs::path made = link.parent_path() / fs::unique_path(".latest-%%%%%%%%");
  fs::create_symlink(name, made, ignored);
  fs::rename(made, link, ignored);
  if (ignored) fs::remove(made, ignored);
}

FileLock::FileLock(const fs::path& file)
    : file_(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666)) {
  if (file_ < 0) {
    throw std::runtime_error("cannot write " + file.generic_string() + ": " + reason());
  }
  isHeld_ = ::flock(static_cast<int>(file_), LOCK_EX | LOCK_NB) == 0;
}

FileLock::~FileLock() {
  ::close(static_cast<int>(file_));
}

bool FileLock::isHeld() const {
  return isHeld_;
}

}  // namespace libvarrow::host::system
