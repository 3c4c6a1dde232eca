// A host that fails in the way that its argument names.
#include <libvarrow/backtrace/BackTrace.h>
#include <libvarrow/backtrace/BackTraceException.h>
#include <libvarrow/backtrace/Check.h>
#include <libvarrow/env/process_init.h>
#include <libvarrow/log/log.h>

#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <thread>

namespace {

volatile int limit = 0;

// [check]
int loadOf(int busy, int available) {
  LIBVARROW_CHECK(available > 0);  // in every build type
  return 100 * busy / available;
}
// [/check]

void failACheck() {
  loadOf(1, limit);
}

void raiseException() {
  throw libvarrow::BackTraceException();
}

void fault() {
  volatile int* volatile nowhere = nullptr;
  *nowhere = 1;  // NOLINT(clang-analyzer-core.NullDereference): intended
}

int recurse(int depth) {
  volatile char page[4096] = {};
  return limit == 0 ? recurse(depth + 1) + page[0] : depth;
}

// [thread]
// A stack overflow in a thread prints a back-trace only if the thread has a crash stack.
void recurseOnCrashStack() {
  std::thread worker([] {
    libvarrow::useCrashStack();  // the first call in every thread
    recurse(0);
  });
  worker.join();
}
// [/thread]

void recurseWithoutCrashStack() {
  std::thread([] { recurse(0); }).join();
}

void leaveAnErrorUncaught() {
  throw std::runtime_error("nobody catches this");
}

}  // namespace

int main(int, char** argv) {
  const std::map<std::string, std::function<void()>> ways = {{"check", failACheck},
                                                             {"raise", raiseException},
                                                             {"fault", fault},
                                                             {"recurse", [] { recurse(0); }},
                                                             {"thread", recurseOnCrashStack},
                                                             {"silent", recurseWithoutCrashStack},
                                                             {"uncaught", leaveAnErrorUncaught}};
  // [start]
  libvarrow::porcessCommonInit();  // or init_error_handler(true), for a dump file as well
  InitRootLogger("log.conf");
  // [/start]
  ways.at(argv[1])();
}
