#include "rules/MachineLoad.h"

#include <cmath>
#include <string>

namespace jobshop {

namespace {

// Returns `part` as a percentage with one decimal.
std::string percent(double part) {
  const std::string tenths = std::to_string(std::lround(part * 1000));
  const std::string padded = tenths.size() > 1 ? tenths : "0" + tenths;
  return padded.substr(0, padded.size() - 1) + "." + padded.back() + " %";
}

}  // namespace

void MachineLoad::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  MachineRule::setBind(binder, bindFields);
  binder->about("Limits the load of machines.");
  binder->field("at_most", atMost_)
      .between(0, 1)
      .about("The largest part of its working time, up to the makespan, that a machine is busy.");
}

ScheduleRule::Complaint MachineLoad::complaintOf(const MachineParameter& parameter) const {
  const Time working = parameter.calendar->workingTime(0, parameter.makespan);
  const Time busy = busyTime(parameter.operations, *parameter.calendar);
  if (busy == 0) return std::nullopt;
  // Divides, since the limit is the number nearest to its decimals: 29 of 100 then equals 0.29.
  const double load = static_cast<double>(busy) / static_cast<double>(working);
  if (load <= atMost_) return std::nullopt;
  Json::Value complaint;
  complaint["machine"] = Json::UInt64(parameter.machine);
  complaint["busy"] = Json::Int64(busy);
  complaint["working"] = Json::Int64(working);
  complaint["found"] = load;
  complaint["limit"] = atMost_;
  complaint["reasonStr"] = parameter.dumpStr() + " is busy " + std::to_string(busy) + " of " +
                           std::to_string(working) + ", " + percent(load) + ", more than " +
                           percent(atMost_);
  return complaint;
}

}  // namespace jobshop
