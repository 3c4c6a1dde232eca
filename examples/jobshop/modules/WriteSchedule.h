// The module that writes the schedule for those who use it.
#pragma once

#include <cppbind/imp/binder.h>
#include <libvarrow/module/Module.h>

#include <string>

#include "calendar/ClockKeys.h"

namespace jobshop {

/// In JSON: {"WriteSchedule": {"csv": "plan.csv", "start": "2024-03-05 06:00:00"}}.
class WriteSchedule : public libvarrow::Module {
 public:
  /// - "json", "schedule.json"; "csv", "schedule.csv": where to write each, from the run's folder
  ///   unless absolute; "" leaves it out;
  /// - the keys of ClockKeys.
  void setBind(cppbind::Binder* binder, bool bindFields);

  /// Throws std::runtime_error for a file that cannot be written.
  void processImp(libvarrow::ModuleData* data) override;

 private:
  std::string json_;
  std::string csv_;
  ClockKeys clock_;
};

}  // namespace jobshop
