// Queries of a calendar: TimeBlock against its peers.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "time_block_work.h"

namespace bench {

namespace {

using boost::posix_time::hours;

// Enough windows that the branch predictor does not learn the answers.
constexpr std::int64_t kWindowCount = 65536;
constexpr std::size_t kComparedCount = 4096;

template <class Set>
auto plain(const Set& set) -> decltype(set.slots()) {
  return set.slots();
}
bool plain(bool answer) {
  return answer;
}
Duration plain(Duration answer) {
  return answer;
}
std::optional<Time> plain(std::optional<Time> answer) {
  return answer;
}

/// Calls Query::ask of a calendar for one window after another.
template <class Set, class Query>
class Asked {
 public:
  explicit Asked(std::int64_t count)
      : calendar_(calendarOf<Set>(count)), windows_(Query::windows(calendarSlots(count))) {}

  auto result() const {
    std::vector<decltype(plain(Query::ask(calendar_, windows_.front())))> answers;
    for (std::size_t i = 0; i < std::min(kComparedCount, windows_.size()); ++i) {
      answers.push_back(plain(Query::ask(calendar_, windows_[i])));
    }
    return answers;
  }

  void time(benchmark::State& state) const {
    std::size_t at = 0;
    for (auto _ : state) {
      auto answer = Query::ask(calendar_, windows_[at]);
      benchmark::DoNotOptimize(answer);
      if (++at == windows_.size()) at = 0;
    }
  }

 private:
  const Set& calendar_;
  Slots windows_;
};

struct OfHours {
  static Slots windows(const Slots& slots) { return randomWindows(slots, kWindowCount, hours(1)); }
};

struct OfWeeks {
  static Slots windows(const Slots& slots) {
    return randomWindows(slots, kWindowCount, hours(24 * 7));
  }
};

struct InTheWeek : OfWeeks {
  template <class Set>
  static auto ask(const Set& set, const Slot& window) {
    return set.intersection(window.begin, window.end);
  }
};

struct Contains : OfHours {
  template <class Set>
  static bool ask(const Set& set, const Slot& window) {
    return set.contains(window.begin, window.end);
  }
};

struct Meets : OfHours {
  template <class Set>
  static bool ask(const Set& set, const Slot& window) {
    return set.meets(window.begin, window.end);
  }
};

struct TotalOfTheWeek : OfWeeks {
  template <class Set>
  static Duration ask(const Set& set, const Slot& window) {
    return set.total(window.begin, window.end);
  }
};

struct Total {
  static Slots windows(const Slots& slots) { return {slots.front()}; }
  template <class Set>
  static Duration ask(const Set& set, const Slot& /*window*/) {
    return set.total();
  }
};

struct FortyHours : OfWeeks {
  template <class Set>
  static auto ask(const Set& set, const Slot& window) {
    return set.forwards(window.begin, hours(40));
  }
};

struct FortyHoursBack : OfWeeks {
  template <class Set>
  static auto ask(const Set& set, const Slot& window) {
    return set.backwards(window.end, hours(40));
  }
};

/// Searches backwards for a length that takes half of the slots.
struct HalfBack {
  static Slots windows(const Slots& slots) {
    Duration length;
    for (std::size_t i = slots.size() / 2; i < slots.size(); ++i) {
      length += slots[i].end - slots[i].begin;
    }
    const Time end = slots.back().end + hours(1);
    return {{end - length, end}};
  }
  template <class Set>
  static auto ask(const Set& set, const Slot& window) {
    return set.backwards(window.end, window.end - window.begin);
  }
};

struct WorkEnd : OfWeeks {
  template <class Set>
  static std::optional<Time> ask(const Set& set, const Slot& window) {
    return set.workEnd(window.begin, hours(40));
  }
};

struct WorkStart : OfWeeks {
  template <class Set>
  static std::optional<Time> ask(const Set& set, const Slot& window) {
    return set.workStart(window.end, hours(40));
  }
};

struct NextWorking : OfHours {
  template <class Set>
  static std::optional<Time> ask(const Set& set, const Slot& window) {
    return set.nextWorking(window.begin);
  }
};

struct LastWorking : OfHours {
  template <class Set>
  static std::optional<Time> ask(const Set& set, const Slot& window) {
    return set.lastWorking(window.end);
  }
};

/// Asks for four hours without a pause in a week. No slot has them, so all of the week are visited.
struct HasRoom : OfWeeks {
  template <class Set>
  static bool ask(const Set& set, const Slot& window) {
    return set.hasRoom(window.begin, window.end, hours(4));
  }
};

struct GapsOfTheWeek : OfWeeks {
  template <class Set>
  static auto ask(const Set& set, const Slot& window) {
    return set.gaps(window.begin, window.end);
  }
};

/// Walks over all slots.
struct Walk : Total {
  template <class Set>
  static Duration ask(const Set& set, const Slot& /*window*/) {
    return set.walk();
  }
};

/// Intersects the calendar with another one of n slots.
template <class Set>
class Common {
 public:
  explicit Common(std::int64_t count)
      : calendar_(calendarOf<Set>(count)),
        other_(setOf<Set>(delayed(calendarSlots(count), boost::posix_time::minutes(20)))) {}

  Slots result() const { return calendar_.intersection(other_).slots(); }

  void time(benchmark::State& state) const {
    for (auto _ : state) {
      auto common = calendar_.intersection(other_);
      benchmark::DoNotOptimize(common);
    }
  }

 private:
  const Set& calendar_;
  Set other_;
};

template <class Query>
struct Ask {
  template <class Set>
  using Of = Asked<Set, Query>;
};

constexpr double kSeconds = 0.02;

template <class Query, class... More>
bool registerQuery(const char* name) noexcept {
  return registerWork<Ask<Query>::template Of, More...>(name, kSeconds);
}

const bool kWeek = registerQuery<InTheWeek, TimelineSet, BareVector>("block_week");
const bool kContains = registerQuery<Contains, TimelineSet>("block_contains");
const bool kMeets = registerQuery<Meets, TimelineSet>("block_meets");
const bool kTotalWeek = registerQuery<TotalOfTheWeek, TimelineSet>("block_total_week");
const bool kTotal = registerQuery<Total, TimelineSet, BareVector>("block_total");
const bool kForty = registerQuery<FortyHours, BareVector>("block_forty_hours");
const bool kFortyBack = registerQuery<FortyHoursBack>("block_forty_hours_back");
const bool kHalfBack = registerQuery<HalfBack>("block_half_back");
const bool kWorkEnd = registerQuery<WorkEnd, TimelineSet, BareVector>("block_work_end");
const bool kWorkStart = registerQuery<WorkStart, TimelineSet>("block_work_start");
const bool kNext = registerQuery<NextWorking, TimelineSet>("block_next");
const bool kLast = registerQuery<LastWorking, TimelineSet>("block_last");
const bool kRoom =
    Works<Ask<HasRoom>::Of, BlockSet, TimelineSet>::registerAll("block_room", kSeconds);
const bool kGaps = registerQuery<GapsOfTheWeek, TimelineSet>("block_gaps");
const bool kWalk = registerQuery<Walk, TimelineSet>("block_walk");
const bool kCommon = registerWork<Common>("block_common", kSeconds);

}  // namespace

}  // namespace bench
