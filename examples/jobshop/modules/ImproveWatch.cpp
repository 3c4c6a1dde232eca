#include "modules/ImproveWatch.h"

#include <libvarrow/module/RunObserver.h>

#include <algorithm>
#include <utility>

namespace jobshop {

namespace {

template <class Number>
double quotient(Number part, Number whole) {
  return static_cast<double>(part) / static_cast<double>(whole);
}

}  // namespace

ImproveWatch::ImproveWatch(const JobShopData& shop, SearchLimits limits)
    : shop_(shop),
      limits_(limits),
      percent_(new libvarrow::SimpleProgressStatistics(kSteps)),
      improvements_(new ImprovementRecord) {
  // addStat() takes ownership.
  shop.statistics().addStat("search", percent_);
  shop.statistics().addStat("improvements", improvements_);
  record(0, shop.schedule().makespan());
}

bool ImproveWatch::isOver(std::uint64_t iterations) {
  iterations_ = iterations;
  const double done = partDone();
  countTo(done);
  return done >= 1 || libvarrow::isEndRequested(shop_);
}

void ImproveWatch::improved(std::uint64_t iterations, Time makespan) {
  iterations_ = iterations;
  record(iterations, makespan);
}

void ImproveWatch::record(std::uint64_t iterations, Time makespan) {
  lastImprovement_ = iterations;
  const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start_);
  improvements_->add(iterations, time, makespan);
}

void ImproveWatch::finish() {
  if (!libvarrow::isEndRequested(shop_)) countTo(1);
  shop_.statistics().getCountStatistics("iterations")->inc(iterations_);
}

double ImproveWatch::partDone() const {
  double done = 0;
  if (limits_.iterations) done = quotient(iterations_, *limits_.iterations);
  if (limits_.time)
    done = std::max(done, quotient((Clock::now() - start_).count(), limits_.time->count()));
  return done;
}

void ImproveWatch::countTo(double part) {
  const auto steps = static_cast<std::uint64_t>(std::min(part, 1.0) * kSteps);
  for (; counted_ < steps; ++counted_) percent_->inc();
}

}  // namespace jobshop
