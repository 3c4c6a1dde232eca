#include "libvarrow/backtrace/BackTrace.h"

#include <atomic>
#include <boost/config.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/filesystem/operations.hpp>
#include <boost/stacktrace.hpp>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

#include "crash_system.h"
#include "libvarrow/log/log.h"
#include "raw_stack.h"

namespace libvarrow {

namespace {

constexpr const char* kDumpDirectory = "coredump";
constexpr std::size_t kMaxFrames = 128;
// currentStack(), sig_handler() and the frame through which the system calls a handler.
constexpr std::size_t kSkippedFrames = 3;

std::atomic<bool> initialised{false};
std::atomic<bool> dumpFileWanted{false};

class BackTrace {
 public:
  BackTrace() {
    std::cout << "init backtrace" << std::endl;
    useCrashStack();
    crash::installSignalHandler(sig_handler);
  }
  ~BackTrace() { std::cout << "deinit backtrack" << std::endl; }
  BackTrace(const BackTrace&) = delete;
  BackTrace& operator=(const BackTrace&) = delete;
};

// Not inlined, so that the frames left out are always the same three.
BOOST_NOINLINE boost::stacktrace::stacktrace currentStack() {
  return {kSkippedFrames, kMaxFrames};
}

// Nothing may be thrown into what was interrupted, and what fails must not cost the next step.
template <typename Step>
void attempt(const Step& step) {
  try {
    step();
  } catch (const std::exception& error) {
    crash::say("the crash handler failed: ");
    crash::say(error.what());
    crash::say("\n");
  } catch (...) {
    crash::say("the crash handler failed\n");
  }
}

std::string dumpFileName() {
  const auto now = boost::posix_time::second_clock::local_time();
  const auto day = now.date().year_month_day();
  const auto clock = now.time_of_day();
  char name[64];
  std::snprintf(name, sizeof name, "./%04d_%02d_%02d_%02d_%02d_%02d.coredump",
                static_cast<int>(day.year), static_cast<int>(day.month.as_number()),
                static_cast<int>(day.day.as_number()), static_cast<int>(clock.hours()),
                static_cast<int>(clock.minutes()), static_cast<int>(clock.seconds()));
  return name;
}

void writeDumpFile() {
  boost::system::error_code ignored;
  if (!boost::filesystem::exists(kDumpDirectory, ignored)) {
    boost::filesystem::create_directory(kDumpDirectory, ignored);
  }
  boost::stacktrace::safe_dump_to(dumpFileName().c_str());
}

}  // namespace

void init_error_handler(bool writeDumpFile) {
  if (initialised.exchange(true)) {
    LIBVARROW_LOG_INFO("error handler has initialed\n");
    return;
  }
  LIBVARROW_LOG_INFO("initial error handler\n");
  dumpFileWanted = writeDumpFile;
  static const BackTrace backTrace;
}

void sig_handler(int sig) {
  crash::startWatchdog();
  crash::printRawStackOnce(sig);
  std::signal(sig, SIG_DFL);
  const boost::stacktrace::stacktrace stack = currentStack();
  attempt([&] {
    LIBVARROW_LOG_ERROR("backtrace:\n%s\n", boost::stacktrace::to_string(stack).c_str());
  });
  if (dumpFileWanted) attempt(writeDumpFile);
  std::abort();
}

}  // namespace libvarrow
