// The module that draws the schedule.
#pragma once

#include <cppbind/imp/binder.h>
#include <libvarrow/module/Module.h>

#include <string>

#include "calendar/ClockKeys.h"

namespace jobshop {

/// Module, in JSON {"DrawGantt": {"file": "gantt.svg", "start": "2024-03-05 06:00:00"}}.
class DrawGantt : public libvarrow::Module {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields);

  /// Draws the schedule. Throws std::runtime_error when the file cannot be written.
  void processImp(libvarrow::ModuleData* data) override;

 private:
  std::string file_;
  ClockKeys clock_;
};

}  // namespace jobshop
