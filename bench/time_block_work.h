// The common part of the TimeBlock benchmarks: three kinds of sets must agree before one is timed.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <map>
#include <string>

#include "calendar.h"
#include "interval_map.h"
#include "interval_sets.h"

namespace bench {

template <class Set>
Set setOf(const Slots& slots) {
  Set set;
  for (const Slot& slot : slots) set.add(slot.begin, slot.end);
  return set;
}

/// Returns the calendar of `count` slots; makes it only once.
template <class Set>
const Set& calendarOf(std::int64_t count) {
  static std::map<std::int64_t, Set> calendars;
  const auto found = calendars.find(count);
  if (found != calendars.end()) return found->second;
  return calendars[count] = setOf<Set>(calendarSlots(count));
}

/// Returns whether Work<Set>(n).result() is equal for the three sets; computed once for each n.
template <template <class> class Work>
bool allAgree(std::int64_t count) {
  static std::map<std::int64_t, bool> known;
  const auto found = known.find(count);
  if (found != known.end()) return found->second;
  const auto expected = Work<IntervalMap>(count).result();
  return known[count] =
             Work<BlockSet>(count).result() == expected && Work<IclSet>(count).result() == expected;
}

/// Runs Work<Set>(n), which times itself with time(state); n is the benchmark's argument.
template <template <class> class Work, class Set>
void run(benchmark::State& state) {
  const std::int64_t count = state.range(0);
  if (!allAgree<Work>(count)) return state.SkipWithError("the sets do not agree");
  Work<Set>(count).time(state);
}

/// Registers the work for the three sets and for 100 to 100,000 slots.
template <template <class> class Work>
bool registerWork(const char* name, double seconds) noexcept {
  const auto of = [&](const char* set, void (*function)(benchmark::State&)) {
    auto* benchmark =
        benchmark::RegisterBenchmark((std::string(name) + "/" + set).c_str(), function);
    benchmark->RangeMultiplier(10)->Range(100, 100000)->MinTime(seconds);
  };
  of("time_block", run<Work, BlockSet>);
  of("icl", run<Work, IclSet>);
  of("map", run<Work, IntervalMap>);
  return true;
}

}  // namespace bench
