#include <execinfo.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <cstring>
#include <ctime>

#include "crash_system.h"
#include "libvarrow/backtrace/BackTrace.h"

namespace libvarrow {

namespace {

constexpr unsigned kWatchdogSeconds = 4;
constexpr std::size_t kStackBytes = 256UL * 1024;  // naming frames reads debug information
constexpr int kMaxFrames = 128;

std::atomic<bool> watchdogStarted{false};
std::atomic<std::time_t> watchdogEnd{0};

std::time_t secondsNow() {
  std::timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec;
}

bool isMainThread() {
  return ::syscall(SYS_gettid) == ::getpid();
}

/// The alternate signal stack of one thread, while that lives.
class CrashStack {
 public:
  CrashStack() {
    // A larger one is somebody's choice.
    if (::sigaltstack(nullptr, &before_) != 0) return;
    if ((before_.ss_flags & SS_DISABLE) == 0 && before_.ss_size >= kStackBytes) return;
    void* memory =
        ::mmap(nullptr, kStackBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) return;
    stack_t own{};
    own.ss_sp = memory;
    own.ss_size = kStackBytes;
    if (::sigaltstack(&own, nullptr) == 0) {
      memory_ = memory;
    } else {
      ::munmap(memory, kStackBytes);
    }
  }
  ~CrashStack() {
    if (memory_ == nullptr || isMainThread()) return;  // whose static objects go after this
    if (::sigaltstack(&before_, nullptr) != 0) return;
    ::munmap(memory_, kStackBytes);
  }
  CrashStack(const CrashStack&) = delete;
  CrashStack& operator=(const CrashStack&) = delete;

 private:
  stack_t before_{};
  void* memory_ = nullptr;
};

void unblock(int sig) {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, sig);
  ::pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

void handle(int sig, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_ONSTACK | SA_RESTART;
  sigemptyset(&action.sa_mask);
  ::sigaction(sig, &action, nullptr);
}

void endHungProcess(int) {
  const std::time_t left = watchdogEnd - secondsNow();
  if (left > 0) {  // an alarm of the host's
    ::alarm(static_cast<unsigned>(left));
    return;
  }
  crash::say("the crash handler hangs: ending the process\n");
  handle(SIGABRT, SIG_DFL);
  unblock(SIGABRT);
  ::raise(SIGABRT);
}

}  // namespace

void useCrashStack() {
  static thread_local const CrashStack stack;
}

namespace crash {

void installSignalHandler(void (*handler)(int)) {
  // The first call loads the unwinder, which allocates.
  std::array<void*, 1> frame;
  ::backtrace(frame.data(), 1);
  handle(SIGSEGV, handler);
  handle(SIGABRT, handler);
  // A file that meets the limit on sizes is an error while writing, not the end of the process. Not
  // ignored, which programs that the host executes would inherit.
  struct sigaction before {};
  if (::sigaction(SIGXFSZ, nullptr, &before) == 0 && before.sa_handler == SIG_DFL) {
    handle(SIGXFSZ, [](int) {});
  }
}

void startWatchdog() {
  if (watchdogStarted.exchange(true)) return;
  watchdogEnd = secondsNow() + kWatchdogSeconds;
  handle(SIGALRM, endHungProcess);
  unblock(SIGALRM);
  ::alarm(kWatchdogSeconds);
}

void printFrames() {
  std::array<void*, kMaxFrames> frames;
  ::backtrace_symbols_fd(frames.data(), ::backtrace(frames.data(), kMaxFrames), STDERR_FILENO);
}

void say(const char* text) {
  if (::write(STDERR_FILENO, text, std::strlen(text)) < 0) return;  // there is nobody left to tell
}

long threadNumber() {
  return ::syscall(SYS_gettid);
}

void rest() {
  constexpr std::timespec kMillisecond{0, 1000000};
  ::nanosleep(&kMillisecond, nullptr);
}

}  // namespace crash

}  // namespace libvarrow
