#include "ScheduleText.h"

#include <libvarrow/stream/FastStringStream.h>

#include <algorithm>
#include <tuple>

namespace jobshop {

namespace {

std::string padded(Time value, std::size_t width) {
  std::string text = std::to_string(value);
  text.insert(0, width - std::min(width, text.size()), ' ');
  return text;
}

std::string padded(std::size_t value, std::size_t width) {
  return padded(static_cast<Time>(value), width);
}

Json::Value operationJson(const ScheduledOperation& operation, const ShopClock& clock) {
  Json::Value json;
  json["machine"] = Json::UInt64(operation.machine);
  json["start"] = Json::Int64(operation.start);
  json["end"] = Json::Int64(operation.end);
  if (clock.isSet()) {
    json["start_clock"] = clock.at(operation.start);
    json["end_clock"] = clock.at(operation.end);
  }
  return json;
}

}  // namespace

Json::Value scheduleJson(const Instance& instance, const Schedule& schedule,
                         const ShopClock& clock) {
  Json::Value json;
  json["instance"] = instance.name;
  json["makespan"] = Json::Int64(schedule.makespan());
  json["lower_bound"] = Json::Int64(instance.lowerBound());
  json["origin"] = schedule.origin;
  Json::Value& jobs = json["jobs"] = Json::Value(Json::arrayValue);
  for (std::size_t job = 0; job < instance.jobs.size(); ++job) jobs.append(Json::arrayValue);
  std::vector<ScheduledOperation> sorted = schedule.operations;
  std::sort(sorted.begin(), sorted.end(), earlierInJob);
  for (const ScheduledOperation& operation : sorted) {
    jobs[static_cast<Json::ArrayIndex>(operation.job)].append(operationJson(operation, clock));
  }
  return json;
}

std::string scheduleCsv(const Schedule& schedule, const ShopClock& clock) {
  std::vector<ScheduledOperation> sorted = schedule.operations;
  std::sort(sorted.begin(), sorted.end(),
            [](const ScheduledOperation& a, const ScheduledOperation& b) {
              return std::tie(a.start, a.machine, a.job, a.position) <
                     std::tie(b.start, b.machine, b.job, b.position);
            });
  libvarrow::FastStringStream csv;
  csv << "job,operation,machine,start,end" << (clock.isSet() ? ",start_clock,end_clock\n" : "\n");
  for (const ScheduledOperation& operation : sorted) {
    csv << operation.job << ',' << operation.position << ',' << operation.machine << ','
        << operation.start << ',' << operation.end;
    if (clock.isSet()) csv << ',' << clock.at(operation.start) << ',' << clock.at(operation.end);
    csv << '\n';
  }
  return csv.str();
}

std::string scheduleByMachine(const Instance& instance, const Schedule& schedule) {
  const Time makespan = schedule.makespan();
  const std::size_t width = std::max<std::size_t>(5, std::to_string(makespan).size());
  const auto machines = schedule.byMachine(instance.machineCount);
  libvarrow::FastStringStream text;
  text << "makespan " << makespan << " (" << schedule.origin << "), lower bound "
       << instance.lowerBound() << '\n';
  for (std::size_t machine = 0; machine < machines.size(); ++machine) {
    text << "\nmachine " << machine << ", busy " << busyTime(machines[machine]) << " of "
         << makespan << '\n';
    Time free = 0;
    for (const ScheduledOperation& operation : machines[machine]) {
      text << "  " << padded(operation.start, width) << " to " << padded(operation.end, width)
           << "  job " << padded(operation.job, 3) << " operation "
           << padded(operation.position, 3);
      if (operation.start > free) text << "   idle before: " << operation.start - free;
      text << '\n';
      free = operation.end;
    }
  }
  return text.str();
}

std::string instanceText(const Instance& instance) {
  libvarrow::FastStringStream text;
  text << instance.jobs.size() << ' ' << instance.machineCount << '\n';
  for (const auto& job : instance.jobs) {
    for (std::size_t i = 0; i < job.size(); ++i) {
      text << (i == 0 ? "" : " ") << job[i].machine << ' ' << job[i].duration;
    }
    text << '\n';
  }
  return text.str();
}

}  // namespace jobshop
