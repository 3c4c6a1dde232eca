// A count of the memory allocations of measured code.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>

namespace bench {

/// Returns the number of calls of operator new by this thread so far.
std::uint64_t allocationCount();

/// RAII guard: reports the allocations in its scope, per iteration, as the counter "allocs".
///
///     const AllocationCounter counted(state);
///     for (auto _ : state) work();
class AllocationCounter {
 public:
  explicit AllocationCounter(benchmark::State& state)
      : state_(state), countAtStart_(allocationCount()) {}
  AllocationCounter(const AllocationCounter&) = delete;
  AllocationCounter& operator=(const AllocationCounter&) = delete;
  ~AllocationCounter() {
    state_.counters["allocs"] = benchmark::Counter(
        static_cast<double>(allocationCount() - countAtStart_), benchmark::Counter::kAvgIterations);
  }

 private:
  benchmark::State& state_;
  std::uint64_t countAtStart_;
};

}  // namespace bench
