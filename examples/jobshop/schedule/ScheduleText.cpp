#include "schedule/ScheduleText.h"

#include <libvarrow/stream/FastStringStream.h>

#include <algorithm>
#include <tuple>

#include "problem/LowerBound.h"

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

Json::Value spanJson(const Span& span, const ShopClock& clock) {
  Json::Value json;
  json["start"] = Json::Int64(span.start);
  json["end"] = Json::Int64(span.end);
  if (clock.isSet()) {
    json["start_clock"] = clock.at(span.start);
    json["end_clock"] = clock.at(span.end);
  }
  return json;
}

Json::Value operationJson(const ScheduledOperation& operation, const ShopCalendar& calendar,
                          const ShopClock& clock) {
  Json::Value json = spanJson({operation.start, operation.end}, clock);
  json["machine"] = Json::UInt64(operation.machine);
  if (!calendar.isSet()) return json;
  const MachineCalendar& machine = calendar.of(operation.machine);
  json["work"] = Json::Int64(machine.workingTime(operation.start, operation.end));
  for (const Span& gap : machine.gaps(operation.start, operation.end)) {
    json["interruptions"].append(spanJson(gap, clock));
  }
  return json;
}

void writeLine(libvarrow::FastStringStream& text, const ScheduledOperation& operation,
               const MachineCalendar& calendar, Time free, std::size_t width) {
  text << "  " << padded(operation.start, width) << " to " << padded(operation.end, width)
       << "  job " << padded(operation.job, 3) << " operation " << padded(operation.position, 3);
  const Time idle = calendar.workingTime(free, operation.start);
  if (idle > 0) text << "   idle before: " << idle;
  const char* separator = "   interrupted: ";
  for (const Span& gap : calendar.gaps(operation.start, operation.end)) {
    text << separator << gap.start << " to " << gap.end;
    separator = ", ";
  }
  text << '\n';
}

}  // namespace

Json::Value scheduleJson(const Instance& instance, const Schedule& schedule,
                         const ShopCalendar& calendar, const ShopClock& clock) {
  Json::Value json;
  json["instance"] = instance.name;
  json["makespan"] = Json::Int64(schedule.makespan());
  json["lower_bound"] = Json::Int64(lowerBound(instance, calendar));
  json["origin"] = schedule.origin;
  Json::Value& jobs = json["jobs"] = Json::Value(Json::arrayValue);
  for (std::size_t job = 0; job < instance.jobs.size(); ++job) jobs.append(Json::arrayValue);
  std::vector<ScheduledOperation> sorted = schedule.operations;
  std::sort(sorted.begin(), sorted.end(), earlierInJob);
  for (const ScheduledOperation& operation : sorted) {
    jobs[static_cast<Json::ArrayIndex>(operation.job)].append(
        operationJson(operation, calendar, clock));
  }
  return json;
}

std::string scheduleCsv(const Schedule& schedule, const ShopCalendar& calendar,
                        const ShopClock& clock) {
  std::vector<ScheduledOperation> sorted = schedule.operations;
  std::sort(sorted.begin(), sorted.end(),
            [](const ScheduledOperation& a, const ScheduledOperation& b) {
              return std::tie(a.start, a.machine, a.job, a.position) <
                     std::tie(b.start, b.machine, b.job, b.position);
            });
  libvarrow::FastStringStream csv;
  csv << "job,operation,machine,start,end" << (clock.isSet() ? ",start_clock,end_clock" : "")
      << (calendar.isSet() ? ",work\n" : "\n");
  for (const ScheduledOperation& operation : sorted) {
    csv << operation.job << ',' << operation.position << ',' << operation.machine << ','
        << operation.start << ',' << operation.end;
    if (clock.isSet()) csv << ',' << clock.at(operation.start) << ',' << clock.at(operation.end);
    if (calendar.isSet()) {
      csv << ',' << calendar.of(operation.machine).workingTime(operation.start, operation.end);
    }
    csv << '\n';
  }
  return csv.str();
}

std::string scheduleByMachine(const Instance& instance, const Schedule& schedule,
                              const ShopCalendar& calendar) {
  const Time makespan = schedule.makespan();
  const std::size_t width = std::max<std::size_t>(5, std::to_string(makespan).size());
  const auto machines = schedule.byMachine(instance.machineCount);
  libvarrow::FastStringStream text;
  text << "makespan " << makespan << " (" << schedule.origin << "), lower bound "
       << lowerBound(instance, calendar) << '\n';
  for (std::size_t machine = 0; machine < machines.size(); ++machine) {
    const MachineCalendar& own = calendar.of(machine);
    text << "\nmachine " << machine << ", busy " << busyTime(machines[machine], own) << " of "
         << own.workingTime(0, makespan) << '\n';
    Time free = 0;
    for (const ScheduledOperation& operation : machines[machine]) {
      writeLine(text, operation, own, free, width);
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
