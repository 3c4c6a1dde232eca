// Collecting samples: NumStatistics against a mutex and a map by hand.
#include <absl/container/flat_hash_map.h>
#include <benchmark/benchmark.h>

#include <boost/thread/lock_guard.hpp>
#include <boost/thread/mutex.hpp>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <mutex>
#include <random>
#include <vector>

#include "allocations.h"
#include "libvarrow/statistics/NumStatistics.h"

namespace bench {

namespace {

template <class Mutex, class Map>
class SamplesByHand {
 public:
  void add(double sample) {
    const boost::lock_guard<Mutex> lock(mutex_);
    sum_ += sample;
    if (sample < min_) min_ = sample;
    if (sample > max_) max_ = sample;
    ++buckets_[static_cast<std::uint64_t>(sample)];
    ++count_;
  }

 private:
  Mutex mutex_;
  Map buckets_;
  double sum_ = 0;
  double min_ = std::numeric_limits<double>::infinity();
  double max_ = -std::numeric_limits<double>::infinity();
  std::uint64_t count_ = 0;
};

std::vector<double> samplesIn(std::int64_t bucketCount) {
  constexpr std::size_t kCount = 8192;
  std::mt19937 random(3);
  std::vector<double> samples;
  while (samples.size() < kCount) {
    samples.push_back(static_cast<double>(random()) / 4294967296.0 *
                      static_cast<double>(bucketCount));
  }
  return samples;
}

using OrderedMap = std::map<std::uint64_t, std::uint64_t>;
using FlatHashMap = absl::flat_hash_map<std::uint64_t, std::uint64_t>;

/// The number of buckets is the benchmark's argument.
template <class Samples>
void addSamples(benchmark::State& state) {
  const std::vector<double> samples = samplesIn(state.range(0));
  Samples collected;
  for (const double sample : samples) collected.add(sample);
  const AllocationCounter counted(state);
  std::size_t at = 0;
  for (auto _ : state) {
    collected.add(samples[at]);
    if (++at == samples.size()) at = 0;
  }
}

BENCHMARK(addSamples<libvarrow::NumStatistics>)->Name("num/statistic")->Arg(8)->Arg(1000);
BENCHMARK(addSamples<SamplesByHand<boost::mutex, OrderedMap>>)
    ->Name("num/boost_mutex_map")
    ->Arg(8)
    ->Arg(1000);
BENCHMARK(addSamples<SamplesByHand<std::mutex, OrderedMap>>)
    ->Name("num/std_mutex_map")
    ->Arg(8)
    ->Arg(1000);
BENCHMARK(addSamples<SamplesByHand<std::mutex, FlatHashMap>>)
    ->Name("num/std_mutex_flat_hash_map")
    ->Arg(8)
    ->Arg(1000);

}  // namespace

}  // namespace bench
