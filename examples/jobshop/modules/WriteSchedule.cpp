#include "modules/WriteSchedule.h"

#include <libvarrow/json/json.h>

#include "JobShopData.h"
#include "OutputFile.h"
#include "schedule/ScheduleText.h"

namespace jobshop {

void WriteSchedule::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  binder->about("Writes the schedule to files.");
  const std::string file = " file, from the run's folder unless absolute; \"\" for none.";
  binder->field("json", json_, "schedule.json").about("The JSON" + file);
  binder->field("csv", csv_, "schedule.csv").about("The CSV" + file);
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
