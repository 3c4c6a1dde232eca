// Calendars as text, for people and for a pipeline file.
#pragma once

#include <cstddef>
#include <string>

#include "calendar/ShopCalendar.h"

namespace jobshop {

/// Returns, as JSON, the keys of a SetCalendars that creates this calendar. Precondition: it is
/// set.
std::string calendarKeys(const ShopCalendar& calendar);

/// Returns the working time of each machine in the first week.
std::string calendarText(const ShopCalendar& calendar, std::size_t machineCount);

}  // namespace jobshop
