// The module that writes the schedule to files.
#pragma once

#include <cppbind/imp/binder.h>
#include <libvarrow/module/Module.h>

#include <string>

#include "calendar/ClockKeys.h"

namespace jobshop {

/// Module, in JSON {"WriteSchedule": {"csv": "plan.csv", "start": "2024-03-05 06:00:00"}}.
class WriteSchedule : public libvarrow::Module {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields);

  /// Writes the schedule. Throws std::runtime_error when a file cannot be written.
  void processImp(libvarrow::ModuleData* data) override;

 private:
  std::string json_;
  std::string csv_;
  ClockKeys clock_;
};

}  // namespace jobshop
