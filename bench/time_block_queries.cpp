// Queries of a calendar: TimeBlock against its peers.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "time_block_work.h"

namespace bench {

namespace {

using boost::posix_time::hours;

// Enough windows that the branch predictor does not learn the answers.
constexpr std::int64_t kWindowCount = 65536;
constexpr std::size_t kComparedCount = 4096;

Slots plain(const IntervalMap& set) {
  return set.slots();
}
Slots plain(const IclSet& set) {
  return set.slots();
}
Slots plain(const BlockSet& set) {
  return set.slots();
}
bool plain(bool answer) {
  return answer;
}
Duration plain(Duration answer) {
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
  static Set ask(const Set& set, const Slot& window) {
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
  static Set ask(const Set& set, const Slot& window) {
    return set.forwards(window.begin, hours(40));
  }
};

struct FortyHoursBack : OfWeeks {
  template <class Set>
  static Set ask(const Set& set, const Slot& window) {
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
  static Set ask(const Set& set, const Slot& window) {
    return set.backwards(window.end, window.end - window.begin);
  }
};

template <class Query>
struct Ask {
  template <class Set>
  using Of = Asked<Set, Query>;
};

constexpr double kSeconds = 0.02;

const bool kWeek = registerWork<Ask<InTheWeek>::Of>("block_week", kSeconds);
const bool kContains = registerWork<Ask<Contains>::Of>("block_contains", kSeconds);
const bool kMeets = registerWork<Ask<Meets>::Of>("block_meets", kSeconds);
const bool kTotalWeek = registerWork<Ask<TotalOfTheWeek>::Of>("block_total_week", kSeconds);
const bool kTotal = registerWork<Ask<Total>::Of>("block_total", kSeconds);
const bool kForty = registerWork<Ask<FortyHours>::Of>("block_forty_hours", kSeconds);
const bool kFortyBack = registerWork<Ask<FortyHoursBack>::Of>("block_forty_hours_back", kSeconds);
const bool kHalfBack = registerWork<Ask<HalfBack>::Of>("block_half_back", kSeconds);

}  // namespace

}  // namespace bench
