// Counting by text key: DistributionStatistics against a mutex and a map by hand.
#include <absl/container/flat_hash_map.h>
#include <benchmark/benchmark.h>

#include <boost/thread/lock_guard.hpp>
#include <boost/thread/mutex.hpp>
#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <random>
#include <string>
#include <vector>

#include "allocations.h"
#include "libvarrow/statistics/DistributionStatistics.h"

namespace bench {

namespace {

template <class Mutex, class Map>
class CountsByHand {
 public:
  void inc(const std::string& key, std::uint64_t n) {
    const boost::lock_guard<Mutex> lock(mutex_);
    counts_[key] += n;
  }

 private:
  Mutex mutex_;
  Map counts_;
};

std::vector<std::string> keysOf(std::int64_t keyCount) {
  constexpr std::size_t kCount = 8192;
  std::mt19937 random(4);
  std::vector<std::string> keys;
  while (keys.size() < kCount) {
    keys.push_back("machine-" + std::to_string(random() % static_cast<std::uint64_t>(keyCount)));
  }
  return keys;
}

using OrderedMap = std::map<std::string, std::uint64_t>;
using FlatHashMap = absl::flat_hash_map<std::string, std::uint64_t>;

/// The number of different keys is the benchmark's argument.
template <class Counts>
void countKeys(benchmark::State& state) {
  const std::vector<std::string> keys = keysOf(state.range(0));
  Counts counts;
  for (const std::string& key : keys) counts.inc(key, 1);
  const AllocationCounter counted(state);
  std::size_t at = 0;
  for (auto _ : state) {
    counts.inc(keys[at], 1);
    if (++at == keys.size()) at = 0;
  }
}

// Two threads count a thousand keys at a time: in one object, or each in its own, which is merged.

libvarrow::DistributionStatistics& sharedCounts() {
  static libvarrow::DistributionStatistics counts;
  return counts;
}

void countBatch(libvarrow::DistributionStatistics& counts, const std::vector<std::string>& keys) {
  for (std::size_t at = 0; at != 1000; ++at) counts.inc(keys[at], 1);
}

void countShared(benchmark::State& state) {
  const std::vector<std::string> keys = keysOf(state.range(0));
  for (auto _ : state) countBatch(sharedCounts(), keys);
}

void countOwnAndMerge(benchmark::State& state) {
  const std::vector<std::string> keys = keysOf(state.range(0));
  for (auto _ : state) {
    libvarrow::DistributionStatistics own;
    countBatch(own, keys);
    sharedCounts().merge(&own);
  }
}

BENCHMARK(countShared)->Name("distribution_threads/shared")->Arg(8)->Threads(2)->UseRealTime();
BENCHMARK(countOwnAndMerge)
    ->Name("distribution_threads/own_merged")
    ->Arg(8)
    ->Threads(2)
    ->UseRealTime();
BENCHMARK(countKeys<libvarrow::DistributionStatistics>)
    ->Name("distribution/statistic")
    ->Arg(8)
    ->Arg(1000);
BENCHMARK(countKeys<CountsByHand<boost::mutex, OrderedMap>>)
    ->Name("distribution/boost_mutex_map")
    ->Arg(8)
    ->Arg(1000);
BENCHMARK(countKeys<CountsByHand<std::mutex, OrderedMap>>)
    ->Name("distribution/std_mutex_map")
    ->Arg(8)
    ->Arg(1000);
BENCHMARK(countKeys<CountsByHand<std::mutex, FlatHashMap>>)
    ->Name("distribution/std_mutex_flat_hash_map")
    ->Arg(8)
    ->Arg(1000);

}  // namespace

}  // namespace bench
