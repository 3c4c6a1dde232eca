#include "RunSummary.h"

#include <iomanip>
#include <iostream>
#include <string>

#include "OneLine.h"

namespace jobshop {

namespace {

void line(const std::string& label, const std::string& text) {
  std::cout << std::left << std::setw(13) << label << oneLine(text) << '\n';
}

void printResult(const JobShopData& data) {
  if (data.hasInstance()) {
    const Instance& instance = data.instance();
    line("instance", instance.name + ", " + std::to_string(instance.jobs.size()) + " jobs by " +
                         std::to_string(instance.machineCount) + " machines");
  }
  if (!data.hasSchedule()) return;
  const Schedule& schedule = data.schedule();
  line("makespan", std::to_string(schedule.makespan()) + " (" + schedule.origin +
                       "), lower bound " + std::to_string(data.lowerBound()));
  const ShopClock& clock = data.calendar().clock();
  if (clock.isSet()) line("clock", clock.at(0) + " to " + clock.at(schedule.makespan()));
  if (!data.rulesVerdict().empty()) line("rules", data.rulesVerdict());
}

}  // namespace

void printSummary(const RunFolder& run, const JobShopData& data) {
  printResult(data);
  line("run folder", run.folder.generic_string());
  line("statistics", run.statistics.generic_string());
  line("dumps", run.dumps.generic_string());
  for (const auto& file : data.writtenFiles()) line(file.kind, file.path.generic_string());
}

}  // namespace jobshop
