// A host that crashes in the way that its argument names.
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <iostream>
#include <map>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "libvarrow/backtrace/BackTrace.h"
#include "libvarrow/log/log.h"
#include "libvarrow/statistics/StatisticsContainer.h"
#include "libvarrow/statistics/TimedStatDumper.h"

namespace {

volatile int zero = 0;

__attribute__((noinline)) void fault() {
  volatile int* volatile nowhere = nullptr;
  *nowhere = 1;  // NOLINT(clang-analyzer-core.NullDereference)
}

__attribute__((noinline)) int overflow(int depth) {
  volatile char frame[256];  // small, so as not to leap over the guard page
  frame[0] = static_cast<char>(depth);
  return zero == 0 ? overflow(depth + 1) + frame[0] : depth;
}

// A number, or the address of data.
__attribute__((noinline)) void callNoCode(std::uintptr_t address) {
  void (*volatile function)() = reinterpret_cast<void (*)()>(address);
  function();
  zero = 0;  // what is called returns to this function
}

__attribute__((noinline)) void loseTheStack() {
#if defined(__x86_64__)
  asm volatile("mov $0x10, %%rsp\n push $0" ::: "memory");
#elif defined(__aarch64__)
  asm volatile("mov sp, %0\n str xzr, [sp]" ::"r"(0x10L) : "memory");
#endif
}

__attribute__((noinline)) void overwriteReturnAddress() {
  void* volatile* frame = static_cast<void**>(__builtin_frame_address(0));
  for (int i = 0; i < 3; ++i) frame[i] = reinterpret_cast<void*>(0x1234567);
}

void faultInThreeThreads() {
  std::atomic<int> ready{0};
  std::vector<std::thread> threads;
  threads.reserve(3);
  for (int i = 0; i < 3; ++i) {
    threads.emplace_back([&ready] {
      ++ready;
      while (ready < 3) continue;
      fault();
    });
  }
  for (std::thread& thread : threads) thread.join();
}

struct Endless : libvarrow::CommonStatistics {
  Json::Value toJsonValue4Bind() const override { return overflow(0); }
};

void overflowInTimer() {
  ::setenv("LIBVARROW_TIMED_STAT_DUMP", "1", 1);
  libvarrow::StatisticsContainer statistics("run");
  statistics.addStat("endless", new Endless);
  libvarrow::TimedStatDumper dumper(&statistics, "never.json");
  dumper.restart(1);
  for (;;) ::pause();
}

// As the last static objects go, after what was of the main thread.
void overflowAtExit() {
  std::atexit([] { overflow(0); });
}

// Alarms of the host come all the time, and count for no hanging handler.
void faultUnderAlarms() {
  std::signal(SIGALRM, [](int) {});
  sigevent event{};
  event.sigev_notify = SIGEV_SIGNAL;
  event.sigev_signo = SIGALRM;
  timer_t timer{};
  ::timer_create(CLOCK_MONOTONIC, &event, &timer);
  const itimerspec often{{0, 1000000}, {0, 1000000}};
  ::timer_settime(timer, 0, &often, nullptr);
  fault();
}

// A program that the host executes is ended by the limit on files as ever.
void meetTheLimitInAnother() {
  const rlimit none{0, 0};
  ::setrlimit(RLIMIT_FSIZE, &none);
  ::dup2(::fileno(std::tmpfile()), STDOUT_FILENO);
  ::execl("/bin/sh", "sh", "-c", "echo text", nullptr);
}

// The allocator detects it while it holds its lock, so the next allocation hangs.
void freeTwice() {
  void* volatile block = std::malloc(2000);
  void* volatile behind = std::malloc(2000);  // keeps it from joining the free memory
  std::free(block);
  std::free(block);  // NOLINT(clang-analyzer-unix.Malloc)
  std::free(behind);
}

// Replaces what the log writes to, as an appender of a host may.
class BadLog : public std::streambuf {
 public:
  explicit BadLog(std::function<void()> write) : write_(std::move(write)) {
    std::cerr.exceptions(std::ios::badbit);
  }

 private:
  int_type overflow(int_type) override {
    write_();
    throw std::runtime_error("the log fails");
  }

  std::function<void()> write_;
};

void faultWithABadLog(const std::function<void()>& write) {
  BadLog log(write);
  std::cerr.rdbuf(&log);
  fault();
}

void waitForEver() {
  for (;;) std::this_thread::sleep_for(std::chrono::seconds(1));
}

// Longer than a handler that waits may take.
void work() {
  static const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(6);
  while (std::chrono::steady_clock::now() < end) continue;
}

void (*installedBefore)(int) = nullptr;

// A host's handler that says a word of its own and goes on to the one that it found.
void faultUnderAnotherHandler() {
  installedBefore = std::signal(SIGSEGV, [](int sig) { installedBefore(sig); });
  fault();
}

}  // namespace

int main(int argc, char** argv) {
  const std::map<std::string, std::function<void()>> crashes = {
      {"segfault", fault},
      {"chained", faultUnderAnotherHandler},
      {"no-code", [] { callNoCode(0x10); }},
      {"data-for-code", [] { callNoCode(reinterpret_cast<std::uintptr_t>(&zero)); }},
      {"lost-stack", loseTheStack},
      {"smashed-stack", overwriteReturnAddress},
      {"uncaught", [] { throw std::runtime_error("nobody catches this"); }},
      {"overflow-in-timer", overflowInTimer},
      {"overflow-at-exit", overflowAtExit},
      {"alarms", faultUnderAlarms},
      {"limit-in-another", meetTheLimitInAnother},
      {"free-twice", freeTwice},
      {"three-threads", faultInThreeThreads},
      {"throwing-log", [] { faultWithABadLog([] {}); }},
      {"slow-log", [] { faultWithABadLog(work); }},
      {"hanging-log", [] { faultWithABadLog(waitForEver); }}};
  libvarrow::init_error_handler(true);
  crashes.at(argc > 1 ? argv[1] : "none")();
}
