// Set-ups of the root logger, each in a separate process.
#include "libvarrow/log/log.h"

#include <Poco/Process.h>

#include <boost/filesystem/operations.hpp>
#include <iostream>
#include <regex>
#include <thread>

#include "support/FarZone.h"
#include "support/environment.h"
#include "support/support.h"

namespace {

using namespace test_support;

class LogTest : public InTemporaryDirectory {};

TEST_F(LogTest, TheDefaultLogsToTheConsoleAndTwoFiles) {
  boost::filesystem::create_directory("other.conf");  // not a file
  writeFile("log.txt", "before\n");
  writeFile("error_log.txt", "before\n");
  const std::string hostile = std::string(5000, 'x') + "%s%n%d";
  const FarZone zone;
  const std::string begin = zone.before();
  const auto child = runInChild([&] {
    InitRootLogger("other.conf");
    LIBVARROW_LOG_DEBUG("too quiet");
    // On another thread, whose number differs from that of the process.
    std::thread([] {
      LIBVARROW_LOG_INFO("news of %d", static_cast<int>(Poco::Process::id()));
    }).join();
    LIBVARROW_LOG_ERROR("trouble");
    LIBVARROW_LOG_INFO("%s", hostile.c_str());
  });
  EXPECT_EQ("", child.errors);
  EXPECT_EQ(0u, child.output.find("WARNING: can not found log.conf\n"));
  const std::string log = readFile("log.txt");
  const std::string errors = readFile("error_log.txt");
  for (const std::string& text : {child.output, log, errors}) {
    EXPECT_TRUE(
        contains(text, "WARN  - No log.conf, this is default log conf by hard code! [log.cpp:"));
    EXPECT_TRUE(contains(text, "ERROR - trouble"));
    EXPECT_EQ(text != errors, contains(text, "news of "));
    EXPECT_EQ(text != child.output, text.find("before\n") == 0) << "appended to";
    EXPECT_FALSE(contains(text, "too quiet"));
  }
  const std::regex line(
      R"(\n(\d+) (\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)  INFO  - news of \1 \[log_test\.cpp:\d+\]\n)");
  std::smatch found;
  ASSERT_TRUE(std::regex_search(log, found, line)) << log;
  EXPECT_LE(begin, isoTime(found[2]));
  EXPECT_LE(isoTime(found[2]), zone.after());
  EXPECT_TRUE(contains(log, " - " + hostile + " ["));
}

TEST_F(LogTest, ErrorsReachStandardErrorUntilTheLoggerIsConfigured) {
  const std::string configuration =
      "log4cplus.rootLogger=DEBUG, F\n"
      "log4cplus.appender.F=log4cplus::FileAppender\n"
      "log4cplus.appender.F.File=mine.txt\n";
  const auto child = runInChild([&] {
    LIBVARROW_LOG_INFO("news");
    LIBVARROW_LOG_ERROR("trouble");
    registerLogInitedHandler([] { std::cout << "<handler>"; });
    InitRootLogger(pathOfText(configuration));
    LIBVARROW_LOG_DEBUG("quiet");
  });
  EXPECT_EQ("trouble\n", child.errors);
  EXPECT_EQ("<handler>", child.output);
  EXPECT_EQ("DEBUG - quiet\n", readFile("mine.txt"));
  EXPECT_FALSE(boost::filesystem::exists("log.txt"));
}

TEST_F(LogTest, HandlersRunAfterEverySetUpUntilAnEmptyOneThrows) {
  const auto child = runInChild([] {
    const boost::function<void()> first = [] { std::cout << "<first>"; };
    registerLogInitedHandler(first);
    const std::string late = "<late, in a text too long for the handler itself>";
    registerLogInitedHandler([late] {
      std::cout << "<second>";
      for (int i = 0; i < 8; ++i) registerLogInitedHandler([late] { std::cout << late; });
    });
    unRegisterLogInitedHandler(first);
    InitRootLogger("none");
    InitRootLogger("none");
    registerLogInitedHandler(boost::function<void()>());
    registerLogInitedHandler([] { std::cout << "<after it>"; });
    InitRootLogger("none");
  });
  const std::size_t handlers = child.output.find("<first><second>WARNING");
  ASSERT_NE(std::string::npos, handlers);
  EXPECT_LT(child.output.find("by hard code!"), handlers);
  EXPECT_TRUE(contains(child.output.substr(handlers + 1), "\n<first><second><late"));
  EXPECT_EQ("exception: call to empty boost::function\n", child.errors);
  EXPECT_FALSE(contains(child.output, "<after it>"));
}

}  // namespace
