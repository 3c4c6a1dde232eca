// The data that the modules of a job-shop pipeline work on, one after the other.
#pragma once

#include <json/value.h>
#include <libvarrow/module/ModuleData.h>
#include <libvarrow/statistics/StatisticsContainer.h>

#include <optional>
#include <string>

#include "calendar/ShopCalendar.h"
#include "problem/Instance.h"
#include "schedule/Schedule.h"

namespace jobshop {

/// Data of a run: the instance and the best schedule so far.
class JobShopData : public libvarrow::ModuleData {
 public:
  /// Returns `data` as a JobShopData. Aborts when it is not one.
  static JobShopData& of(libvarrow::ModuleData* data);

  /// Sets the instance; discards calendar and schedule, which belong to another one.
  void setInstance(Instance instance);
  bool hasInstance() const { return instance_.has_value(); }
  /// Returns the instance. Throws std::runtime_error, which names the missing module, when none is
  /// set.
  const Instance& instance() const;

  /// Sets the calendar; discards the schedule, which belongs to another one. Throws like
  /// lowerBound.
  void setCalendar(ShopCalendar calendar);
  const ShopCalendar& calendar() const { return calendar_; }

  /// Returns the lower bound of the instance with the calendar.
  Time lowerBound() const { return lowerBound_; }

  /// Sets the schedule; discards the rules' verdict on another one.
  void setSchedule(Schedule schedule);
  bool hasSchedule() const { return schedule_.has_value(); }
  /// Returns the schedule. Throws like instance() when none is set.
  const Schedule& schedule() const;

  /// Returns the verdict of the user's rules on the schedule, in a few words; empty before a check.
  const std::string& rulesVerdict() const { return rulesVerdict_; }
  void setRulesVerdict(std::string verdict) { rulesVerdict_ = std::move(verdict); }

  /// Returns the container that the running module records in. Aborts when the host has set none.
  libvarrow::StatisticsContainer& statistics() const;

  Json::Value getBaiscInfoJson() override;
  void dumpDetailInfo(std::string path) const override;
  /// Writes "schedule.csv", "instance.txt" in the form that ReadInstance reads, "calendar.json",
  /// the keys of a SetCalendars, and "state.json", the texts that the others lack.
  void dump4Debug(std::string path) const override;
  /// Reads these files. Throws std::runtime_error when one of them does not fit.
  void restore4Debug(const std::string& path) override;

 private:
  void clearSchedule();
  std::string detailText() const;

  std::optional<Instance> instance_;
  ShopCalendar calendar_;
  Time lowerBound_ = 0;
  std::optional<Schedule> schedule_;
  std::string rulesVerdict_;
};

}  // namespace jobshop
