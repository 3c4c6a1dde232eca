#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "backtrace/crash_ways.h"
#include "libvarrow/statistics/StatisticsContainer.h"
#include "libvarrow/statistics/TimedStatDumper.h"

namespace {

volatile int zero = 0;

__attribute__((noinline)) void loseTheStack() {
#if defined(__x86_64__)
  asm volatile("mov $0x10, %%rsp\n push $0" ::: "memory");
#elif defined(__aarch64__)
  asm volatile("mov sp, %0\n str xzr, [sp]" ::"r"(0x10L) : "memory");
#endif
}

__attribute__((noinline)) int overflow(int depth) {
  volatile char frame[256];  // smaller than the guard page
  frame[0] = static_cast<char>(depth);
  return zero == 0 ? overflow(depth + 1) + frame[0] : depth;
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

}  // namespace

CrashWays systemCrashWays() {
  return {{"lost-stack", loseTheStack},
          {"overflow-in-timer", overflowInTimer},
          {"overflow-at-exit", overflowAtExit},
          {"alarms", faultUnderAlarms},
          {"limit-in-another", meetTheLimitInAnother},
          {"free-twice", freeTwice}};
}
