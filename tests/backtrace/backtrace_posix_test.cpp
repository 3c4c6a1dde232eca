// Back-traces and signals of POSIX, each in a separate process.
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

#include <boost/filesystem/operations.hpp>
#include <boost/stacktrace/stacktrace.hpp>
#include <csignal>
#include <cstring>
#include <fstream>
#include <regex>

#include "backtrace/crash_reports.h"
#include "cppbind/Assert.h"
#include "libvarrow/backtrace/BackTrace.h"
#include "libvarrow/backtrace/Check.h"
#include "libvarrow/log/log.h"
#include "support/FarZone.h"
#include "support/support.h"

namespace {

using libvarrow::init_error_handler;
using namespace test_support;

class BackTracePosixTest : public InTemporaryDirectory {};

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

TEST(CheckPosixTest, EachReportIsOneWrite) {
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

TEST_F(BackTracePosixTest, ALoggedOrDumpedFaultBeginsWithItsFunction) {
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
      R"(backtrace:\n 0# [^\n]*writeToProtectedPage[^\n]*backtrace_posix_test\.cpp:\d+\n)");
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

}  // namespace
