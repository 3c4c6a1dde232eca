// A set-up of the root logger from a pipe.
#include <unistd.h>

#include <boost/filesystem/operations.hpp>
#include <iostream>

#include "libvarrow/log/log.h"
#include "support/support.h"

namespace {

using namespace test_support;

class LogPosixTest : public InTemporaryDirectory {};

TEST_F(LogPosixTest, ErrorsReachStandardErrorUntilTheLoggerIsConfigured) {
  const std::string configuration =
      "log4cplus.rootLogger=DEBUG, F\n"
      "log4cplus.appender.F=log4cplus::FileAppender\n"
      "log4cplus.appender.F.File=mine.txt\n";
  const auto child = runInChild([&] {
    int pipe[2] = {};
    if (::pipe(pipe) != 0 || ::write(pipe[1], configuration.data(), configuration.size()) < 0)
      return;
    ::close(pipe[1]);
    LIBVARROW_LOG_INFO("news");
    LIBVARROW_LOG_ERROR("trouble");
    registerLogInitedHandler([] { std::cout << "<handler>"; });
    InitRootLogger("/dev/fd/" + std::to_string(pipe[0]));
    LIBVARROW_LOG_DEBUG("quiet");
  });
  EXPECT_EQ("trouble\n", child.errors);
  EXPECT_EQ("<handler>", child.output);
  EXPECT_EQ("DEBUG - quiet\n", readFile("mine.txt"));
  EXPECT_FALSE(boost::filesystem::exists("log.txt"));
}

}  // namespace
