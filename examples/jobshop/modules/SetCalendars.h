// The module that sets when machines work.
#pragma once

#include <cppbind/imp/binder.h>
#include <libvarrow/module/Module.h>

#include "calendar/CalendarSettings.h"

namespace jobshop {

/// Module that sets a clock and the working time of machines for all modules after it.
///
/// In JSON: {"SetCalendars": {"start": "2024-03-01 06:00:00",
///                            "shifts": [{"from": "06:00:00", "to": "14:00:00"}]}}.
class SetCalendars : public libvarrow::Module {
 public:
  /// Binds the keys of CalendarSettings.
  void setBind(cppbind::Binder* binder, bool bindFields);

  /// Sets the calendar. Throws std::runtime_error like ShopCalendar, and when a calendar is too
  /// short for any schedule.
  void processImp(libvarrow::ModuleData* data) override;

 private:
  CalendarSettings settings_;
};

}  // namespace jobshop
