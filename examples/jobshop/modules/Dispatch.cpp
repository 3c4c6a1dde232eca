#include "modules/Dispatch.h"

#include <libvarrow/log/log.h>
#include <libvarrow/statistics/ProgressStatistics.h>

#include <random>
#include <string>
#include <utility>

#include "JobShopData.h"
#include "schedule/ActiveScheduler.h"
#include "schedule/DispatchRules.h"

namespace jobshop {

namespace {

constexpr int kMaxTries = 1'000'000;
// Width of the histograms' buckets, in time units. A bucket is printed by its lower bound times
// this width.
constexpr std::uint64_t kBucket = 10;

// Returns a number from 0 to 1. The distributions of the standard library differ between its
// implementations.
double nextFraction(std::mt19937_64& random) {
  return static_cast<double>(random() >> 11) * 0x1p-53;
}

}  // namespace

Dispatch::Dispatch() : schedulesBuilt_(moduleStatistics.getCountStatistics("schedules_built")) {}

void Dispatch::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  binder->about("Builds active schedules: one strictly by a rule, others with random changes.");
  binder->field("rule", rule_).oneOf(dispatchRuleNames()).about(dispatchRuleMeanings());
  binder->field("tries", tries_, 1)
      .between(1, kMaxTries)
      .about("The number of schedules to build, the first strictly by the rule.");
  binder->field("noise", noise_, 0.3)
      .between(0, 1)
      .about("The largest random change of an operation's urgency, as a part of it.");
  binder->field("seed", seed_, 1).about("The seed of the random numbers.");
  binder->field("keep_best", keepBest_, true)
      .about("True: keeps an earlier schedule unless the new one is shorter. False: replaces it.");
}

void Dispatch::processImp(libvarrow::ModuleData* data) {
  JobShopData& shop = JobShopData::of(data);
  libvarrow::StatisticsContainer& statistics = shop.statistics();
  // addStat() takes ownership.
  auto* const makespans = new libvarrow::NumStatistics(kBucket);
  statistics.addStat("makespans", makespans);
  Schedule found;
  {
    const libvarrow::TimeRecoderHelper timer(statistics.getTimeStatistics("dispatching"));
    found = search(shop, *makespans);
  }
  record(found, shop);

  const Time makespan = found.makespan();
  const bool keep = !keepBest_ || !shop.hasSchedule() || makespan < shop.schedule().makespan();
  LIBVARROW_LOG_INFO("%s: makespan %lld, %s", found.origin.c_str(),
                     static_cast<long long>(makespan), keep ? "kept" : "not kept");
  if (keep) shop.setSchedule(std::move(found));
}

Schedule Dispatch::search(const JobShopData& shop, libvarrow::NumStatistics& makespans) const {
  const DispatchRule& rule = findDispatchRule(rule_);
  const auto tries = static_cast<std::uint64_t>(tries_);
  // addStat() takes ownership.
  auto* const triesDone = new libvarrow::SimpleProgressStatistics(tries);
  shop.statistics().addStat("tries", triesDone);
  std::mt19937_64 random(seed_);
  const auto bent = [&](const Candidate& candidate) {
    return rule.urgency(candidate) * (1 + noise_ * (2 * nextFraction(random) - 1));
  };
  Schedule best;
  Time bestMakespan = 0;
  for (std::uint64_t done = 0; done < tries;) {
    Schedule schedule;
    schedule.operations = buildActiveSchedule(
        shop.instance(), done == 0 ? Urgency(rule.urgency) : bent, shop.calendar());
    const Time makespan = schedule.makespan();
    ++done;
    if (done == 1 || makespan < bestMakespan) {
      schedule.origin = rule_;
      if (done > 1) schedule.origin += ", try " + std::to_string(done);
      best = std::move(schedule);
      bestMakespan = makespan;
    }
    makespans.add(static_cast<double>(makespan));
    schedulesBuilt_->inc();
    triesDone->inc();
    libvarrow::throwIfEndRequested(shop);
  }
  return best;
}

void Dispatch::record(const Schedule& schedule, JobShopData& shop) const {
  libvarrow::StatisticsContainer& statistics = shop.statistics();
  statistics.getCountStatistics("operations_scheduled")->inc(schedule.operations.size());

  auto* const waits = new libvarrow::NumStatistics(kBucket);
  statistics.addStat("waiting_times", waits);
  for (const Time wait : schedule.waitingTimes()) waits->add(static_cast<double>(wait));

  auto* const machines = statistics.getDistributionStatistics("operations_by_machine");
  for (const ScheduledOperation& operation : schedule.operations) {
    machines->inc("machine " + std::to_string(operation.machine), 1);
  }
  if (shop.calendar().isSet()) recordInterruptions(schedule, shop);
}

void Dispatch::recordInterruptions(const Schedule& schedule, JobShopData& shop) const {
  auto* const interrupted =
      shop.statistics().getPercentStatistics("operations_interrupted", schedule.operations.size());
  for (const ScheduledOperation& operation : schedule.operations) {
    const MachineCalendar& calendar = shop.calendar().of(operation.machine);
    if (!calendar.gaps(operation.start, operation.end).empty()) interrupted->inc();
  }
}

}  // namespace jobshop
