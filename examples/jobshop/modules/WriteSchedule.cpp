#include "modules/WriteSchedule.h"

#include <libvarrow/json/json.h>

#include "JobShopData.h"
#include "OutputFile.h"
#include "ScheduleText.h"

namespace jobshop {

void WriteSchedule::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  binder->bind("json", json_, "schedule.json");
  binder->bind("csv", csv_, "schedule.csv");
  clock_.setBind(binder, bindFields);
}

void WriteSchedule::processImp(libvarrow::ModuleData* data) {
  JobShopData& shop = JobShopData::of(data);
  const Schedule& schedule = shop.schedule();
  const ShopCalendar& calendar = shop.calendar();
  const ShopClock clock = clock_.clockFor(calendar);

  const libvarrow::TimeRecoderHelper timer(shop.statistics().getTimeStatistics("writing"));
  if (!json_.empty()) {
    const Json::Value json = scheduleJson(shop.instance(), schedule, calendar, clock);
    writeOutput(shop, "schedule", json_, libvarrow::Json2Str(json));
  }
  if (!csv_.empty()) writeOutput(shop, "table", csv_, scheduleCsv(schedule, calendar, clock));
}

}  // namespace jobshop
