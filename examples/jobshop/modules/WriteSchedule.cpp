#include "modules/WriteSchedule.h"

#include <libvarrow/json/json.h>
#include <libvarrow/stream/AutoCreateDirFileStream.h>

#include <stdexcept>

#include "GanttChart.h"
#include "JobShopData.h"
#include "ScheduleText.h"
#include "ShopClock.h"

namespace jobshop {

namespace {

void writeFile(JobShopData& shop, const char* kind, const std::string& path,
               const std::string& text) {
  libvarrow::AutoCreateDirFileStream file(path);
  file << text << std::flush;
  if (!file) throw std::runtime_error("cannot write " + path);
  shop.noteWrittenFile(kind, path);
}

}  // namespace

void WriteSchedule::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  binder->bind("json", json_, "schedule.json");
  binder->bind("csv", csv_, "schedule.csv");
  binder->bind("gantt", gantt_, "gantt.svg");
  binder->bind("start", start_, boost::posix_time::ptime());
  binder->bind("time_unit", timeUnit_, boost::posix_time::minutes(1));
  if (timeUnit_.is_special() || timeUnit_ < boost::posix_time::seconds(1)) {
    throw cppbind::ParseErrorException("time_unit", "expected at least 00:00:01");
  }
}

void WriteSchedule::processImp(libvarrow::ModuleData* data) {
  JobShopData& shop = JobShopData::of(data);
  const Instance& instance = shop.instance();
  const Schedule& schedule = shop.schedule();
  const ShopCalendar& calendar = shop.calendar();
  const ShopClock clock = start_.is_special() ? calendar.clock() : ShopClock(start_, timeUnit_);

  const libvarrow::TimeRecoderHelper timer(shop.statistics().getTimeStatistics("writing"));
  if (!json_.empty()) {
    const Json::Value json = scheduleJson(instance, schedule, calendar, clock);
    writeFile(shop, "schedule", json_, libvarrow::Json2Str(json) + "\n");
  }
  if (!csv_.empty()) writeFile(shop, "table", csv_, scheduleCsv(schedule, calendar, clock));
  if (!gantt_.empty()) {
    writeFile(shop, "chart", gantt_, ganttChart(instance, schedule, calendar, clock));
  }
}

}  // namespace jobshop
