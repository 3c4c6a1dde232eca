// A calendar built slot by slot: TimeBlock against its peers.
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "time_block_work.h"

namespace bench {

namespace {

/// Like setOf, but a block collects the slots and takes them at once, which its peers cannot do.
template <class Set>
Set setAtOnce(const Slots& slots) {
  return setOf<Set>(slots);
}

template <>
BlockSet setAtOnce(const Slots& slots) {
  return BlockSet::atOnce(slots);
}

/// Builds a set from the slots in each of `orders` in turn. The time includes the destruction of
/// the set.
template <class Set, Set (*make)(const Slots&) = setOf<Set>>
class Build {
 public:
  explicit Build(std::vector<Slots> orders) : orders_(std::move(orders)) {}

  Slots result() const { return make(orders_.front()).slots(); }

  void time(benchmark::State& state) const {
    std::size_t at = 0;
    for (auto _ : state) {
      Set set = make(orders_[at]);
      benchmark::DoNotOptimize(set);
      if (++at == orders_.size()) at = 0;
    }
  }

 private:
  std::vector<Slots> orders_;
};

template <class Set>
struct BuildInOrder : Build<Set> {
  explicit BuildInOrder(std::int64_t count) : Build<Set>({calendarSlots(count)}) {}
};

// Enough orders that the branch predictor does not learn them.
std::vector<Slots> randomOrders(std::int64_t count) {
  std::vector<Slots> orders;
  for (std::int64_t seed = 0; seed * count < 65536; ++seed) {
    orders.push_back(shuffled(calendarSlots(count), static_cast<std::uint32_t>(seed)));
  }
  return orders;
}

template <class Set>
struct BuildRandom : Build<Set> {
  explicit BuildRandom(std::int64_t count) : Build<Set>(randomOrders(count)) {}
};

template <class Set>
struct BuildAtOnce : Build<Set, setAtOnce<Set>> {
  explicit BuildAtOnce(std::int64_t count) : Build<Set, setAtOnce<Set>>(randomOrders(count)) {}
};

const bool kInOrder = registerWork<BuildInOrder, TimelineSet>("block_build_in_order", 0.02);
const bool kRandom = registerWork<BuildRandom, TimelineSet>("block_build_random", 0.02);
const bool kAtOnce = registerWork<BuildAtOnce>("block_build_at_once", 0.02);

}  // namespace

}  // namespace bench
