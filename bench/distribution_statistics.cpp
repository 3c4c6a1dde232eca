// Counting by text key: DistributionStatistics against a mutex and an ordered map by hand.
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

template <class Mutex>
class CountsByHand {
 public:
  void inc(const std::string& key, std::uint64_t n) {
    const boost::lock_guard<Mutex> lock(mutex_);
    counts_[key] += n;
  }

 private:
  Mutex mutex_;
  std::map<std::string, std::uint64_t> counts_;
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

BENCHMARK(countKeys<libvarrow::DistributionStatistics>)
    ->Name("distribution/statistic")
    ->Arg(8)
    ->Arg(1000);
BENCHMARK(countKeys<CountsByHand<boost::mutex>>)
    ->Name("distribution/boost_mutex_map")
    ->Arg(8)
    ->Arg(1000);
BENCHMARK(countKeys<CountsByHand<std::mutex>>)
    ->Name("distribution/std_mutex_map")
    ->Arg(8)
    ->Arg(1000);

}  // namespace

}  // namespace bench
