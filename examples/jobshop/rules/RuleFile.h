// The rules of one file, and what they say of a schedule.
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
  /// Reads `path` with the classes of kRuleRegister. A file that is not there, classes that are
  /// unknown, and keys that do not fit throw std::runtime_error, which begins with the path; what
  /// is no rule file at all ends the process, as RuleLoader does.
  explicit RuleFile(const boost::filesystem::path& path);

  /// Shows the enabled rules every job and every machine of the schedule in `shop`. The report's
  /// validators are "jobs" and "machines"; it has an entry for each job or machine that breaks a
  /// rule. Call it once. Throws std::runtime_error for a rule about what the instance does not
  /// have.
  libvarrow::ValidatorReason check(const JobShopData& shop);

  std::size_t enabledCount() const;
  /// Of rules, not of complaints.
  std::size_t brokenCount() const;
  const std::vector<std::unique_ptr<ScheduleRule>>& rules() const { return rules_; }

 private:
  void read(const boost::filesystem::path& path);
  void checkThing(const char* validator, libvarrow::RuleParameter& thing,
                  libvarrow::ValidatorReason& report);

  std::vector<std::unique_ptr<ScheduleRule>> rules_;
};

}  // namespace jobshop
