// Setting the root logger up, each time in a process of its own.
#include "libvarrow/log/log.h"

#include <gtest/gtest.h>

#include <boost/filesystem/operations.hpp>
#include <iostream>
#include <regex>

#include "support/ChildProcess.h"
#include "support/TemporaryDirectory.h"

namespace {

using test_support::ChildResult;
using test_support::readFile;
using test_support::runInChild;
using test_support::writeFile;

class LogTest : public test_support::InTemporaryDirectory {};

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST_F(LogTest, WithoutConfigurationLogsToConsoleAndTwoFiles) {
  writeFile("log.txt", "before\n");
  writeFile("error_log.txt", "before\n");
  const ChildResult child = runInChild([] {
    InitRootLogger("other.conf");
    LIBVARROW_LOG_DEBUG("too quiet");
    LIBVARROW_LOG_INFO("news of %d", 7);
    LIBVARROW_LOG_ERROR("trouble");
  });
  ASSERT_EQ(0, child.exitCode) << child.errors;
  const std::string warning =
      "WARN  - No log.conf, this is default log conf by hard code! [log.cpp:";
  EXPECT_EQ(0u, child.output.find("WARNING: can not found log.conf\n"));
  EXPECT_TRUE(contains(child.output, warning));
  const std::string log = readFile("log.txt");
  EXPECT_EQ(0u, log.find("before\n")) << "appended to";
  EXPECT_TRUE(contains(log, warning));
  EXPECT_TRUE(std::regex_search(
      log,
      std::regex(
          R"(\n\d+ \d{4}-\d\d-\d\d \d\d:\d\d:\d\d  INFO  - news of 7 \[log_test\.cpp:\d+\]\n)")));
  EXPECT_TRUE(contains(child.output, "news of 7"));
  EXPECT_FALSE(contains(child.output + log, "too quiet"));
  const std::string errors = readFile("error_log.txt");
  EXPECT_EQ(0u, errors.find("before\n"));
  EXPECT_TRUE(contains(errors, warning));
  EXPECT_TRUE(contains(errors, "ERROR - trouble"));
  EXPECT_FALSE(contains(errors, "news of 7"));
  EXPECT_TRUE(child.errors.empty()) << child.errors;
}

TEST_F(LogTest, AFileThatCanBeReadConfiguresTheLogger) {
  writeFile("my.conf",
            "log4cplus.rootLogger=DEBUG, F\n"
            "log4cplus.appender.F=log4cplus::FileAppender\n"
            "log4cplus.appender.F.File=mine.txt\n"
            "log4cplus.appender.F.layout=log4cplus::PatternLayout\n"
            "log4cplus.appender.F.layout.ConversionPattern=%p %m%n\n");
  const ChildResult child = runInChild([] {
    registerLogInitedHandler([] { std::cout << "<handler>"; });
    InitRootLogger("my.conf");
    LIBVARROW_LOG_DEBUG("quiet");
  });
  EXPECT_EQ("<handler>", child.output);
  EXPECT_EQ("DEBUG quiet\n", readFile("mine.txt"));
  EXPECT_FALSE(boost::filesystem::exists("log.txt"));
}

TEST_F(LogTest, ADirectoryIsNoConfigurationFile) {
  boost::filesystem::create_directory("log.conf");
  const ChildResult child = runInChild([] { InitRootLogger("log.conf"); });
  EXPECT_TRUE(contains(child.output, "can not found log.conf"));
}

TEST_F(LogTest, HandlersRunInOrderAfterEverySetUpAndAreNeverRemoved) {
  const ChildResult child = runInChild([] {
    const boost::function<void()> first = [] { std::cout << "<first>"; };
    registerLogInitedHandler(first);
    registerLogInitedHandler([] { std::cout << "<second>\n"; });
    unRegisterLogInitedHandler(first);
    InitRootLogger("none");
    InitRootLogger("none");
  });
  const std::size_t handlers = child.output.find("<first><second>\n");
  ASSERT_NE(std::string::npos, handlers);
  EXPECT_LT(child.output.find("by hard code!"), handlers);
  EXPECT_NE(std::string::npos, child.output.find("<first><second>\n", handlers + 1));
}

TEST_F(LogTest, AHandlerThatRegistersAnotherAddsItForTheNextCall) {
  const ChildResult child = runInChild([] {
    const std::string late = "<late, in a text too long to stand inside the handler itself>";
    registerLogInitedHandler([late] {
      std::cout << "<outer>";
      for (int i = 0; i < 8; ++i) registerLogInitedHandler([late] { std::cout << late; });
    });
    InitRootLogger("none");
    std::cout << "|";
    InitRootLogger("none");
  });
  const std::size_t second = child.output.find('|');
  EXPECT_EQ(std::string::npos, child.output.substr(0, second).find("<late"));
  EXPECT_NE(std::string::npos, child.output.find("<outer><late", second));
}

TEST_F(LogTest, AnEmptyHandlerThrowsAndStopsThoseAfterIt) {
  const ChildResult child = runInChild([] {
    registerLogInitedHandler(boost::function<void()>());
    registerLogInitedHandler([] { std::cout << "<later>"; });
    try {
      InitRootLogger("none");
    } catch (const boost::bad_function_call&) {
      std::cout << "<bad call>";
    }
  });
  EXPECT_TRUE(contains(child.output, "<bad call>"));
  EXPECT_FALSE(contains(child.output, "<later>"));
}

TEST_F(LogTest, LongMessagesAndTextWithPercentSignsArriveWhole) {
  const std::string text = std::string(5000, 'x') + "%s%n%d";
  const ChildResult child = runInChild([&] {
    InitRootLogger("none");
    LIBVARROW_LOG_INFO("%s", text.c_str());
  });
  EXPECT_TRUE(contains(readFile("log.txt"), " - " + text + " ["));
}

TEST_F(LogTest, BeforeSetUpOnlyWarningsAndErrorsAreShown) {
  const ChildResult child = runInChild([] {
    LIBVARROW_LOG_INFO("news");
    LIBVARROW_LOG_ERROR("trouble");
  });
  EXPECT_EQ("", child.output);
  EXPECT_EQ("trouble\n", child.errors);
}

}  // namespace
