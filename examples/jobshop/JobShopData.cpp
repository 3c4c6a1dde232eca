#include "JobShopData.h"

#include <libvarrow/backtrace/Check.h>
#include <libvarrow/stream/AutoCreateDirFileStream.h>

#include <boost/filesystem/operations.hpp>
#include <stdexcept>
#include <utility>

#include "LowerBound.h"
#include "ScheduleText.h"
#include "calendar/CalendarText.h"

namespace jobshop {

JobShopData& JobShopData::of(libvarrow::ModuleData* data) {
  auto* const shop = dynamic_cast<JobShopData*>(data);
  LIBVARROW_CHECK(shop != nullptr);
  return *shop;
}

void JobShopData::setInstance(Instance instance) {
  lowerBound_ = jobshop::lowerBound(instance);
  instance_ = std::move(instance);
  calendar_ = {};
  forgetSchedule();
}

void JobShopData::setCalendar(ShopCalendar calendar) {
  lowerBound_ = jobshop::lowerBound(this->instance(), calendar);
  calendar_ = std::move(calendar);
  forgetSchedule();
}

void JobShopData::setSchedule(Schedule schedule) {
  forgetSchedule();
  schedule_ = std::move(schedule);
}

void JobShopData::forgetSchedule() {
  schedule_.reset();
  rulesVerdict_.clear();
}

const Instance& JobShopData::instance() const {
  if (!instance_) throw std::runtime_error("no instance yet: a ReadInstance has to come before");
  return *instance_;
}

const Schedule& JobShopData::schedule() const {
  if (!schedule_) throw std::runtime_error("no schedule yet: a Dispatch has to come before");
  return *schedule_;
}

void JobShopData::noteWrittenFile(std::string kind, const boost::filesystem::path& path) {
  writtenFiles_.push_back({std::move(kind), boost::filesystem::absolute(path)});
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

void JobShopData::dumpDetailInfo(std::string path) const {
  libvarrow::AutoCreateDirFileStream file(path);
  if (!instance_) {
    file << "no instance yet\n";
    return;
  }
  file << "instance " << instance_->name << ": " << instance_->jobs.size() << " jobs, "
       << instance_->machineCount << " machines\n";
  if (calendar_.isSet()) file << calendarText(calendar_, instance_->machineCount);
  if (!schedule_) {
    file << "no schedule yet\n";
    return;
  }
  file << scheduleByMachine(*instance_, *schedule_, calendar_);
}

void JobShopData::dump4Debug(std::string path) const {
  if (instance_) {
    libvarrow::AutoCreateDirFileStream(path + "instance.txt") << instanceText(*instance_);
  }
  if (calendar_.isSet()) {
    libvarrow::AutoCreateDirFileStream(path + "calendar.json") << calendarKeys(calendar_) << '\n';
  }
  if (schedule_) {
    libvarrow::AutoCreateDirFileStream(path + "schedule.csv")
        << scheduleCsv(*schedule_, calendar_, calendar_.clock());
  }
}

}  // namespace jobshop
