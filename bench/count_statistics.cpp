// Counting from one thread and from two: CountStatistics against a bare atomic integer.
#include <benchmark/benchmark.h>

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "libvarrow/statistics/StatisticsContainer.h"

namespace bench {

namespace {

// Each thread needs its own processor. On a busy machine they take turns without contention, and
// the shared counter costs the same as with one thread.
constexpr int kThreads = 2;

void statistic(benchmark::State& state) {
  static libvarrow::CountStatistics counter;
  for (auto _ : state) counter.inc();
}

void atomicInteger(benchmark::State& state) {
  alignas(64) static std::atomic<std::int64_t> counter{0};
  for (auto _ : state) counter.fetch_add(1);
}

// Two counters, made one after the other, one for each thread.

void ownStatistic(benchmark::State& state) {
  static libvarrow::StatisticsContainer container("counters");
  static libvarrow::CountStatistics* const counters[kThreads] = {
      container.getCountStatistics("first"), container.getCountStatistics("second")};
  libvarrow::CountStatistics* const counter = counters[state.thread_index()];
  for (auto _ : state) counter->inc();
}

void ownAtomicInteger(benchmark::State& state) {
  struct alignas(64) CacheLine {
    std::atomic<std::int64_t> counter{0};
  };
  static CacheLine lines[kThreads];
  std::atomic<std::int64_t>& counter = lines[state.thread_index()].counter;
  for (auto _ : state) counter.fetch_add(1);
}

BENCHMARK(statistic)->Name("count_one_thread/statistic");
BENCHMARK(atomicInteger)->Name("count_one_thread/atomic");
BENCHMARK(statistic)->Name("count_shared/statistic")->Threads(kThreads)->UseRealTime();
BENCHMARK(atomicInteger)->Name("count_shared/atomic")->Threads(kThreads)->UseRealTime();
BENCHMARK(ownStatistic)->Name("count_own/statistic")->Threads(kThreads)->UseRealTime();
BENCHMARK(ownAtomicInteger)->Name("count_own/atomic")->Threads(kThreads)->UseRealTime();

}  // namespace

}  // namespace bench
