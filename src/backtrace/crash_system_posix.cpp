#include <poll.h>
#include <pthread.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <ucontext.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "backtrace/crash_signals.h"
#include "backtrace/crash_system.h"
#include "backtrace/crash_system_posix.h"
#include "backtrace/last_line.h"
#include "libvarrow/backtrace/BackTrace.h"

namespace libvarrow {

namespace {

constexpr std::int64_t kSecondNs = 1'000'000'000;
constexpr std::int64_t kLongestIdleNs = 4 * kSecondNs;
constexpr std::int64_t kLongestNs = 60 * kSecondNs;
// The limit exceeds the processor time that a waiting handler uses in a second; a working handler
// exceeds the limit, even on a busy machine.
constexpr std::int64_t kWorkNs = 5'000'000;
constexpr std::size_t kStackBytes = 256UL * 1024;  // naming frames reads debug information

void (*reportCrash)(int, const void*) = nullptr;

std::atomic<bool> watchdogStarted{false};
std::atomic<std::int64_t> nextCheckNs{0};
std::atomic<std::int64_t> idleSinceNs{0};
std::atomic<std::int64_t> watchdogEndNs{0};
std::atomic<clockid_t> handlersClock{};
std::atomic<std::int64_t> handlersWorkNs{0};

std::int64_t nanoseconds(clockid_t clock) {
  std::timespec now{};
  ::clock_gettime(clock, &now);
  return now.tv_sec * kSecondNs + now.tv_nsec;
}

bool isMainThread() {
  return ::syscall(SYS_gettid) == ::getpid();
}

/// RAII guard: an alternate signal stack for its thread.
class CrashStack {
 public:
  CrashStack() {
    // A stack that is already large enough is the host's choice.
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
    if (memory_ == nullptr || isMainThread()) return;  // its static objects are destroyed later
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
  const struct sigaction action = crash::actionOf(handler);
  ::sigaction(sig, &action, nullptr);
}

// Returns whether the thread that handles the crash has worked since the last call.
bool handlerWorked() {
  const std::int64_t work = nanoseconds(handlersClock);
  return work - handlersWorkNs.exchange(work) >= kWorkNs;
}

void checkHandler(int) {
  const std::int64_t now = nanoseconds(CLOCK_MONOTONIC);
  if (now >= nextCheckNs) {  // else the alarm is the host's
    nextCheckNs = now + kSecondNs;
    if (handlerWorked()) idleSinceNs = now;
  }
  if (now < watchdogEndNs && now - idleSinceNs < kLongestIdleNs) {
    ::alarm(1);
    return;
  }
  handle(SIGABRT, SIG_DFL);
  unblock(SIGABRT);
  // Standard error may be the pipe on which the handler hangs.
  pollfd errors{STDERR_FILENO, POLLOUT, 0};
  if (::poll(&errors, 1, 0) > 0) {
    crash::printText("the crash handler hangs: ending the process\n");
    crash::printLastLine();
  }
  ::raise(SIGABRT);
}

// A host's handler that was installed later may call this one with the signal alone.
void onSignal(int sig, siginfo_t* info, void* context) {
  if (crash::isDeliveryOf(sig, info, context)) {
    crash::undoCallWithoutCode(sig, *info, *static_cast<ucontext_t*>(context));
  } else {
    context = nullptr;
  }
  reportCrash(sig, context);
  std::abort();  // keeps this frame on the stack
}

void handleCrash(int sig) {
  struct sigaction action = crash::actionOf(nullptr);
  action.sa_sigaction = onSignal;
  action.sa_flags |= SA_SIGINFO;
  ::sigaction(sig, &action, nullptr);
}

}  // namespace

void useCrashStack() {
  static thread_local const CrashStack stack;
}

namespace crash {

struct sigaction actionOf(void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_ONSTACK | SA_RESTART;
  sigemptyset(&action.sa_mask);
  return action;
}

void installSignalHandler(void (*report)(int sig, const void* place)) {
  reportCrash = report;
  for (const CrashSignal& signal : kCrashSignals) handleCrash(signal.number);
  // A write beyond the file size limit fails instead of ending the process. The signal is not
  // ignored, because programs that the host executes would inherit that.
  struct sigaction before {};
  if (::sigaction(SIGXFSZ, nullptr, &before) == 0 && before.sa_handler == SIG_DFL) {
    handle(SIGXFSZ, [](int) {});
  }
}

void resetSignalHandler(int sig) {
  std::signal(sig, SIG_DFL);
}

void abortAfter(int) {
  std::abort();
}

void startWatchdog() {
  if (watchdogStarted.exchange(true)) return;
  const std::int64_t now = nanoseconds(CLOCK_MONOTONIC);
  nextCheckNs = now + kSecondNs;
  idleSinceNs = now;
  watchdogEndNs = now + kLongestNs;
  clockid_t clock{};
  ::pthread_getcpuclockid(::pthread_self(), &clock);
  handlersClock = clock;
  handlersWorkNs = nanoseconds(clock);
  handle(SIGALRM, checkHandler);
  unblock(SIGALRM);
  ::alarm(1);
}

void printText(const char* text) {
  if (::write(STDERR_FILENO, text, std::strlen(text)) < 0) return;  // this cannot be reported
}

long threadNumber() {
  return ::syscall(SYS_gettid);
}

void sleepBriefly() {
  constexpr std::timespec kMoment{0, 20'000'000};
  ::nanosleep(&kMoment, nullptr);
}

}  // namespace crash

}  // namespace libvarrow
