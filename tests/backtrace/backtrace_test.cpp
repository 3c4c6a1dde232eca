// Failed checks and crashes, each in a process of its own.
#include "libvarrow/backtrace/BackTrace.h"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <boost/assert.hpp>
#include <boost/filesystem/operations.hpp>
#include <boost/shared_ptr.hpp>
#include <boost/stacktrace/stacktrace.hpp>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <regex>
#include <string>
#include <vector>

#include "cppbind/Assert.h"
#include "libvarrow/backtrace/BackTraceException.h"
#include "libvarrow/backtrace/Check.h"
#include "libvarrow/log/log.h"
#include "support/ChildProcess.h"
#include "support/TemporaryDirectory.h"

namespace {

using libvarrow::init_error_handler;
using test_support::ChildResult;
using test_support::readFile;
using test_support::runInChild;

class BackTraceTest : public test_support::InTemporaryDirectory {};

std::size_t occurrences(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at) ++count;
  return count;
}

std::vector<std::string> dumpFiles() {
  const std::regex name(R"(\d{4}(_\d\d){5}\.coredump)");
  std::vector<std::string> files;
  for (const auto& entry : boost::filesystem::directory_iterator(".")) {
    const std::string file = entry.path().filename().string();
    if (std::regex_match(file, name) && boost::filesystem::file_size(entry) > 0)
      files.push_back(file);
  }
  return files;
}

// A page that nobody may touch, rather than a null pointer, which sanitizers catch themselves.
__attribute__((noinline)) void writeToProtectedPage() {
  void* page = ::mmap(nullptr, 4096, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  *static_cast<volatile int*>(page) = 1;
}

TEST_F(BackTraceTest, AFailedCheckNamesExpressionAndFunctionAndShowsTheStack) {
  const ChildResult child = runInChild([] { LIBVARROW_CHECK(1 + 1 == 3); });
  EXPECT_EQ(SIGABRT, child.signal);
  EXPECT_EQ(0u, child.errors.find("Expression '1 + 1 == 3' is false in function '"));
  EXPECT_NE(std::string::npos, child.errors.find("': <...>.\nBacktrace:\n 0# "));
  EXPECT_NE(std::string::npos, child.errors.find("backtrace_test.cpp:"))
      << "frames of this file must show file and line:\n"
      << child.errors;
}

TEST_F(BackTraceTest, BoostsOwnAssertionsReportThroughTheSameHandler) {
  const ChildResult child = runInChild([] {
    const boost::shared_ptr<std::string> nothing;
    static_cast<void>(nothing->size());
  });
  EXPECT_EQ(SIGABRT, child.signal);
  EXPECT_EQ(0u, child.errors.find("Expression 'px != 0' is false in function '"));
  EXPECT_NE(std::string::npos, child.errors.find("Backtrace:\n"));
}

TEST_F(BackTraceTest, AnAssertionWithAMessageShowsIt) {
  const ChildResult child = runInChild([] { BOOST_ASSERT_MSG(false, "too late"); });
  EXPECT_NE(std::string::npos, child.errors.find("': too late.\nBacktrace:\n"));
}

TEST_F(BackTraceTest, StandardAssertionsNameExpressionFileLineAndFunction) {
  const ChildResult child = runInChild([] { CPPBIND_ASSERT(2 < 1); });
  EXPECT_EQ(SIGABRT, child.signal);
  EXPECT_TRUE(std::regex_search(
      child.errors, std::regex(R"(backtrace_test\.cpp:\d+: .*: Assertion `2 < 1' failed\.)")));
}

TEST_F(BackTraceTest, RaisingABackTraceExceptionEndsTheProcess) {
  const ChildResult child = runInChild([] {
    try {
      throw libvarrow::BackTraceException();
    } catch (...) {
    }
  });
  EXPECT_EQ(SIGABRT, child.signal);
  EXPECT_EQ(0u, child.errors.find("Expression 'false' is false in function '"
                                  "libvarrow::BackTraceException::BackTraceException()': <...>.\n"
                                  "Backtrace:\n"));
  EXPECT_EQ(SIGABRT,
            runInChild([] { libvarrow::BackTraceException::trans_func(1, nullptr); }).signal);
}

TEST_F(BackTraceTest, TheHandlerIsInstalledOnceAndKeepsItsFirstDumpSwitch) {
  ASSERT_EQ(0, std::system(ERROR_HANDLER_HOST " > output.txt"));
  const std::string output = readFile("output.txt");
  EXPECT_EQ(1u, occurrences(output, "init backtrace\n"));
  EXPECT_EQ(1u, occurrences(output, "deinit backtrack\n"));
  EXPECT_LT(output.find("main ends\n"), output.find("deinit backtrack\n"));
  EXPECT_EQ(1u, occurrences(output, "initial error handler\n"));
  EXPECT_EQ(1u, occurrences(output, "error handler has initialed\n"));

  const ChildResult crashed = runInChild([] {
    init_error_handler(false);
    init_error_handler(true);
    writeToProtectedPage();
  });
  EXPECT_EQ(SIGABRT, crashed.signal);
  EXPECT_FALSE(boost::filesystem::exists("coredump"));
}

TEST_F(BackTraceTest, ASegmentationFaultIsLoggedWithTheFaultingFunctionFirst) {
  const ChildResult child = runInChild([] {
    InitRootLogger("none");
    init_error_handler(false);
    writeToProtectedPage();
  });
  EXPECT_EQ(SIGABRT, child.signal);
  const std::string log = readFile("error_log.txt");
  // The abort at the end of the first handler comes back once, as SIGABRT.
  EXPECT_EQ(2u, occurrences(log, "ERROR - backtrace:\n"));
  EXPECT_TRUE(std::regex_search(
      log,
      std::regex(R"(backtrace:\n 0# [^\n]*writeToProtectedPage[^\n]*backtrace_test\.cpp:\d+\n)")))
      << log;
  EXPECT_TRUE(dumpFiles().empty());
}

__attribute__((noinline)) int faultBelow(int depth) {
  if (depth == 0) writeToProtectedPage();
  volatile int result = depth == 0 ? 0 : faultBelow(depth - 1);
  return result + 1;
}

TEST_F(BackTraceTest, BackTraceAndDumpHoldAHundredAndTwentyEightFrames) {
  test_support::writeFile("coredump", "a file where the directory would be");
  const ChildResult child = runInChild([] {
    InitRootLogger("none");
    init_error_handler(true);
    faultBelow(300);
  });
  EXPECT_EQ(SIGABRT, child.signal);
  const std::string log = readFile("error_log.txt");
  const std::string first = log.substr(0, log.find("ERROR", log.find("ERROR") + 1));
  EXPECT_NE(std::string::npos, first.find("\n127# "));
  EXPECT_EQ(std::string::npos, first.find("\n128# "));
  ASSERT_LE(1u, dumpFiles().size());
  std::ifstream dump(dumpFiles().front(), std::ios_base::binary);
  EXPECT_EQ(128u, boost::stacktrace::stacktrace::from_dump(dump).size());
  EXPECT_EQ("a file where the directory would be", readFile("coredump"));
}

TEST_F(BackTraceTest, ACrashWritesItsStackBesideTheDumpDirectoryWhenAsked) {
  const ChildResult child = runInChild([] {
    init_error_handler(true);
    std::abort();
  });
  EXPECT_EQ(SIGABRT, child.signal);
  EXPECT_TRUE(boost::filesystem::is_directory("coredump"));
  EXPECT_EQ(1u, dumpFiles().size());
  EXPECT_EQ(1u, occurrences(child.errors, "backtrace:\n")) << "without a logger: standard error";
}

}  // namespace
