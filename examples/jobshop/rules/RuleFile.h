// The rules of one file, and their check of a schedule.
#pragma once

#include <libvarrow/xrule/ValidatorReason.h>

#include <boost/filesystem/path.hpp>
#include <cstddef>
#include <memory>
#include <vector>

#include "JobShopData.h"
#include "rules/ScheduleRule.h"

namespace jobshop {

class RuleFile {
 public:
  /// Reads `path` with the classes of kRuleRegister. Throws std::runtime_error, which begins with
  /// the path, when the file does not exist, a class is unknown or a key does not fit. Ends the
  /// process, like RuleLoader, when it is not a rule file at all.
  explicit RuleFile(const boost::filesystem::path& path);

  /// Checks every job and every machine of the schedule in `shop` against the enabled rules.
  /// Returns a report with the validators "jobs" and "machines" and an entry for each job or
  /// machine that breaks a rule. Throws std::runtime_error when a rule is about an object that the
  /// instance does not have. Call it once.
  libvarrow::ValidatorReason check(const JobShopData& shop);

  std::size_t enabledCount() const;
  /// Returns the number of broken rules, not of complaints.
  std::size_t brokenCount() const;
  const std::vector<std::unique_ptr<ScheduleRule>>& rules() const { return rules_; }

 private:
  void read(const boost::filesystem::path& path);
  void checkThing(const char* validator, libvarrow::RuleParameter& thing,
                  libvarrow::ValidatorReason& report);

  std::vector<std::unique_ptr<ScheduleRule>> rules_;
};

}  // namespace jobshop
