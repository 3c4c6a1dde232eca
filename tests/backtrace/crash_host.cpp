// A host that crashes in the way given by its argument.
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
  volatile char frame[256];  // smaller than the guard page
  frame[0] = static_cast<char>(depth);
  return zero == 0 ? overflow(depth + 1) + frame[0] : depth;
}

__attribute__((noinline)) void callNoCode() {
  void (*volatile function)() = reinterpret_cast<void (*)()>(std::uintptr_t{0x10});
  function();
  zero = 0;  // so that the call returns to this function
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

// Runs after the destruction of the thread-local objects of the main thread.
void overflowAtExit() {
  std::atexit([] { overflow(0); });
}

// Frequent alarms of the host do not make the handler seem to hang.
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

// The limit on file sizes still ends a program that the host executes.
void meetTheLimitInAnother() {
  const rlimit none{0, 0};
  ::setrlimit(RLIMIT_FSIZE, &none);
  ::dup2(::fileno(std::tmpfile()), STDOUT_FILENO);
  ::execl("/bin/sh", "sh", "-c", "echo text", nullptr);
}

// The allocator detects it while it holds its lock, so the next allocation hangs.
void freeTwice() {
  void* volatile block = std::malloc(2000);
  void* volatile next = std::malloc(2000);  // keeps the block from joining the free memory
  std::free(block);
  std::free(block);  // NOLINT(clang-analyzer-unix.Malloc)
  std::free(next);
}

// Works for longer than an idle handler may wait, then throws, as an appender of a host may.
class SlowLog : public std::streambuf {
  int_type overflow(int_type) override {
    static const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(6);
    while (std::chrono::steady_clock::now() < end) continue;
    throw std::runtime_error("the log fails");
  }
};

void faultWithASlowLog() {
  SlowLog log;
  std::cerr.exceptions(std::ios::badbit);
  std::cerr.rdbuf(&log);
  fault();
}

void (*installedBefore)(int) = nullptr;

// A handler of the host that calls the one installed before it.
void faultUnderAnotherHandler() {
  installedBefore = std::signal(SIGSEGV, [](int sig) { installedBefore(sig); });
  fault();
}

}  // namespace

int main(int argc, char** argv) {
  const std::map<std::string, std::function<void()>> crashes = {
      {"segfault", fault},
      {"chained", faultUnderAnotherHandler},
      {"no-code", callNoCode},
      {"lost-stack", loseTheStack},
      {"smashed-stack", overwriteReturnAddress},
      {"overflow-in-timer", overflowInTimer},
      {"overflow-at-exit", overflowAtExit},
      {"alarms", faultUnderAlarms},
      {"limit-in-another", meetTheLimitInAnother},
      {"free-twice", freeTwice},
      {"three-threads", faultInThreeThreads},
      {"slow-log", faultWithASlowLog}};
  libvarrow::init_error_handler(true);
  crashes.at(argc > 1 ? argv[1] : "none")();
}
