// Failed checks and crashes, each in a separate process.
#include "libvarrow/backtrace/BackTrace.h"

#include <boost/assert.hpp>
#include <boost/filesystem/operations.hpp>
#include <boost/shared_ptr.hpp>
#include <csignal>
#include <cstdlib>

#include "backtrace/crash_reports.h"
#include "cppbind/Assert.h"
#include "libvarrow/backtrace/BackTraceException.h"
#include "libvarrow/backtrace/Check.h"
#include "libvarrow/log/log.h"
#include "support/environment.h"
#include "support/support.h"

namespace {

using libvarrow::init_error_handler;
using namespace test_support;

class BackTraceTest : public InTemporaryDirectory {};

TEST(CheckTest, AFailedCheckOrRaisedExceptionPrintsItsNameAndStack) {
  expectAbort("Expression 'px != 0' is false in function '",
              [] { static_cast<void>(boost::shared_ptr<std::string>()->size()); });
  expectAbort("': too late.\nBacktrace:\n 0# ", [] { BOOST_ASSERT_MSG(false, "too late"); });
  expectAbort("tests/backtrace/backtrace_test.cpp:" + std::to_string(__LINE__ + 1) + ": ",
              [] { CPPBIND_ASSERT(2 < 1); });
  expectAbort(": Assertion `2 < 1' failed.", [] { CPPBIND_ASSERT(2 < 1); });
  expectAbort(
      "structured exception 1\nExpression 'false' is false in function "
      "'libvarrow::BackTraceException::BackTraceException()': <...>.\nBacktrace:\n",
      [] { libvarrow::BackTraceException::trans_func(1, nullptr); });
}

TEST_F(BackTraceTest, TheFirstSetUpDecidesWhetherACrashWritesADumpFile) {
  for (const bool wanted : {false, true}) {
    const auto child = runInChild([wanted] {
      init_error_handler(wanted);
      init_error_handler(!wanted);
      std::abort();
    });
    EXPECT_EQ(SIGABRT, child.signal);
    EXPECT_EQ(1u, occurrences(child.output, "init backtrace\n"));
    EXPECT_EQ(wanted, boost::filesystem::is_directory("coredump"));
    EXPECT_EQ(wanted ? 1u : 0u, dumpFiles().size());
    EXPECT_EQ(1u, occurrences(child.errors, "backtrace:\n")) << "without a logger: standard error";
  }
}

TEST_F(BackTraceTest, EveryCrashSignalIsNamedAndLogged) {
  int signals = 0;
  for (int sig = 1; sig < NSIG; ++sig) {
    const auto child = runInChild([sig] {
      init_error_handler(false);
      if (haveSameHandler(sig, SIGSEGV)) std::raise(sig);
    });
    if (child.exitCode == 0) continue;  // another action
    ++signals;
    EXPECT_EQ(SIGABRT, child.signal);
    const std::string line = "Signal " + std::to_string(sig) + " (SIG" + signalName(sig) + ") ";
    EXPECT_EQ(1u, occurrences(child.errors, line)) << line << child.errors;
    EXPECT_TRUE(contains(child.errors, "\nbacktrace:\n 0# ")) << child.errors;
  }
  EXPECT_LE(2, signals);
}

TEST_F(BackTraceTest, AFailedCheckIsPrintedOnceAndLogged) {
  const auto child = runInChild([] {
    InitRootLogger("none");
    init_error_handler(false);
    LIBVARROW_CHECK(1 + 1 == 3);
  });
  EXPECT_EQ(1u, occurrences(child.errors, "Backtrace:\n"));
  EXPECT_FALSE(contains(child.errors, "Signal ")) << child.errors;
  EXPECT_EQ(1u, occurrences(readFile("error_log.txt"), "backtrace:\n"));
}

}  // namespace
