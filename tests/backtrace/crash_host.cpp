// A host that crashes in the way given by its argument.
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <iostream>
#include <stdexcept>
#include <streambuf>
#include <thread>
#include <vector>

#include "backtrace/crash_ways.h"
#include "libvarrow/backtrace/BackTrace.h"

namespace {

volatile int zero = 0;

}  // namespace

__attribute__((noinline)) void fault() {
  volatile int* volatile nowhere = nullptr;
  *nowhere = 1;  // NOLINT(clang-analyzer-core.NullDereference)
}

namespace {

__attribute__((noinline)) void callNoCode() {
  void (*volatile function)() = reinterpret_cast<void (*)()>(std::uintptr_t{0x10});
  function();
  zero = 0;  // so that the call returns to this function
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
  CrashWays crashes = systemCrashWays();
  crashes.insert({{"segfault", fault},
                  {"chained", faultUnderAnotherHandler},
                  {"no-code", callNoCode},
                  {"smashed-stack", overwriteReturnAddress},
                  {"three-threads", faultInThreeThreads},
                  {"slow-log", faultWithASlowLog}});
  libvarrow::init_error_handler(true);
  crashes.at(argc > 1 ? argv[1] : "none")();
}
