#include "summarize.h"

#include <libvarrow/utility/UTFConverter.h>

#include <string>

namespace jobshop {

void summarize(const JobShopData& data, libvarrow::Summary& summary) {
  if (!data.hasInstance()) return;
  const Instance& instance = data.instance();
  summary.add("instance", libvarrow::utility::fromUtf8(instance.name) + ", " +
                              std::to_string(instance.jobs.size()) + " jobs by " +
                              std::to_string(instance.machineCount) + " machines");
  if (!data.hasSchedule()) return;
  const Schedule& schedule = data.schedule();
  summary.add("makespan", std::to_string(schedule.makespan()) + " (" + schedule.origin +
                              "), lower bound " + std::to_string(data.lowerBound()));
  const ShopClock& clock = data.calendar().clock();
  if (clock.isSet()) summary.add("clock", clock.at(0) + " to " + clock.at(schedule.makespan()));
  if (!data.rulesVerdict().empty()) summary.add("rules", data.rulesVerdict());
}

}  // namespace jobshop
