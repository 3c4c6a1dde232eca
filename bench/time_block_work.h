// The common part of the TimeBlock benchmarks: all kinds of sets must agree before one is timed.
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

template <class Set>
constexpr const char* kNameOf = "";
template <>
inline constexpr const char* kNameOf<BlockSet> = "time_block";
template <>
inline constexpr const char* kNameOf<TimelineSet> = "timeline";
template <>
inline constexpr const char* kNameOf<IclSet> = "icl";
template <>
inline constexpr const char* kNameOf<IntervalMap> = "map";
template <>
inline constexpr const char* kNameOf<BtreeMap> = "btree";
template <>
inline constexpr const char* kNameOf<BareVector> = "vector";

/// A work on several kinds of sets, of which TimeBlock is one.
template <template <class> class Work, class... Sets>
class Works {
 public:
  /// Registers the work for each kind of set and for 100 to 100,000 slots.
  static bool registerAll(const char* name, double seconds) noexcept {
    (registerOne<Sets>(name, seconds), ...);
    return true;
  }

 private:
  template <class Set>
  static void registerOne(const char* name, double seconds) {
    const std::string full = std::string(name) + "/" + kNameOf<Set>;
    auto* benchmark = benchmark::RegisterBenchmark(full.c_str(), run<Set>);
    benchmark->RangeMultiplier(10)->Range(100, 100000)->MinTime(seconds);
  }

  // Runs Work<Set>(n), which times itself with time(state); n is the benchmark's argument.
  template <class Set>
  static void run(benchmark::State& state) {
    const std::int64_t count = state.range(0);
    if (!allAgree(count)) return state.SkipWithError("the sets do not agree");
    Work<Set>(count).time(state);
  }

  // Returns whether Work<Set>(n).result() is equal for all sets; computed once for each n.
  static bool allAgree(std::int64_t count) {
    static std::map<std::int64_t, bool> known;
    const auto found = known.find(count);
    if (found != known.end()) return found->second;
    const auto expected = Work<BlockSet>(count).result();
    return known[count] = ((Work<Sets>(count).result() == expected) && ...);
  }
};

/// Registers the work for TimeBlock, its peers and `More` kinds of sets.
template <template <class> class Work, class... More>
bool registerWork(const char* name, double seconds) noexcept {
  return Works<Work, BlockSet, IclSet, IntervalMap, BtreeMap, More...>::registerAll(name, seconds);
}

}  // namespace bench
