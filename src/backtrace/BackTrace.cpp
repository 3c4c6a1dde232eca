#include "libvarrow/backtrace/BackTrace.h"

#include <atomic>
#include <boost/config.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/filesystem/operations.hpp>
#include <boost/stacktrace.hpp>
#include <cstdio>
#include <exception>
#include <iostream>
#include <string>

#include "backtrace/crash_system.h"
#include "backtrace/last_line.h"
#include "backtrace/raw_stack.h"
#include "backtrace/stack_text.h"
#include "libvarrow/log/log.h"

namespace libvarrow {

namespace {

constexpr const char* kDumpDirectory = "coredump";
std::atomic<bool> initialised{false};
std::atomic<bool> dumpFileWanted{false};

// Runs `step` and reports its exceptions: the interrupted code must not get them, and the next step
// must still run.
template <typename Step>
void attempt(const Step& step) {
  try {
    step();
  } catch (const std::exception& error) {
    crash::printText("the crash handler failed: ");
    crash::printText(error.what());
    crash::printText("\n");
  } catch (...) {
    crash::printText("the crash handler failed\n");
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

void writeDumpFile(const void* place) {
  boost::system::error_code ignored;
  if (!boost::filesystem::exists(kDumpDirectory, ignored)) {
    boost::filesystem::create_directory(kDumpDirectory, ignored);
  }
  crash::writeDumpFile(dumpFileName().c_str(), place);
}

// Returns the frames of the interrupted code.
boost::stacktrace::stacktrace withoutHandler(const crash::Stack& stack) {
  const auto frames = stack.frames.cbegin() + static_cast<std::ptrdiff_t>(stack.handlerFrames);
  const auto bytes = static_cast<std::size_t>(stack.frames.cend() - frames) * sizeof(void*);
  return boost::stacktrace::stacktrace::from_dump(&*frames, bytes);
}

// Is not inlined into sig_handler(), so that the handler has the same number of frames on every
// path.
[[noreturn]] BOOST_NOINLINE void reportCrash(int sig, const void* place) {
  crash::startWatchdog();
  crash::Stack stack;
  crash::readStack(stack, place);
  crash::printRawStackOnce(sig, stack, place);
  crash::resetSignalHandler(sig);
  attempt([&] {
    LIBVARROW_LOG_ERROR("backtrace:\n%s\n",
                        stackText(withoutHandler(stack), Innermost::IsInterrupted).c_str());
  });
  if (dumpFileWanted) attempt([&] { writeDumpFile(place); });
  crash::endReport(sig);
  crash::abortAfter(sig);
}

class BackTrace {
 public:
  BackTrace() {
    std::cout << "init backtrace" << std::endl;
    useCrashStack();
    crash::installSignalHandler(reportCrash);
  }
  ~BackTrace() { std::cout << "deinit backtrack" << std::endl; }
  BackTrace(const BackTrace&) = delete;
  BackTrace& operator=(const BackTrace&) = delete;
};

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
  reportCrash(sig, nullptr);
}

}  // namespace libvarrow
