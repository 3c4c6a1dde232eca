// The module that writes the schedule for those who use it.
#pragma once

#include <cppbind/imp/binder.h>
#include <libvarrow/module/Module.h>

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <string>

namespace jobshop {

/// In JSON: {"WriteSchedule": {"gantt": "gantt.svg", "start": "2024-03-05 06:00:00"}}.
class WriteSchedule : public libvarrow::Module {
 public:
  /// - "json", "schedule.json"; "csv", "schedule.csv"; "gantt", "gantt.svg": where to write each,
  ///   from the run's folder unless absolute; "" leaves it out;
  /// - "start", that of the calendar if there is one: when the schedule starts, "2024-03-05
  ///   06:00:00"; clock times then stand beside the time units;
  /// - "time_unit", "00:01:00": how long a time unit is on a clock that starts at "start".
  void setBind(cppbind::Binder* binder, bool bindFields);

  /// Throws std::runtime_error for a file that cannot be written.
  void processImp(libvarrow::ModuleData* data) override;

 private:
  std::string json_;
  std::string csv_;
  std::string gantt_;
  boost::posix_time::ptime start_;
  boost::posix_time::time_duration timeUnit_;
};

}  // namespace jobshop
