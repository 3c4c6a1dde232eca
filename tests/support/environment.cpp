#include "support/environment.h"

#include <dlfcn.h>
#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include <boost/filesystem/operations.hpp>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <iterator>
#include <stdexcept>

namespace test_support {

void setVariable(const char* name, const std::string& value) {
  ::setenv(name, value.c_str(), 1);
}

void unsetVariable(const char* name) {
  ::unsetenv(name);
}

void readTimeZone() {
  ::tzset();
}

bool isLibraryLoaded(const std::string& path) {
  void* const library = ::dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD);
  if (library != nullptr) ::dlclose(library);
  return library != nullptr;
}

bool framesHaveNames() {
  return true;
}

void endQuickly() {
  std::quick_exit(0);
}

void killThisProcess() {
  std::raise(SIGKILL);
  std::abort();
}

std::chrono::nanoseconds processorTime() {
  return std::chrono::microseconds(std::clock());  // POSIX: there are 1000000 ticks in a second
}

bool haveSameHandler(int one, int other) {
  struct sigaction first {};
  struct sigaction second {};
  ::sigaction(one, nullptr, &first);
  ::sigaction(other, nullptr, &second);
  return first.sa_sigaction == second.sa_sigaction;
}

std::string signalName(int sig) {
  return ::sigabbrev_np(sig);
}

std::string pathOfText(const std::string& text) {
  int pipe[2] = {};
  if (::pipe(pipe) != 0 || ::write(pipe[1], text.data(), text.size()) < 0)
    throw std::runtime_error("no pipe");
  ::close(pipe[1]);
  return "/dev/fd/" + std::to_string(pipe[0]);
}

std::size_t heapBytes() {
  return ::mallinfo2().uordblks;
}

std::size_t openObjects() {
  using Entries = boost::filesystem::directory_iterator;
  return static_cast<std::size_t>(std::distance(Entries("/proc/self/fd"), Entries()));
}

void limitProcessorTime(unsigned seconds) {
  const rlimit limit{seconds, seconds + 1};
  ::setrlimit(RLIMIT_CPU, &limit);
}

}  // namespace test_support
