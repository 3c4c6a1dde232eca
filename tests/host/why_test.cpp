// The command why: the form of its answers, and folders that give none.
#include <boost/date_time/posix_time/posix_time_types.hpp>

#include "host/program.h"
#include "libvarrow/statistics/StatisticsContainer.h"
#include "libvarrow/utility/UTFConverter.h"

namespace host_test {
namespace {

using libvarrow::RejectionStatistics;

class Why : public InTemporaryDirectory {
 protected:
  // Records the rejections of a planner of rooms, and those of one that runs three times.
  Why() {
    libvarrow::StatisticsContainer root("run");
    auto* const rooms =
        root.getStatisticsContainer("Module::Plan")->getRejectionStatistics("rooms");
    for (int i = 0; i < 61; ++i)
      rooms->rejected("C017", "OT1 2024-03-04 07:00", "surgeon off duty");
    for (int i = 30; i < 61; ++i) {
      rooms->rejected("C017", "OT2 2024-03-08 12:45", "room too short",
                      boost::posix_time::minutes(i));
    }
    rooms->rejected("C018", "OT\n\x1b[1m", "\xE6\x89\x8B\xE6\x9C\xAF too long", 2.5);
    rooms->rejected("C018", "OT2", "no bed");
    rooms->rejected("C018", "OT1", "no bed");
    rooms->placed("C018");
    libvarrow::StatisticsContainer* const again = root.getStatisticsContainer("Module::Again");
    for (const double shortBy : {20, 7, 100}) {
      RejectionStatistics* const beds = again->getRejectionStatistics("beds", 1);
      beds->rejected("C017", "B" + std::to_string(static_cast<int>(shortBy)), "no bed", shortBy);
      beds->rejected("C019", "", "no bed");
    }
    root.dumpToFile("run/statistics.json");
    writeFile("run/run.json", R"({"libvarrow_run": 1, "outcome": "done"})");
    writeFile("latest", "run\n");  // in place of a link
  }
};

TEST_F(Why, ReasonsAreAlignedTheMostFrequentFirst) {
  struct Case {
    std::vector<std::string> arguments;
    const char* output;
  };
  const Case cases[] = {
      {{"run", "C018"},
       "C018 placed; 3 candidates examined\n"
       "  2 x no bed          for example OT1\n"
       "  1 x \xE6\x89\x8B\xE6\x9C\xAF too long     nearest: OT [1m, short by 2.5\n"},
      {{"run/run.json", "C017"},
       "Module::Again/beds:\n"
       "C017 not placed; 3 candidates examined\n"
       "  3 x no bed     nearest: B7, short by 7\n"
       "  3 more calls were not recorded: the statistic was full\n"
       "Module::Plan/rooms:\n"
       "C017 not placed; 92 candidates examined\n"
       "  61 x surgeon off duty     for example OT1 2024-03-04 07:00\n"
       "  31 x room too short       nearest: OT2 2024-03-08 12:45, short by 00:30:00\n"},
      {{"latest"},
       "1 of 2 subjects not placed\n"
       "  C017     95 candidates examined, most often surgeon off duty\n"
       "3 more calls were not recorded: the statistic was full\n"}};
  for (Case c : cases) {
    c.arguments.insert(c.arguments.begin(), {VARROW_TOOL, "why"});
    const ChildResult why = runProgram(c.arguments);
    EXPECT_EQ(0, why.exitCode) << why.errors;
    EXPECT_EQ(libvarrow::utility::fromUtf8(c.output), why.output);
  }
  const Json::Value subject = json(orders({"why", "run", "C017", "--json"}).output);
  EXPECT_EQ("Module::Plan/rooms", subject[1]["place"].asString());
  EXPECT_EQ(json(R"({"reason": "no bed", "count": 3, "nearest": "B7", "short_by": 7.0})"),
            subject[0]["reasons"][0]);
  const Json::Value all = json(orders({"why", "run", "--json"}).output);
  EXPECT_EQ(std::vector<std::string>{"C017"}, all.getMemberNames());
  EXPECT_EQ(95, all["C017"]["examined"].asInt());
}

TEST_F(Why, WithoutAnAnswerTheLastLineNamesTheReason) {
  const std::string record = R"({"libvarrow_run": 1})";
  const auto makeRun = [&](const std::string& folder, const char* statistics) {
    writeFile(folder + "/run.json", record);
    if (*statistics != '\0') writeFile(folder + "/statistics.json", statistics);
  };
  fs::create_directory("empty");
  writeFile("file", "");
  writeFile("torn/run.json", "{\"libvarrow_run\": 1,");
  writeFile("foreign/run.json", R"({"run": 1})");
  writeFile("newer/run.json", R"({"libvarrow_run": 2})");
  writeFile("odd/run.json", R"({"libvarrow_run": 1, "set": ["a=1", 5]})");
  makeRun("killed", "");
  makeRun("half", "{\"run\": [");
  makeRun("other", R"({"run": [{"rows": 5}]})");
  makeRun("wrong", R"({"run": [{"r": {"__rejections__": {"dropped": 0, "subjects": {"a": 5}}}}]})");
  makeRun("orders", R"({"run": [{"r": {"__rejections__": {"dropped": 0, "subjects":
      {"order 7": {"examined": 1, "placed": true, "reasons": {}}}}}}]})");
  const std::pair<const char*, const char*> cases[] = {
      {"orders", "the run has no subject \"c17\"; its subjects have names such as \"order 7\"\n"},
      {"gone", "gone does not exist"},
      {"file", "file is not a run folder: it is a file"},
      {"empty", "empty is not a run folder: it has no run.json"},
      {"torn", "torn/run.json is not JSON: * Line 1, Column 21"},
      {"foreign", "foreign/run.json is not the record of a run"},
      {"newer", "newer/run.json has a format that this version does not know: 2"},
      {"odd", "odd/run.json: \"set\" has a wrong value"},
      {"killed", "killed/statistics.json is missing: the run has not ended"},
      {"half", "half/statistics.json is not JSON: * Line 1, Column 10"},
      {"other", "other has no statistics of rejections"},
      {"wrong", "wrong/statistics.json: \"placed\" of rejections is missing or wrong"},
      {"run", "the run has no subject \"c17\"; did you mean \"C017\"?; 3 more calls were not"}};
  for (const auto& [folder, error] : cases) {
    const ChildResult why = orders({"why", folder, "c17"});
    EXPECT_EQ(1, why.exitCode) << folder;
    EXPECT_EQ("", why.output);
    EXPECT_EQ(0u, why.errors.find("orders: " + std::string(error))) << why.errors;
  }
}

}  // namespace
}  // namespace host_test
