// Any bytes as changes of a calendar and questions to it, against the plain walks over its slots.
#include <fuzzer/FuzzedDataProvider.h>

#include "cppbind/imp/binder.h"
#include "harness.h"
#include "support/PlainBlock.h"

namespace {

using namespace test_support;
using boost::posix_time::hours;

date firstDay() {
  return date(2024, 3, 1);
}

class Program {
 public:
  Program(const std::uint8_t* data, std::size_t size) : bytes_(data, size) {}

  void run() {
    start(slots());
    for (int step = 0; step < 40 && bytes_.remaining_bytes() > 0; ++step) {
      // The sum of many lengths of all the calendar overflows, here and in the model.
      if (plain_.slots.size() > 30) return;
      const int number = bytes_.ConsumeIntegralInRange(0, 17);
      if (number == 16) throughJson();
      if (number == 17) sumByDay();
      BlockArguments arguments{slots(), time(), time(), length(), day(), date(), 0};
      arguments.lastDay = arguments.day + days(bytes_.ConsumeIntegralInRange(0, 400));
      arguments.dayCount = bytes_.ConsumeIntegralInRange(-2, 5);
      int index = 0;
      forEachBlockOperation(arguments, [&](const char* what, auto query) {
        if (index++ == number) compare(what, query);
      });
    }
  }

 private:
  void start(const Slots& slots) {
    plain_.slots = slots;
    block_ = TimeBlock(slots);
  }

  ptime time() {
    using namespace boost::date_time;
    const int kind = bytes_.ConsumeIntegral<std::uint8_t>();
    if (kind == 0) return ptime(not_a_date_time);
    if (kind == 1) return ptime(pos_infin);
    if (kind == 2) return ptime(neg_infin);
    if (kind == 3) return ptime(min_date_time);
    if (kind == 4) return ptime(max_date_time);
    const ptime near(firstDay(), hours(6 * (kind % 64)));
    if (kind < 128) return near;
    // A time outside the calendar is none that its own library can write.
    return shifted(near,
                   boost::posix_time::microseconds(bytes_.ConsumeIntegral<std::int64_t>() / 30));
  }

  time_duration length() {
    using namespace boost::date_time;
    const int kind = bytes_.ConsumeIntegralInRange(-128, 127);
    if (kind == 127) return pos_infin;
    if (kind == 126) return neg_infin;
    if (kind == 125) return not_a_date_time;
    if (kind == 124) {
      return boost::posix_time::microseconds(bytes_.ConsumeIntegral<std::int64_t>() / 10);
    }
    return hours(3 * kind);
  }

  date day() { return firstDay() + days(bytes_.ConsumeIntegralInRange(-8, 16)); }

  Slots slots() {
    Slots made(bytes_.ConsumeIntegralInRange<std::size_t>(0, 8));
    const bool isMended = bytes_.ConsumeBool();
    for (TimeSlot& slot : made) {
      slot = slotOf(time(), time());
      if (isMended && slot.time_end < slot.time_begin) std::swap(slot.time_begin, slot.time_end);
    }
    if (isMended) std::sort(made.begin(), made.end());
    return made;
  }

  // An operation that ends the process is undone in the model, and kept from the library.
  template <class Query>
  void compare(const char* what, Query query) {
    const PlainBlock before = plain_;
    const auto answer = [&](auto& block) {
      try {
        return text(query(block));
      } catch (const std::exception& error) {
        return std::string(error.what());
      }
    };
    std::string expected;
    try {
      expected = answer(plain_);
    } catch (const Dies&) {
      plain_ = before;
      return;
    }
    fuzz::requireSame(expected, answer(block_), what);
    fuzz::requireSame(text(plain_), text(block_), what);
  }

  // Text has whole seconds, in which slots may stand in another order: reading sorts again.
  static std::string throughJson(TimeBlock& block) {
    const Json::Value json = cppbind::JsonEncodeBinder().encode(block);
    cppbind::JsonDecodeBinder().decode(json, block);
    return text(block);
  }

  void throughJson() {
    const std::string once = throughJson(block_);
    fuzz::requireSame(once, throughJson(block_), "through JSON");
    start(block_.getBlocks());
  }

  // Slots in order, and not so many days that listing them takes long.
  void sumByDay() {
    const Slots& slots = plain_.slots;
    for (std::size_t i = 0; i < slots.size(); ++i) {
      if (slots[i].time_begin.is_special() || slots[i].time_end.is_special()) return;
      if (slots[i].time_end < slots[i].time_begin) return;
      if (i > 0 && slots[i].time_begin < slots[i - 1].time_end) return;
    }
    if (slots.empty() || slots.back().time_end - slots[0].time_begin > hours(24 * 1000)) return;
    time_duration sum;
    const auto byDay = block_.getStatisticByDay();
    for (const auto& entry : byDay) sum += entry.second;
    fuzz::requireSame(text(sum), text(plain_.getTotalDur()), "sum of the days");
    fuzz::require(block_.getAllDates().size() == byDay.size(), "days");
    fuzz::require(block_.getDatesContainFullDay().size() <= byDay.size(), "midnights");
  }

  FuzzedDataProvider bytes_;
  PlainBlock plain_;
  TimeBlock block_;
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Program(data, size).run();
  return 0;
}
