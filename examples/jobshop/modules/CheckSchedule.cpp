#include "modules/CheckSchedule.h"

#include <libvarrow/log/log.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "JobShopData.h"
#include "schedule/EarlierStarts.h"
#include "schedule/ScheduleChecker.h"

namespace jobshop {

void CheckSchedule::setBind(cppbind::Binder* binder, bool) {
  binder->about(
      "Ends the run if the schedule is not feasible, and records why operations do not start "
      "earlier.");
}

void CheckSchedule::processImp(libvarrow::ModuleData* data) {
  JobShopData& shop = JobShopData::of(data);
  const Schedule& schedule = shop.schedule();
  const std::vector<std::string> violations =
      findViolations(shop.instance(), schedule, shop.calendar());
  shop.statistics()
      .getPercentStatistics("violations", schedule.operations.size())
      ->inc(violations.size());
  if (violations.empty()) {
    recordEarlierStarts(shop.instance(), schedule, shop.calendar(),
                        *shop.statistics().getRejectionStatistics("earlier starts"));
    return;
  }
  for (const std::string& violation : violations) LIBVARROW_LOG_ERROR("%s", violation.c_str());
  throw std::runtime_error("the schedule is not feasible: " + violations.front() + " (" +
                           std::to_string(violations.size()) + " in all)");
}

}  // namespace jobshop
