// A host that crashes in the way that its argument names.
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
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
  volatile char frame[256];  // small, so as not to leap over the guard page
  frame[0] = static_cast<char>(depth);
  return zero == 0 ? overflow(depth + 1) + frame[0] : depth;
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

void overflowInThread() {
  std::thread([] {
    libvarrow::useCrashStack();
    overflow(0);
  }).join();
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

void freeTwice() {
  void* volatile block = std::malloc(100);
  std::free(block);
  std::free(block);  // NOLINT(clang-analyzer-unix.Malloc)
}

// The allocator finds it while it holds its lock, so whoever allocates then hangs.
void spoilTheHeap() {
  volatile std::size_t bytes = 50000;  // what the compiler knows, it warns of
  volatile char* block = static_cast<char*>(std::malloc(bytes));
  for (std::size_t i = bytes; i < bytes + 64; ++i) block[i] = -1;
  void* volatile next = std::malloc(bytes);
  std::cout << next << std::endl;
}

// Stands where the log writes, as an appender of a host may.
class BadLog : public std::streambuf {
 public:
  explicit BadLog(bool hangs) : hangs_(hangs) { std::cerr.exceptions(std::ios::badbit); }

 private:
  int_type overflow(int_type) override {
    while (hangs_) std::this_thread::sleep_for(std::chrono::seconds(1));
    throw std::runtime_error("the log fails");
  }

  bool hangs_;
};

void faultWithABadLog(bool hangs) {
  BadLog log(hangs);
  std::cerr.rdbuf(&log);
  fault();
}

}  // namespace

int main(int argc, char** argv) {
  const std::map<std::string, std::function<void()>> crashes = {
      {"segfault", fault},
      {"abort", std::abort},
      {"uncaught", [] { throw std::runtime_error("nobody catches this"); }},
      {"overflow", [] { overflow(0); }},
      {"overflow-in-thread", overflowInThread},
      {"overflow-in-timer", overflowInTimer},
      {"overflow-at-exit", overflowAtExit},
      {"alarms", faultUnderAlarms},
      {"limit-in-another", meetTheLimitInAnother},
      {"divide", [] { std::cout << 5000 / zero; }},
      {"free-twice", freeTwice},
      {"spoilt-heap", [] { std::thread(spoilTheHeap).join(); }},
      {"three-threads", faultInThreeThreads},
      {"throwing-log", [] { faultWithABadLog(false); }},
      {"hanging-log", [] { faultWithABadLog(true); }}};
  libvarrow::init_error_handler(false);
  crashes.at(argc > 1 ? argv[1] : "none")();
}
