// The module that draws the schedule.
#pragma once

#include <cppbind/imp/binder.h>
#include <libvarrow/module/Module.h>

#include <string>

#include "calendar/ClockKeys.h"

namespace jobshop {

/// In JSON: {"DrawGantt": {"file": "gantt.svg", "start": "2024-03-05 06:00:00"}}.
class DrawGantt : public libvarrow::Module {
 public:
  /// - "file", "gantt.svg": where to, from the run's folder unless absolute;
  /// - the keys of ClockKeys.
  void setBind(cppbind::Binder* binder, bool bindFields);

  /// Throws std::runtime_error for a file that cannot be written.
  void processImp(libvarrow::ModuleData* data) override;

 private:
  std::string file_;
  ClockKeys clock_;
};

}  // namespace jobshop
