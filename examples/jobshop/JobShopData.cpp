#include "JobShopData.h"

#include <cppbind/cppbind.h>
#include <libvarrow/backtrace/Check.h>
#include <libvarrow/json/json.h>

#include <stdexcept>
#include <utility>

#include "OutputFile.h"
#include "calendar/CalendarText.h"
#include "problem/InstanceReader.h"
#include "problem/LowerBound.h"
#include "schedule/ScheduleReader.h"
#include "schedule/ScheduleText.h"

namespace jobshop {

namespace {

// The texts of the data, which tell what else a debug dump has.
struct DumpedState {
  std::optional<std::string> instance;
  std::optional<std::string> origin;  // of the schedule
  std::string rules;
  bool hasCalendar = false;

  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (!bindFields) return;
    binder->bind("instance", instance);
    binder->bind("origin", origin);
    binder->bind("rules", rules);
    binder->bind("has_calendar", hasCalendar);
  }
};

template <class T>
T readObject(const std::string& file) {
  T object;
  cppbind::JsonDecodeBinder().decode(cppbind::readJsonFile(file), object);
  return object;
}

}  // namespace

JobShopData& JobShopData::of(libvarrow::ModuleData* data) {
  auto* const shop = dynamic_cast<JobShopData*>(data);
  LIBVARROW_CHECK(shop != nullptr);
  return *shop;
}

void JobShopData::setInstance(Instance instance) {
  lowerBound_ = jobshop::lowerBound(instance);
  instance_ = std::move(instance);
  calendar_ = {};
  clearSchedule();
}

void JobShopData::setCalendar(ShopCalendar calendar) {
  lowerBound_ = jobshop::lowerBound(this->instance(), calendar);
  calendar_ = std::move(calendar);
  clearSchedule();
}

void JobShopData::setSchedule(Schedule schedule) {
  clearSchedule();
  schedule_ = std::move(schedule);
}

void JobShopData::clearSchedule() {
  schedule_.reset();
  rulesVerdict_.clear();
}

const Instance& JobShopData::instance() const {
  if (!instance_) throw std::runtime_error("no instance: ReadInstance must run before this module");
  return *instance_;
}

const Schedule& JobShopData::schedule() const {
  if (!schedule_) throw std::runtime_error("no schedule: Dispatch must run before this module");
  return *schedule_;
}

libvarrow::StatisticsContainer& JobShopData::statistics() const {
  LIBVARROW_CHECK(statisticsContainer != nullptr);
  return *statisticsContainer;
}

Json::Value JobShopData::getBaiscInfoJson() {
  Json::Value info(Json::objectValue);
  if (instance_) {
    info["instance"] = instance_->name;
    info["jobs"] = Json::UInt64(instance_->jobs.size());
    info["machines"] = Json::UInt64(instance_->machineCount);
    info["operations"] = Json::UInt64(instance_->operationCount());
    info["lower_bound"] = Json::Int64(lowerBound_);
  }
  if (calendar_.isSet()) info["start"] = calendar_.clock().at(0);
  info["operations_scheduled"] = Json::UInt64(schedule_ ? schedule_->operations.size() : 0);
  if (schedule_) {
    info["makespan"] = Json::Int64(schedule_->makespan());
    if (calendar_.isSet()) info["end"] = calendar_.clock().at(schedule_->makespan());
    info["origin"] = schedule_->origin;
    if (!rulesVerdict_.empty()) info["rules"] = rulesVerdict_;
  }
  return info;
}

std::string JobShopData::detailText() const {
  if (!instance_) return "no instance yet\n";
  std::string text = "instance " + instance_->name + ": " + std::to_string(instance_->jobs.size()) +
                     " jobs, " + std::to_string(instance_->machineCount) + " machines\n";
  if (calendar_.isSet()) text += calendarText(calendar_, instance_->machineCount);
  return text +
         (schedule_ ? scheduleByMachine(*instance_, *schedule_, calendar_) : "no schedule yet\n");
}

void JobShopData::dumpDetailInfo(std::string path) const {
  writeText(path, detailText());
}

void JobShopData::dump4Debug(std::string path) const {
  if (instance_) writeText(path + "instance.txt", instanceText(*instance_));
  if (calendar_.isSet()) {
    writeText(path + "calendar.json", calendarKeys(calendar_) + '\n');
  }
  if (schedule_) {
    writeText(path + "schedule.csv", scheduleCsv(*schedule_, calendar_, calendar_.clock()));
  }
  DumpedState state{{}, {}, rulesVerdict_, calendar_.isSet()};
  if (instance_) state.instance = instance_->name;
  if (schedule_) state.origin = schedule_->origin;
  writeText(path + "state.json", libvarrow::Json2Str(cppbind::JsonEncodeBinder().encode(state)));
}

void JobShopData::restore4Debug(const std::string& path) {
  const auto state = readObject<DumpedState>(path + "state.json");
  instance_.reset();
  calendar_ = {};
  lowerBound_ = 0;
  clearSchedule();
  if (!state.instance) return;
  Instance instance = readInstance(path + "instance.txt");
  instance.name = *state.instance;
  setInstance(std::move(instance));
  if (state.hasCalendar) {
    const auto settings = readObject<CalendarSettings>(path + "calendar.json");
    setCalendar(ShopCalendar(settings, this->instance().machineCount));
  }
  if (!state.origin) return;
  setSchedule({readScheduleCsv(path + "schedule.csv", this->instance()), *state.origin});
  setRulesVerdict(state.rules);
}

}  // namespace jobshop
