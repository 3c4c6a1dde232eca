#include "JobShopData.h"

#include <libvarrow/backtrace/Check.h>
#include <libvarrow/stream/AutoCreateDirFileStream.h>

#include <boost/filesystem/operations.hpp>
#include <stdexcept>
#include <utility>

#include "ScheduleText.h"

namespace jobshop {

JobShopData& JobShopData::of(libvarrow::ModuleData* data) {
  auto* const shop = dynamic_cast<JobShopData*>(data);
  LIBVARROW_CHECK(shop != nullptr);
  return *shop;
}

void JobShopData::setInstance(Instance instance) {
  instance_ = std::move(instance);
  schedule_.reset();
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
    info["lower_bound"] = Json::Int64(instance_->lowerBound());
  }
  info["operations_scheduled"] = Json::UInt64(schedule_ ? schedule_->operations.size() : 0);
  if (schedule_) {
    info["makespan"] = Json::Int64(schedule_->makespan());
    info["origin"] = schedule_->origin;
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
  if (!schedule_) {
    file << "no schedule yet\n";
    return;
  }
  file << scheduleByMachine(*instance_, *schedule_);
}

void JobShopData::dump4Debug(std::string path) const {
  if (instance_) {
    libvarrow::AutoCreateDirFileStream(path + "instance.txt") << instanceText(*instance_);
  }
  if (schedule_) {
    libvarrow::AutoCreateDirFileStream(path + "schedule.csv") << scheduleCsv(*schedule_, {});
  }
}

}  // namespace jobshop
