// Tests of the modules and of the pipeline. Use a test framework in place of the checks.
#include <libvarrow/libvarrow.h>

#include <array>
#include <iostream>
#include <thread>

#include "orders.h"

namespace {

using boost::posix_time::hours;
using boost::posix_time::time_from_string;

// [alone]
// Tests Plan alone: no pipeline file, no host, no files.
void testPlan() {
  Plan plan;
  cppbind::JsonDecodeBinder().decode(libvarrow::Str2Json(R"({"start": "2024-03-05 06:00:00"})"),
                                     plan);
  libvarrow::StatisticsContainer statistics("test");  // Plan counts there
  PlanData data;
  data.statisticsContainer = &statistics;
  const ptime noon = time_from_string("2024-03-05 12:00:00");
  data.orders = {{"doors", hours(6), noon}, {"hinges", hours(1), noon}};
  plan.processImp(&data);  // process() would also write the files of the frame
  LIBVARROW_CHECK(data.orders[0].done == noon);
  LIBVARROW_CHECK(data.late() == 1);
}
// [/alone]

// [pipeline]
// Tests the whole pipeline, with another limit than the file has.
void testPipeline(libvarrow::Host& host) {
  libvarrow::RunOptions options;
  options.pipeline = "pipeline.json";
  options.folder = "out/limit";  // a fresh temporary folder in a real test
  options.set = {"LimitLate.at_most=0"};
  PlanData data;
  const libvarrow::RunResult result = host.execute(options, data);
  LIBVARROW_CHECK(result.end == libvarrow::RunResult::End::RulesBroken);
  LIBVARROW_CHECK(result.brokenRules.at(0) == "late orders: 1, at most 0");
  LIBVARROW_CHECK(data.orders.at(0).name == "frames");
}
// [/pipeline]

// [threads]
// Plans four variants at the same time, each with its own data and folder.
void planVariants(libvarrow::Host& host) {
  std::array<libvarrow::RunResult, 4> results;
  std::array<PlanData, 4> plans;
  std::array<std::thread, 4> threads;
  for (std::size_t i = 0; i < threads.size(); ++i) {
    threads[i] = std::thread([&, i] {
      libvarrow::useCrashStack();
      libvarrow::RunOptions options;
      options.pipeline = "pipeline.json";
      options.folder = "out/" + std::to_string(i);
      options.set = {"Plan.start=2024-03-05 0" + std::to_string(i + 5) + ":00:00"};
      options.dumps = libvarrow::DumpLevel::None;
      results[i] = host.execute(options, plans[i]);
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (std::size_t i = 0; i < threads.size(); ++i) {
    std::cout << "start at " << i + 5 << ": " << plans[i].late() << " late, status "
              << results[i].status() << '\n';
  }
}
// [/threads]

}  // namespace

int main() {
  libvarrow::Host host("orders", "Plans orders on one machine.");
  registerClasses(host);
  testPlan();
  testPipeline(host);
  planVariants(host);
}
