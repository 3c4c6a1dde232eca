// Records one statistic of each kind and prints the resulting JSON.
#include <libvarrow/json/json.h>
#include <libvarrow/statistics/CountStatistics.h>
#include <libvarrow/statistics/DistributionStatistics.h>
#include <libvarrow/statistics/JsonStatistics.h>
#include <libvarrow/statistics/NumStatistics.h>
#include <libvarrow/statistics/PercentStatistics.h>
#include <libvarrow/statistics/ProgressStatistics.h>
#include <libvarrow/statistics/RejectionStatistics.h>
#include <libvarrow/statistics/StatisticsContainer.h>
#include <libvarrow/statistics/TimeStatistics.h>
#include <libvarrow/statistics/TimedStatDumper.h>

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/make_shared.hpp>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

namespace {

// [kinds]
void record(libvarrow::StatisticsContainer& run) {
  auto* tries = run.getCountStatistics("tries");
  tries->inc();
  tries->inc(4);

  auto* placed = run.getPercentStatistics("placed", /*total=*/4);
  placed->inc(3);

  auto* refusals = run.getDistributionStatistics("refused because");
  refusals->inc("no capacity", 3);
  refusals->inc("too late", 1);

  // A histogram has no get...: create it and pass it to addStat(), which takes ownership.
  auto* waits = new libvarrow::NumStatistics(/*interval=*/10);
  run.addStat("waits", waits);
  for (const double minutes : {4.0, 12.5, 25.0, 29.0}) waits->add(minutes);

  Json::Value settings;
  settings["rule"] = "SPT";
  run.getJsonStatistics("settings", settings);

  auto* search = run.getStatisticsContainer("search");  // a branch of the tree
  const libvarrow::TimeRecoderHelper timer(search->getTimeStatistics("whole"));
  search->getCountStatistics("rounds", 7);
}
// [/kinds]

// [threads]
void countInThreads(libvarrow::StatisticsContainer& run) {
  auto* steps =
      run.getCountStatistics("steps");  // once, before the threads: each call makes a new one
  std::vector<std::thread> workers;
  workers.reserve(4);
  for (int i = 0; i < 4; ++i) {
    workers.emplace_back([steps] {
      for (int step = 0; step < 1000; ++step) steps->inc();
    });
  }
  for (std::thread& worker : workers) worker.join();
}
// [/threads]

// [merge]
void countReasonsInThreads(libvarrow::StatisticsContainer& run) {
  auto* reasons = run.getDistributionStatistics("reasons");
  std::vector<std::thread> workers;
  workers.reserve(4);
  for (int i = 0; i < 4; ++i) {
    workers.emplace_back([reasons] {
      libvarrow::DistributionStatistics own;  // waits for no other thread
      for (int step = 0; step < 1000; ++step) own.inc(step % 4 == 0 ? "late" : "full", 1);
      reasons->merge(&own);  // once, at the end of the thread
    });
  }
  for (std::thread& worker : workers) worker.join();
}
// [/merge]

// [progress]
// A part of the run with a known number of steps.
struct Part : libvarrow::ProgressStatistics {
  explicit Part(std::uint64_t total) : steps(total) {}
  std::uint64_t getProcessPercent() const override { return steps.getProcessPercent(); }

  libvarrow::SimpleProgressStatistics steps;
};

void showProgress(libvarrow::StatisticsContainer& run) {
  const auto first = boost::make_shared<Part>(10);
  const auto second = boost::make_shared<Part>(200);
  run.addStat("progress", new libvarrow::ComposedProgressStatistics({first, second}));
  first->steps.inc(10);    // done
  second->steps.inc(150);  // 75 %, which the whole does not count
}
// [/progress]

// [rejections]
void planRooms(libvarrow::StatisticsContainer& run) {
  using boost::posix_time::minutes;
  auto* rooms = run.getRejectionStatistics("rooms");
  rooms->rejected("C017", "OT1 2024-03-04 07:00", "surgeon off duty");
  rooms->rejected("C017", "OT2 2024-03-08 12:45", "room too short", minutes(30));
  rooms->rejected("C017", "OT1 2024-03-08 13:00", "room too short", minutes(45));
  rooms->placed("C018");
}
// [/rejections]

}  // namespace

int main() {
  // [file]
  libvarrow::StatisticsContainer run("run");
  const libvarrow::TimedStatDumper dumper(&run, "run/statistics.json");
  // [/file]
  record(run);
  countInThreads(run);
  countReasonsInThreads(run);
  showProgress(run);
  planRooms(run);
  std::cout << run.dumpAsJsonString();
}
