#include "modules/SetCalendars.h"

#include <libvarrow/log/log.h>

#include <string>

#include "JobShopData.h"
#include "calendar/ShopCalendar.h"

namespace jobshop {

void SetCalendars::setBind(cppbind::Binder* binder, bool bindFields) {
  binder->about("Sets a clock and the working time of machines for all modules after it.");
  settings_.setBind(binder, bindFields);
}

void SetCalendars::processImp(libvarrow::ModuleData* data) {
  JobShopData& shop = JobShopData::of(data);
  const std::size_t machineCount = shop.instance().machineCount;
  const libvarrow::TimeRecoderHelper timer(shop.statistics().getTimeStatistics("calendars"));
  shop.setCalendar(ShopCalendar(settings_, machineCount));

  const ShopCalendar& calendar = shop.calendar();
  const Time week = boost::posix_time::hours(24 * 7).ticks() / settings_.timeUnit.ticks();
  auto* const weeks = shop.statistics().getDistributionStatistics("working_time_in_first_week");
  for (std::size_t machine = 0; machine < machineCount; ++machine) {
    const Time working = calendar.of(machine).workingTime(0, week);
    weeks->inc("machine " + std::to_string(machine), static_cast<std::uint64_t>(working));
  }
  LIBVARROW_LOG_INFO("calendars from %s, %zu machines with their own hours",
                     calendar.clock().at(0).c_str(), settings_.machines.size());
}

}  // namespace jobshop
