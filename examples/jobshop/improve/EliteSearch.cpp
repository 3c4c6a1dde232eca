#include "improve/EliteSearch.h"

#include <algorithm>
#include <utility>

namespace jobshop {

namespace {

bool isShorter(const OrderedShop& a, const OrderedShop& b) {
  return a.makespan < b.makespan;
}

}  // namespace

EliteSearch::EliteSearch(const Instance& instance, const std::vector<ScheduledOperation>& start,
                         const EliteSettings& settings)
    : graph_(instance), settings_(settings), random_(settings.seed) {
  graph_.setSchedule(start);
  best_ = {graph_.order(), graph_.makespan()};
}

std::vector<ScheduledOperation> EliteSearch::run(SearchWatch& watch, Time lowerBound) {
  SearchCourse course(watch, best_.makespan, lowerBound);
  TabuSearch search(graph_, settings_.tabu, course, random_);
  pool_ = {searchFrom(best_.order, search)};
  while (!course.isOver()) {
    fill(search, course);
    combine(search, course);
    pool_.clear();
  }
  graph_.setOrder(best_.order);
  return graph_.schedule();
}

void EliteSearch::fill(TabuSearch& search, const SearchCourse& course) {
  while (pool_.size() < settings_.elites && !course.isOver()) {
    pool_.push_back(searchFrom(randomOrder(), search));
  }
}

// Ends when all schedules of the pool are equally long, or nothing has changed that for a while.
void EliteSearch::combine(TabuSearch& search, const SearchCourse& course) {
  std::size_t fruitless = 0;
  while (!course.isOver() && fruitless < 2 * pool_.size()) {
    const std::size_t a = random_() % pool_.size();
    const std::size_t b = (a + 1 + random_() % (pool_.size() - 1)) % pool_.size();
    OrderedShop child = searchFrom(between(pool_[a].order, pool_[b].order), search);
    const auto [least, most] = std::minmax_element(pool_.begin(), pool_.end(), isShorter);
    if (least->makespan == most->makespan) return;
    fruitless = child.makespan < most->makespan ? 0 : fruitless + 1;
    if (child.makespan <= most->makespan) *most = std::move(child);
  }
}

OrderedShop EliteSearch::searchFrom(OperationOrder order, TabuSearch& search) {
  graph_.setOrder(std::move(order));
  OrderedShop found = search.run();
  if (isShorter(found, best_)) best_ = found;
  return found;
}

// Draws all operations in turn; each draw takes the next operation of the drawn one's job.
OperationOrder EliteSearch::randomOrder() {
  OperationOrder order = best_.order;
  for (std::size_t i = order.size(); i > 1; --i) std::swap(order[i - 1], order[random_() % i]);
  std::vector<OperationId> next = graph_.firstOfJobs();
  for (OperationId& operation : order) operation = next[graph_.jobOf(operation)]++;
  return order;
}

// Sorts by a weighted sum of the places in both orders, which keeps every order that they share:
// therefore also that of each job.
OperationOrder EliteSearch::between(const OperationOrder& a, const OperationOrder& b) {
  const std::uint64_t weight = 3 + random_() % 5;
  std::vector<std::uint64_t> places(a.size() + 1);
  for (std::size_t place = 0; place < a.size(); ++place) {
    places[a[place]] += weight * place;
    places[b[place]] += (10 - weight) * place;
  }
  OperationOrder order = a;
  std::stable_sort(order.begin(), order.end(),
                   [&](OperationId x, OperationId y) { return places[x] < places[y]; });
  return order;
}

}  // namespace jobshop
