#include "rules/RuleFile.h"

#include <libvarrow/utility/RegistersManager.h>
#include <libvarrow/xrule/RuleLoader.h>

#include <algorithm>
#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>
#include <stdexcept>
#include <string>
#include <utility>

#include "rules/parameters.h"
#include "rules/registerRules.h"

namespace jobshop {

namespace {

std::vector<JobParameter> jobsOf(const JobShopData& shop) {
  std::vector<JobParameter> jobs(shop.instance().jobs.size());
  for (std::size_t job = 0; job < jobs.size(); ++job) jobs[job].job = job;
  for (const ScheduledOperation& operation : shop.schedule().operations) {
    jobs.at(operation.job).operations.push_back(operation);
  }
  for (JobParameter& job : jobs) {
    std::sort(job.operations.begin(), job.operations.end(), earlierInJob);
  }
  return jobs;
}

std::vector<MachineParameter> machinesOf(const JobShopData& shop) {
  auto operations = shop.schedule().byMachine(shop.instance().machineCount);
  std::vector<MachineParameter> machines(operations.size());
  const Time makespan = shop.schedule().makespan();
  for (std::size_t machine = 0; machine < machines.size(); ++machine) {
    machines[machine].machine = machine;
    machines[machine].operations = std::move(operations[machine]);
    machines[machine].makespan = makespan;
    machines[machine].calendar = &shop.calendar().of(machine);
  }
  return machines;
}

}  // namespace

RuleFile::RuleFile(const boost::filesystem::path& path) {
  try {
    read(path);
  } catch (const std::exception& error) {
    throw std::runtime_error(path.generic_string() + ": " + error.what());
  }
}

void RuleFile::read(const boost::filesystem::path& path) {
  // The loader would end the process, which is too severe for a wrong path in a pipeline file.
  if (!boost::filesystem::exists(path)) throw std::runtime_error("the rule file does not exist");
  const auto* const classes = libvarrow::RegistersManager::getRegister(kRuleRegister);
  if (classes == nullptr) throw std::logic_error("no rule classes are registered");
  std::vector<std::unique_ptr<libvarrow::Rule>> loaded;
  for (libvarrow::Rule* const rule :
       libvarrow::RuleLoader::loadRules(path.generic_string().c_str(), classes)) {
    loaded.emplace_back(rule);
  }
  for (auto& rule : loaded) {
    auto* const scheduleRule = dynamic_cast<ScheduleRule*>(rule.get());
    if (scheduleRule == nullptr) {
      throw std::runtime_error(rule->dumpStr() + " is not a rule for schedules");
    }
    static_cast<void>(rule.release());
    rules_.emplace_back(scheduleRule);
  }
}

libvarrow::ValidatorReason RuleFile::check(const JobShopData& shop) {
  for (const auto& rule : rules_) rule->requireFits(shop.instance());
  libvarrow::ValidatorReason report(shop.instance().name + " by " + shop.schedule().origin);
  for (JobParameter& job : jobsOf(shop)) checkThing("jobs", job, report);
  for (MachineParameter& machine : machinesOf(shop)) checkThing("machines", machine, report);
  return report;
}

void RuleFile::checkThing(const char* validator, libvarrow::RuleParameter& thing,
                          libvarrow::ValidatorReason& report) {
  const auto reason = boost::make_shared<libvarrow::RuleValidatorReason>(thing.dumpStr());
  libvarrow::RuleValidateContext context(&thing, reason.get());
  for (const auto& rule : rules_) rule->validate(context);
  if (!context.getResult().isGood()) report.addReason(validator, reason);
}

std::size_t RuleFile::enabledCount() const {
  return static_cast<std::size_t>(std::count_if(
      rules_.begin(), rules_.end(), [](const auto& rule) { return rule->isEnabled(); }));
}

std::size_t RuleFile::brokenCount() const {
  return static_cast<std::size_t>(std::count_if(rules_.begin(), rules_.end(), [](const auto& rule) {
    return rule->getFailedCountValue() > 0;
  }));
}

}  // namespace jobshop
