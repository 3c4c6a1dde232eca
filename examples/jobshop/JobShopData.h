// What the modules of a job-shop pipeline work on in turn.
#pragma once

#include <json/value.h>
#include <libvarrow/module/ModuleData.h>
#include <libvarrow/statistics/StatisticsContainer.h>

#include <boost/filesystem/path.hpp>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "Instance.h"
#include "Schedule.h"
#include "calendar/ShopCalendar.h"

namespace jobshop {

/// What the program was called with, as far as modules need it.
struct RunSettings {
  boost::filesystem::path inputFolder;  ///< what ReadInstance's relative paths start from
  std::string instanceFile;             ///< unless empty, read instead of what the pipeline names
  std::size_t progressColumns = 0;      ///< how wide progress bars may be; 0: there are none
};

/// The instance, the best schedule so far, and what was written of it.
class JobShopData : public libvarrow::ModuleData {
 public:
  struct WrittenFile {
    std::string kind;
    boost::filesystem::path path;
  };

  explicit JobShopData(RunSettings settings = {}) : settings_(std::move(settings)) {}

  /// The data that a module of this host is given: `data` has to be a JobShopData.
  static JobShopData& of(libvarrow::ModuleData* data);

  const RunSettings& settings() const { return settings_; }

  /// Forgets calendar and schedule, which were for another instance.
  void setInstance(Instance instance);
  bool hasInstance() const { return instance_.has_value(); }
  /// Throws std::runtime_error, which says what the pipeline lacks, when there is none.
  const Instance& instance() const;

  /// Forgets the schedule, which was for other working time. Throws as lowerBound.
  void setCalendar(ShopCalendar calendar);
  const ShopCalendar& calendar() const { return calendar_; }

  /// That of the instance, with the calendar.
  Time lowerBound() const { return lowerBound_; }

  /// Forgets what was said of another schedule.
  void setSchedule(Schedule schedule);
  bool hasSchedule() const { return schedule_.has_value(); }
  /// As instance().
  const Schedule& schedule() const;

  /// What the user's rules say of the schedule, in a few words; empty when none were asked.
  const std::string& rulesVerdict() const { return rulesVerdict_; }
  void setRulesVerdict(std::string verdict) { rulesVerdict_ = std::move(verdict); }

  void noteWrittenFile(std::string kind, const boost::filesystem::path& path);
  const std::vector<WrittenFile>& writtenFiles() const { return writtenFiles_; }

  /// Where the running module records. A host that runs modules gives its data a container.
  libvarrow::StatisticsContainer& statistics() const;

  Json::Value getBaiscInfoJson() override;
  void dumpDetailInfo(std::string path) const override;
  /// "schedule.csv", "instance.txt" in the form that ReadInstance reads, and "calendar.json", the
  /// keys of a SetCalendars.
  void dump4Debug(std::string path) const override;

 private:
  void forgetSchedule();

  RunSettings settings_;
  std::optional<Instance> instance_;
  ShopCalendar calendar_;
  Time lowerBound_ = 0;
  std::optional<Schedule> schedule_;
  std::string rulesVerdict_;
  std::vector<WrittenFile> writtenFiles_;
};

}  // namespace jobshop
