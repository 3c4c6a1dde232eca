#include "modules/Improve.h"

#include <libvarrow/log/log.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "JobShopData.h"
#include "improve/EliteSearch.h"
#include "modules/ImproveWatch.h"
#include "schedule/ScheduleChecker.h"

namespace jobshop {

namespace {

constexpr std::uint64_t kUsualIterations = 100'000;
constexpr std::uint64_t kMostIterations = 1'000'000'000'000;
constexpr std::uint64_t kUsualTenure = 12;
constexpr std::uint64_t kMostTenure = 1000;
constexpr std::uint64_t kLeastPatience = 6000;
constexpr std::uint64_t kPatienceForOperation = 10;

// Moves are estimated from sums of durations, which working time would make wrong.
void requireNoCalendar(const JobShopData& shop) {
  if (!shop.calendar().isSet()) return;
  throw std::runtime_error("Improve cannot plan with calendars: remove Improve or SetCalendars");
}

// The search repairs nothing: it needs an order in which all operations can run.
void requireFeasible(const JobShopData& shop) {
  const std::vector<std::string> violations = findViolations(shop.instance(), shop.schedule());
  if (violations.empty()) return;
  throw std::runtime_error("Improve needs a feasible schedule: " + violations.front());
}

SearchLimits limitsFrom(const std::optional<std::uint64_t>& iterations,
                        const std::optional<boost::posix_time::time_duration>& time) {
  SearchLimits limits;
  limits.iterations = iterations;
  if (time) limits.time = std::chrono::seconds(time->total_seconds());
  if (!iterations && !time) limits.iterations = kUsualIterations;
  return limits;
}

}  // namespace

void Improve::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  binder->about("Shortens the schedule by a tabu search. Cannot plan with calendars.");
  binder->field("iterations", iterations_)
      .between(1, kMostIterations)
      .about("The number of moves to make; " + std::to_string(kUsualIterations) +
             " without a time limit, otherwise any number.");
  binder->field("time_limit", timeLimit_)
      .between(boost::posix_time::seconds(1), boost::posix_time::hours(24 * 7))
      .about("The time after which the search ends.");
  binder->field("seed", seed_, 1).about("The seed of the random numbers.");
  binder->field("tenure", tenure_, kUsualTenure)
      .between(1, kMostTenure)
      .about("The least number of moves before a move may be undone.");
}

void Improve::processImp(libvarrow::ModuleData* data) {
  JobShopData& shop = JobShopData::of(data);
  const Schedule& start = shop.schedule();
  requireNoCalendar(shop);
  requireFeasible(shop);
  EliteSettings settings;
  settings.seed = seed_;
  settings.tabu.tenure = tenure_;
  settings.tabu.patience =
      std::max(kLeastPatience, kPatienceForOperation * start.operations.size());

  const libvarrow::TimeRecoderHelper timer(shop.statistics().getTimeStatistics("improving"));
  ImproveWatch watch(shop, limitsFrom(iterations_, timeLimit_));
  EliteSearch search(shop.instance(), start.operations, settings);
  Schedule found = {search.run(watch, shop.lowerBound()), start.origin};
  watch.finish();

  const Time before = start.makespan();
  const Time makespan = found.makespan();
  LIBVARROW_LOG_INFO(
      "makespan %lld after %llu iterations, %lld before", static_cast<long long>(makespan),
      static_cast<unsigned long long>(watch.iterations()), static_cast<long long>(before));
  if (makespan >= before) return;
  found.origin += ", iteration " + std::to_string(watch.lastImprovement());
  shop.setSchedule(std::move(found));
}

}  // namespace jobshop
