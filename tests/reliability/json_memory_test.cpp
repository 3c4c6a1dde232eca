// JSON text when memory runs out: the whole, or std::bad_alloc and nothing.

#include "libvarrow/module/ModuleData.h"
#include "libvarrow/statistics/TimedStatDumper.h"
#include "reliability/failing_new.h"
#include "support/support.h"

namespace {

using namespace libvarrow;
using namespace test_support;

struct Orders : ModuleData {
  Json::Value getBaiscInfoJson() override {
    Json::Value info;
    for (int i = 0; i < 30; ++i)
      info["order"].append("a text too long to stand in the string itself");
    return info;
  }
};

class JsonMemoryTest : public InTemporaryDirectory {};

TEST_F(JsonMemoryTest, TextIsWrittenWholeOrNotAtAll) {
  Orders orders;
  const Json::Value info = orders.getBaiscInfoJson();
  const std::string whole = Json2Str(info);
  std::string text;
  EXPECT_LT(5u,
            failEachAllocation([&] { text = Json2Str(info); },
                               [&](bool isDone) { EXPECT_EQ(isDone, text == whole), text = ""; }));
  const std::string wholeInfo = orders.getBaiscInfo(nullptr);
  failEachAllocation([&] { text = orders.getBaiscInfo(nullptr); },
                     [&](bool isDone) { EXPECT_EQ(isDone, text == wholeInfo), text = ""; });
}

TEST_F(JsonMemoryTest, ATimedDumpLeavesTheLastWholeFile) {
  StatisticsContainer statistics("run");
  Orders orders;
  statistics.getJsonStatistics("orders", orders.getBaiscInfoJson());
  const std::string whole = statistics.dumpAsJsonString();
  std::string last;
  writeFile("stat.json", "old");
  failEachAllocation([&] { TimedStatDumper(&statistics, "stat.json"); },
                     [&](bool) {
                       last = readFile("stat.json");
                       EXPECT_TRUE(last == whole || last == "old") << last;
                       writeFile("stat.json", "old");
                     });
  EXPECT_EQ(whole, last);
}

}  // namespace
