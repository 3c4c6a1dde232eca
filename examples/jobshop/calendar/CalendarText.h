// Calendars as text, for people and for a pipeline file.
#pragma once

#include <cstddef>
#include <string>

#include "calendar/ShopCalendar.h"

namespace jobshop {

/// The keys of a SetCalendars that makes this calendar, which is set, as JSON.
std::string calendarKeys(const ShopCalendar& calendar);

/// When each machine works in the first week.
std::string calendarText(const ShopCalendar& calendar, std::size_t machineCount);

}  // namespace jobshop
