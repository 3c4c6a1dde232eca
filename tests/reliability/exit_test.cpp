// Ends of processes, with static objects of every kind.
#include <boost/filesystem/operations.hpp>

#include "libvarrow/json/json.h"
#include "support/environment.h"
#include "support/support.h"

namespace {

using namespace test_support;

class ExitTest : public InTemporaryDirectory {
 protected:
  // Runs the host in a new folder, with timers that write all the time or without any.
  ChildResult runHost(const std::string& order, const char* way, bool hasTimers) {
    folder_ = order + "-" + way + (hasTimers ? "-timers" : "");
    boost::filesystem::create_directory(folder_);
    boost::filesystem::current_path(folder_);
    hasTimers ? setVariable("LIBVARROW_TIMED_STAT_DUMP", "1")
              : unsetVariable("LIBVARROW_TIMED_STAT_DUMP");
    const ChildResult host = runProgram({EXIT_HOST, order, PLUGINS, way});
    boost::filesystem::current_path(directory.path());
    return host;
  }
  // Returns 0 without a file.
  int rowsIn(const char* file) const {
    const std::string path = folder_ + "/" + file;
    return boost::filesystem::exists(path) ? libvarrow::File2Json(path)["run"][0]["rows"].asInt()
                                           : 0;
  }
  // Returns the names of the static objects in the order of their destruction.
  std::string destroyed() const {
    const std::string log = readFile(folder_ + "/log.txt");
    std::string names;
    for (auto at = log.find(" ends"); at != std::string::npos; at = log.find(" ends", at + 1)) {
      names += log[at - 1];
    }
    return names;
  }
  void expectOrderlyEnd(const std::string& order, const char* way, bool hasTimers) {
    const ChildResult host = runHost(order, way, hasTimers);
    SCOPED_TRACE(folder_);
    ASSERT_EQ(0, host.exitCode) << host.signal << host.errors << host.output;
    EXPECT_EQ("", host.errors);
    EXPECT_EQ(2, rowsIn("first.json"));
    EXPECT_EQ(2, rowsIn("second.json"));
    EXPECT_EQ(std::string(order.rbegin(), order.rend()), destroyed());
    EXPECT_TRUE(contains(host.output, "greeter gone\n")) << host.output;
    EXPECT_TRUE(contains(host.output, "deinit backtrack\n")) << host.output;
  }

 private:
  std::string folder_;
};

TEST_F(ExitTest, StaticObjectsEndInAnyOrderOnAnyThread) {
  for (const char* order : {"dlmor", "romld"}) {  // of any two, each is destroyed first once
    for (const bool hasTimers : {false, true}) expectOrderlyEnd(order, "return", hasTimers);
    expectOrderlyEnd(order, "thread", true);
  }
}

TEST_F(ExitTest, AnEndWithoutExitHandlersLeavesCompleteFilesOrNone) {
  int written = 0;
  for (const char* way : {"quick", "_exit"}) {
    for (const std::string order : {"d", "dl", "ld", "dlmor", "romld"}) {
      const ChildResult host = runHost(order, way, true);
      EXPECT_EQ(0, host.exitCode) << way << host.signal << host.errors;
      for (const char* file : {"first.json", "second.json"}) {
        const int rows = rowsIn(file);
        EXPECT_TRUE(rows == 0 || rows == 1) << way << order << rows;
        written += rows;
      }
    }
  }
  EXPECT_GT(written, 0);
}

}  // namespace
