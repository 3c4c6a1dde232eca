// Blocks whose changes run out of memory: all of a change or nothing.
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "libvarrow/time/TimeBlock.h"
#include "reliability/failing_new.h"
#include "support/support.h"

namespace {

using libvarrow::TimeBlock;
using libvarrow::TimeSlot;

boost::posix_time::ptime at(int hour) {
  return {boost::gregorian::date(2024, 3, 1), boost::posix_time::hours(hour)};
}

TimeBlock blockOf(std::initializer_list<std::pair<int, int>> hours) {
  std::vector<TimeSlot> slots(hours.size());
  std::size_t i = 0;
  for (const auto& [begin, end] : hours) {
    slots[i].time_begin = at(begin);
    slots[i++].time_end = at(end);
  }
  return TimeBlock(std::move(slots));
}

TEST(TimeBlockMemoryTest, AChangeThatRunsOutOfMemoryChangesNothing) {
  const TimeBlock day = blockOf({{8, 20}});
  const TimeBlock week = blockOf({{8, 20}, {30, 40}, {50, 60}});
  const TimeBlock unordered = blockOf({{30, 40}, {8, 20}, {50, 35}});
  const TimeBlock two = blockOf({{1, 2}, {25, 26}});
  const TimeBlock cuts = blockOf({{10, 11}, {12, 13}, {14, 15}});
  const TimeBlock overlapping = blockOf({{33, 36}, {10, 12}, {11, 13}, {52, 53}, {54, 55}});
  const TimeBlock reversed = blockOf({{1, 2}, {25, 26}, {7, 6}});
  struct Case {
    const char* what;
    const TimeBlock& before;
    std::function<void(TimeBlock&)> change;
  };
  const Case cases[] = {
      {"add", week, [](TimeBlock& b) { b.addTimeBlock(at(22), at(23)); }},
      {"append", week, [](TimeBlock& b) { b.addTimeBlock(at(70), at(71)); }},
      {"add few", day, [&](TimeBlock& b) { b.addTimeBlocks(two); }},
      {"add with a reversed one", week,
       [&](TimeBlock& b) {
         try {
           b.addTimeBlocks(reversed);
         } catch (const std::runtime_error&) {
         }
       }},
      {"add to unordered", unordered, [&](TimeBlock& b) { b.addTimeBlocks(two); }},
      {"add many", week, [&](TimeBlock& b) { b.addTimeBlocks(overlapping); }},
      {"cut", week, [](TimeBlock& b) { b.removeTimeBlock(at(10), at(11)); }},
      {"cut unordered", unordered, [](TimeBlock& b) { b.removeTimeBlock(at(10), at(11)); }},
      {"cut few", day, [&](TimeBlock& b) { b.removeTimeBlock(cuts); }},
      {"cut few of unordered", unordered, [&](TimeBlock& b) { b.removeTimeBlock(cuts); }},
      {"cut many", week, [&](TimeBlock& b) { b.removeTimeBlock(overlapping); }},
      {"cut many of unordered", unordered, [&](TimeBlock& b) { b.removeTimeBlock(overlapping); }},
      {"assign", two, [&](TimeBlock& b) { b = week; }}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    TimeBlock changed = c.before;
    c.change(changed);
    const std::string before = c.before.dumpAsString();
    const std::string after = changed.dumpAsString();
    // A copy has no room to spare.
    TimeBlock block = c.before;
    const auto failures =
        test_support::failEachAllocation([&] { c.change(block); },
                                         [&](bool isDone) {
                                           EXPECT_EQ(isDone ? after : before, block.dumpAsString());
                                           block = TimeBlock(c.before);
                                         });
    EXPECT_GT(failures, 0U);
  }
}

}  // namespace
