#include "calendar/ShopClock.h"

#include <libvarrow/time/time_range.h>

#include <stdexcept>

namespace jobshop {

using boost::posix_time::ptime;

ptime ShopClock::pointAt(Time time) const {
  const ptime last(boost::posix_time::max_date_time);
  // Divides instead of multiplying: the product may overflow.
  if (time > unitsUntil(last)) {
    throw std::runtime_error("the clock that starts at " + libvarrow::time2str(start_) +
                             " does not reach time " + std::to_string(time));
  }
  return start_ + boost::posix_time::time_duration(0, 0, 0, time * unit_.ticks());
}

std::string ShopClock::at(Time time) const {
  return libvarrow::time2str(pointAt(time));
}

Time ShopClock::unitsUntil(const ptime& point) const {
  return (point - start_).ticks() / unit_.ticks();
}

}  // namespace jobshop
