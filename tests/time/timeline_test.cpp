// Timelines of many slots: chunks that split, empty and merge change as the slots of a block.
#include "libvarrow/time/Timeline.h"

#include <algorithm>
#include <iterator>
#include <random>
#include <utility>

#include "support/blocks.h"
#include "support/support.h"

namespace {

using namespace test_support;
using libvarrow::TimeBlock;
using libvarrow::Timeline;

constexpr int kHours = 24000;

TEST(TimelineTest, ManyChangesAreThoseOfABlock) {
  std::mt19937 random(7);
  const auto number = [&](int limit) { return static_cast<int>(random() % unsigned(limit)); };
  TimeBlock block;
  Timeline timeline;
  std::size_t most = 0;
  for (int i = 0; i < 20000 && !HasFailure(); ++i) {
    // Phases that add many slots take turns with phases that remove them.
    const bool isGrowing = i / 3000 % 2 == 0;
    const int length = number(400) == 0 ? number(kHours / 8) : number(4);
    const ptime from = at(number(kHours)), to = from + hours(length);
    const auto change = [&, isAddition = (number(8) != 0) == isGrowing](auto& slots) {
      isAddition ? slots.addTimeBlock(from, to) : slots.removeTimeBlock(from, to);
    };
    change(block);
    change(timeline);
    most = std::max(most, block.size());
    if (i % 20 != 0) continue;
    ASSERT_EQ(answersOf(block, from, to + hours(100)), answersOf(timeline, from, to + hours(100)));
    ASSERT_EQ(block, timeline.toTimeBlock());
    ASSERT_TRUE(std::equal(block.getBlocks().rbegin(), block.getBlocks().rend(),
                           std::make_reverse_iterator(timeline.end())));
    if (i % 1000 == 0) timeline = Timeline(block);
    if (i % 1000 == 500) timeline = Timeline(timeline);  // a copy has no room for changes
  }
  EXPECT_LT(1000u, most);
}

TEST(TimelineTest, SlotsInOrderFillTheTimelineAndLeaveIt) {
  Timeline added;
  for (int i = 0; i < 500; ++i) added.addTimeBlock(at(2 * i), at(2 * i + 1));
  Timeline timeline = std::move(added);
  EXPECT_EQ(500u, timeline.size());
  // NOLINTNEXTLINE(bugprone-use-after-move): a timeline that was moved from is empty.
  EXPECT_TRUE(added.empty() && added.size() == 0 && added == Timeline()) << "after a move";
  timeline.removeTimeBlock(at(2), at(998));
  EXPECT_EQ(blockOf({slot(0, 1), slot(998, 999)}), timeline.toTimeBlock());
  EXPECT_TRUE(timeline != Timeline());
  timeline.removeTimeBlock(at(0), at(999));
  EXPECT_TRUE(timeline.empty() && timeline == Timeline());
  EXPECT_EQ("2024-03-01 09:00:002024-03-01 08:00:00",
            errorOf([&] { timeline.addTimeBlock(at(9), at(8)); }));
  expectAbort("!empty()", [&] { timeline.beginTime(); });
}

}  // namespace
