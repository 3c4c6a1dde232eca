#include "ShopClock.h"

#include <libvarrow/time/time_range.h>

#include <stdexcept>

namespace jobshop {

std::string ShopClock::at(Time time) const {
  const boost::posix_time::ptime last(boost::posix_time::max_date_time);
  // Divided rather than multiplied: the product might not fit.
  if (time > (last - start_).total_seconds() / unit_.total_seconds()) {
    throw std::runtime_error("the clock that starts at " + libvarrow::time2str(start_) +
                             " does not reach time " + std::to_string(time));
  }
  return libvarrow::time2str(start_ + boost::posix_time::seconds(time * unit_.total_seconds()));
}

}  // namespace jobshop
