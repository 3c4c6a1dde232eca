// Failed checks and crashes, each in a separate process.
#include "libvarrow/backtrace/BackTrace.h"

#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

#include <boost/assert.hpp>
#include <boost/filesystem/operations.hpp>
#include <boost/shared_ptr.hpp>
#include <boost/stacktrace/stacktrace.hpp>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <regex>

#include "cppbind/Assert.h"
#include "libvarrow/backtrace/BackTraceException.h"
#include "libvarrow/backtrace/Check.h"
#include "libvarrow/log/log.h"
#include "support/FarZone.h"
#include "support/support.h"

namespace {

using libvarrow::init_error_handler;
using namespace test_support;

class BackTraceTest : public InTemporaryDirectory {};

std::size_t occurrences(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at) ++count;
  return count;
}

std::vector<std::string> dumpFiles() {
  const std::regex name(R"(\./\d{4}(_\d\d){5}\.coredump)");
  std::vector<std::string> files;
  for (const auto& entry : boost::filesystem::directory_iterator(".")) {
    const std::string file = entry.path().string();
    if (std::regex_match(file, name) && !readFile(file).empty()) files.push_back(file);
  }
  return files;
}

// Uses a protected page, because sanitizers detect null pointers themselves.
__attribute__((noinline)) void writeToProtectedPage() {
  void* page = ::mmap(nullptr, 4096, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  *static_cast<volatile int*>(page) = 1;
}

__attribute__((noinline)) int faultBelow(int depth) {
  if (depth == 0) writeToProtectedPage();
  volatile int result = depth == 0 ? 0 : faultBelow(depth - 1);
  return result + 1;
}

TEST(CheckDeathTest, AFailedCheckOrRaisedExceptionPrintsItsNameAndStack) {
  const testing::KilledBySignal aborted(SIGABRT);
  EXPECT_EXIT(static_cast<void>(boost::shared_ptr<std::string>()->size()), aborted,
              "^Expression 'px != 0' is false in function '.*': <\\.\\.\\.>\\.\nBacktrace:\n 0# ");
  EXPECT_EXIT(BOOST_ASSERT_MSG(false, "too late"), aborted, "': too late\\.\nBacktrace:\n 0# ");
  EXPECT_EXIT(CPPBIND_ASSERT(2 < 1), aborted,
              "backtrace_test\\.cpp:[0-9]+: .*: Assertion `2 < 1' failed\\.");
  const std::string raised =
      "^structured exception 1\nExpression 'false' is false in function "
      "'libvarrow::BackTraceException::BackTraceException\\(\\)': <\\.\\.\\.>\\.\nBacktrace:\n";
  EXPECT_EXIT(libvarrow::BackTraceException::trans_func(1, nullptr), aborted, raised);
}

TEST(CheckTest, EachReportIsOneWrite) {
  const std::function<void()> failures[] = {[] { LIBVARROW_CHECK(2 < 1); },
                                            [] { CPPBIND_ASSERT(2 < 1); }};
  for (const auto& fail : failures) {
    int ends[2];
    ASSERT_EQ(0, ::socketpair(AF_UNIX, SOCK_DGRAM, 0, ends));  // keeps writes apart
    runInChild([&] {
      ::dup2(ends[1], STDERR_FILENO);
      fail();
    });
    std::string text(1 << 16, '\0');
    const ssize_t length = ::recv(ends[0], text.data(), text.size(), MSG_DONTWAIT);
    ASSERT_GT(length, 0);
    EXPECT_TRUE(contains(text, "2 < 1"));
    EXPECT_EQ('\n', text[static_cast<std::size_t>(length) - 1]);
    EXPECT_EQ(-1, ::recv(ends[0], text.data(), text.size(), MSG_DONTWAIT)) << text;
    for (const int end : ends) ::close(end);
  }
}

TEST_F(BackTraceTest, ALoggedOrDumpedFaultBeginsWithItsFunction) {
  writeFile("coredump", "a file where the directory would be");
  const FarZone zone;
  const std::string begin = zone.before();
  const auto child = runInChild([] {
    InitRootLogger("none");
    init_error_handler(true);
    init_error_handler(false);
    faultBelow(300);
  });
  EXPECT_EQ(SIGABRT, child.signal);
  for (const char* once : {"initial error handler\n", "error handler has initialed\n"}) {
    EXPECT_EQ(1u, occurrences(readFile("log.txt"), once)) << once;
  }
  const std::string log = readFile("error_log.txt");
  // The abort at the end of the first handler enters it again, as SIGABRT.
  EXPECT_EQ(2u, occurrences(log, "ERROR - backtrace:\n"));
  const std::regex firstFrame(
      R"(backtrace:\n 0# [^\n]*writeToProtectedPage[^\n]*backtrace_test\.cpp:\d+\n)");
  EXPECT_TRUE(std::regex_search(log, firstFrame)) << log;
  EXPECT_EQ(2u, occurrences(log, "\n127# "));
  EXPECT_EQ(0u, occurrences(log, "\n128# "));
  const auto own = runInChild([] {
    init_error_handler(false);
    std::signal(SIGSEGV, libvarrow::sig_handler);
    writeToProtectedPage();
  });
  EXPECT_TRUE(std::regex_search(own.errors, firstFrame)) << "installed by the host:" << own.errors;
  ASSERT_FALSE(dumpFiles().empty());
  EXPECT_LE(begin, isoTime(dumpFiles().front()));
  EXPECT_LE(isoTime(dumpFiles().front()), zone.after());
  std::ifstream dump(dumpFiles().front(), std::ios_base::binary);
  EXPECT_EQ(128u, boost::stacktrace::stacktrace::from_dump(dump).size());
  EXPECT_EQ("a file where the directory would be", readFile("coredump"));
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
      struct sigaction fault {};
      struct sigaction action {};
      ::sigaction(SIGSEGV, nullptr, &fault);
      ::sigaction(sig, nullptr, &action);
      if (action.sa_sigaction == fault.sa_sigaction) ::raise(sig);
    });
    if (child.exitCode == 0) continue;  // another action
    ++signals;
    EXPECT_EQ(SIGABRT, child.signal);
    const std::string line = "Signal " + std::to_string(sig) + " (SIG" + ::sigabbrev_np(sig) + ") ";
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
