// Blocks of time: the exact cases at midnight, at touching ends and at zero lengths.
#include "libvarrow/time/TimeBlock.h"

#include <ctime>
#include <sstream>
#include <type_traits>

#include "cppbind/cppbind.h"
#include "libvarrow/backtrace/TracedError.h"
#include "libvarrow/stream/FastStringStream.h"
#include "libvarrow/stream/StringIndent.h"
#include "libvarrow/time/time_range.h"
#include "support/blocks.h"
#include "support/environment.h"
#include "support/support.h"

namespace {

using namespace libvarrow;
using namespace boost::posix_time;
using namespace test_support;

const TimeBlock kThreeSlots = blockOf({slot(8, 10), slot(12, 14), slot(16, 18)});

// "8-10 12-14", in hours.
std::string text(const TimeBlock& block) {
  std::ostringstream text;
  for (const TimeSlot& slot : block.getBlocks()) {
    const auto hour = [](const ptime& t) { return double((t - at(0)).total_seconds()) / 3600; };
    text << (text.tellp() > 0 ? " " : "") << hour(slot.time_begin) << '-' << hour(slot.time_end);
  }
  return text.str();
}

constexpr int kMany = 20000;

// A part of every fourth hour, the latest first.
std::vector<TimeSlot> backwards(double from, double to) {
  std::vector<TimeSlot> slots;
  for (int i = kMany; i > 4; --i) slots.push_back(slot(4 * i + from, 4 * i + to));
  return slots;
}

TEST(TimeBlockTest, ManyChangesOfABlockThatWasOutOfOrderTakeOnePass) {
  const TimeBlock additions(backwards(1, 1.5));
  TimeBlock apart, inOrder;
  apart.addTimeBlocks(TimeBlock(backwards(0, 0.5)));
  inOrder.addTimeBlocks(additions);
  TimeBlock touching = apart;
  touching.removeTimeBlock(at(4000.2), at(4000.2));
  TimeBlock movedFrom = blockOf({slot(8, 10), slot(9, 12), slot(17, 18)});
  TimeBlock covered = movedFrom, mended = movedFrom, cut = movedFrom;
  const TimeBlock taken = std::move(movedFrom);
  covered.addTimeBlock(at(0), at(19));
  mended.addTimeBlocks(blockOf({slot(8, 12), slot(8, 9), slot(4, 5), slot(1, 2)}));
  cut.removeTimeBlock(at(9), at(10));
  std::vector<TimeSlot> cuts = backwards(0.1, 0.3);
  cuts.push_back(slot(4000.2, 4000.4));
  // Processor time, which other programs hardly change.
  const auto cost = [](TimeBlock block, const TimeBlock& more, const TimeBlock& less) {
    const std::clock_t start = std::clock();
    block.addTimeBlocks(more);
    block.removeTimeBlock(less);
    return std::clock() - start;
  };
  const auto limit = 30 * (cost(apart, inOrder, inOrder) + 1);
  for (const TimeBlock& block : {apart, touching, movedFrom, covered, mended, cut}) {
    EXPECT_LT(cost(block, additions, TimeBlock(cuts)), limit);
  }
}

TEST(TimeBlockTest, EmptyIntervalsAndUnsortedSlots) {
  TimeBlock block(at(8), at(12)), unsorted = blockOf({slot(0, 2), slot(20, 22), slot(4, 6)});
  block.removeTimeBlock(at(10), at(10));
  EXPECT_EQ("8-10 10-12", text(block));
  EXPECT_EQ("9-11", text(block.intersection(at(9), at(11))));
  EXPECT_TRUE(block.overlap(at(9), at(9)) && block.hasIntersection(at(9), at(9)));
  EXPECT_FALSE(unsorted.overlap(at(20), at(21))) << "after the last slot";
  unsorted.addTimeBlock(at(10), at(12));
  EXPECT_EQ("0-2 10-12 20-22 4-6", text(unsorted));
}

TEST(TimeBlockTest, SearchesForZeroTime) {
  const auto after = [](int hour, int length) {
    return kThreeSlots.getBlockAtPos4Dur(at(hour), hours(length));
  };
  EXPECT_EQ(TimeBlock(at(11), at(11) + microseconds(1)), after(11, 0)) << "outside of slots, too";
  EXPECT_TRUE(after(19, 0).empty());
  EXPECT_TRUE(kThreeSlots.getBlockAtPos4DurByEnd(at(13), hours(0)).empty());
  EXPECT_EQ("2024-03-01 09:00:002024-03-01 08:00:00", errorOf([&] { after(9, -1); }));
}

TEST(TimeBlockTest, WorkInInfiniteSlotsEndsAndStarts) {
  const ptime never(boost::date_time::pos_infin), always(boost::date_time::neg_infin), unknown;
  const time_duration endless(boost::date_time::pos_infin);
  const TimeBlock block = blockOf(
      {slotOf(always, at(4)), slot(8, 10), slot(11, 11), slot(12, 14), slotOf(at(16), never)});
  using Time = std::optional<ptime>;
  EXPECT_EQ(Time(at(17.5)), block.workEnd(at(9), milliseconds(4500 * 3600)));
  EXPECT_EQ(Time(at(2.5)), block.workStart(at(13), milliseconds(4500 * 3600)));
  EXPECT_EQ(Time(never), block.workEnd(at(9), endless));
  EXPECT_EQ(Time(always), block.workStart(at(9), endless));
  EXPECT_EQ(Time(always), block.workEnd(always, hours(1)));
  EXPECT_EQ(Time(never), block.workStart(never, hours(1)));
  EXPECT_EQ(Time(), kThreeSlots.workEnd(always, endless));
  EXPECT_EQ(Time(), kThreeSlots.workStart(never, endless));
  EXPECT_EQ(Time(at(18)), kThreeSlots.workEnd(always, hours(6)));
  EXPECT_EQ(Time(at(8)), kThreeSlots.workStart(never, hours(6)));
  EXPECT_EQ(Time(), block.workEnd(unknown, hours(1)));
  EXPECT_EQ(Time(), block.workStart(at(9), time_duration(boost::date_time::not_a_date_time)));
  EXPECT_EQ(Time(), block.nextWorking(unknown));
  EXPECT_EQ(Time(), block.nextWorking(never));
  EXPECT_EQ(Time(never), block.lastWorking(never));
  EXPECT_EQ(Time(at(12)), block.nextWorking(at(10))) << "the empty slot at 11 is no time";
  EXPECT_EQ("4-8 10-12 14-16", text(block.gaps(always, never)));
  EXPECT_EQ("2024-03-01 20:00:002024-03-01 18:00:00",
            errorOf([] { blockOf({slot(20, 18)}).workEnd(at(9), hours(1)); }));
}

TEST(TimeBlockTest, WalksComparesAndStreamsItsSlots) {
  std::string walked;
  for (const TimeSlot& slot : kThreeSlots.intersection(at(9), at(13)))
    walked += time2str(slot.dur());
  EXPECT_EQ("01:00:0001:00:00", walked);
  EXPECT_EQ(3u, kThreeSlots.size());
  EXPECT_TRUE(blockOf({slot(8, 10)}) == TimeBlock(at(8), at(10)));
  EXPECT_TRUE(blockOf({slot(8, 9), slot(9, 10)}) != TimeBlock(at(8), at(10)));
  std::ostringstream stream;
  FastStringStream fast;
  stream << kThreeSlots;
  fast << kThreeSlots;
  EXPECT_EQ(kThreeSlots.dumpAsString(), stream.str());
  EXPECT_EQ(kThreeSlots.dumpAsString(), fast.str());
}

TEST(TimeBlockTest, AReversedIntervalThrowsBothTimesAndTheCallStack) {
  TimeBlock block(at(8), at(12));
  const int line = __LINE__ + 2;
  try {
    block.addTimeBlock(at(14), at(12));
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ("2024-03-01 14:00:002024-03-01 12:00:00", error.what());
    const std::string stack = callStackOf(error);
    EXPECT_EQ(0u, stack.find(" 0# "));
    EXPECT_EQ(framesHaveNames(), contains(stack, "libvarrow::TimeBlock::addTimeBlock"));
    EXPECT_FALSE(contains(stack, "throwTraced"));
    EXPECT_EQ(framesHaveNames(), contains(stack, "time_block_test.cpp:" + std::to_string(line)));
  }
  EXPECT_EQ("", callStackOf(std::runtime_error("another")));
  EXPECT_EQ("8-12", text(block));
  EXPECT_EQ("2024-03-01 09:00:002024-03-01 08:00:00", errorOf([] { TimeBlock(at(9), at(8)); }));
}

TEST(TimeBlockTest, BlocksCompareTheirBeginsAndOverlapIsOpen) {
  EXPECT_TRUE(kThreeSlots < blockOf({slot(9, 10)}));
  EXPECT_FALSE(kThreeSlots < blockOf({slot(8, 20)}));
  EXPECT_TRUE(slot(8, 9) < slot(8, 10));
  EXPECT_FALSE(TimeSlot::CompareByTimeBegin(slot(8, 10), at(8)));
  EXPECT_TRUE(slot(8, 12).overlap(at(11), at(13)));
  EXPECT_FALSE(TimeSlot::overlap(at(8), at(12), at(12), at(13)));
}

TEST(TimeBlockTest, ThePairIntersectionIsClosed) {
  std::pair<ptime, ptime> common;
  EXPECT_TRUE(TimeBlock::intersection({at(8), at(12)}, {at(12), at(13)}, common));
  EXPECT_EQ(std::pair(at(12), at(12)), common);
  EXPECT_FALSE(TimeBlock::intersection({at(8), at(9)}, {at(10), at(13)}, common));
  EXPECT_EQ(std::pair(at(12), at(12)), common);
}

TEST(TimeBlockTest, RawTextIndentsALineForEachSlot) {
  std::ostringstream raw;
  blockOf({slot(8, 10), slot(12, 48)}).dumpAsRaw(raw, StringIndent(2));
  TimeBlock().dumpAsRaw(raw, StringIndent(2));
  EXPECT_EQ(
      "  [2024-03-01 08:00:00,2024-03-01 10:00:00]:02:00:00\n"
      "  [2024-03-01 12:00:00,2024-03-03 00:00:00]:36:00:00\n\n",
      raw.str());
}

TimeBlock read(const std::string& text) {
  TimeBlock block;
  cppbind::JsonDecodeBinder().decode(test_support::json(text), block);
  return block;
}

std::string slotJson(int begin, int end) {
  const auto time = [](int hour) { return "\"" + time2str(at(hour)) + "\""; };
  return "{\"timeBegin\":" + time(begin) + ",\"timeEnd\":" + time(end) + "}";
}

TEST(TimeBlockTest, ReadingJsonSortsSlotsWithoutMerging) {
  const TimeBlock block =
      read("[" + slotJson(12, 14) + "," + slotJson(13, 15) + "," + slotJson(8, 5) + "]");
  EXPECT_EQ("8-5 12-14 13-15", text(block));
  // Sorted slots may still overlap.
  EXPECT_TRUE(read("[" + slotJson(1, 9) + "," + slotJson(2, 3) + "]").haveBlock(at(4), at(5)));
  TimeBlock unsorted = blockOf({slot(12, 14), slot(8, 10)});
  const Json::Value written = cppbind::JsonEncodeBinder().encode(unsorted);
  EXPECT_EQ(test_support::json("[" + slotJson(12, 14) + "," + slotJson(8, 10) + "]"), written);
  EXPECT_EQ("8-10 12-14", text(unsorted));
}

TEST(TimeBlockTest, DaysAreTouchedBegunOrFull) {
  const auto day = [](int number) { return date(2024, 3, static_cast<unsigned short>(number)); };
  struct Case {
    TimeBlock block;
    std::vector<date> touched, midnights;
    std::vector<bool> full;
  };
  const Case cases[] = {
      {blockOf({slot(8, 24)}), {day(1), day(2)}, {day(2)}, {false, false}},
      {blockOf({slot(0, 24), slot(24, 30)}), {day(1), day(2)}, {day(1), day(2)}, {true, false}},
      {blockOf({slot(8, 12), slot(14, 54)}),
       {day(1), day(2), day(3)},
       {day(2), day(3)},
       {false, true}},
      // Less than a second after midnight is midnight, a second is not.
      {blockOf({slot(0.5 / 3600, 24)}), {day(1), day(2)}, {day(1), day(2)}, {true, false}},
      {blockOf({slot(1.0 / 3600, 24)}), {day(1), day(2)}, {day(2)}, {false, false}},
      // The first slot that is full only later ends the search.
      {blockOf({slot(48, 72), slot(0, 24)}), {}, {}, {false, false}}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.block.dumpAsString());
    EXPECT_EQ(c.full, c.block.getFullDayInvolveStatus(day(1), day(2)));
    if (c.touched.empty()) continue;
    EXPECT_EQ(c.full[0] || c.full[1], c.block.haveCompleteDays(at(0), at(48), 1));
    EXPECT_EQ(c.touched, c.block.getAllDates());
    EXPECT_EQ(c.midnights, c.block.getDatesContainFullDay());
  }
  EXPECT_EQ(hours(24), TimeBlock(at(8), at(50)).getTotalDur(day(2), day(2)));
  EXPECT_TRUE(TimeBlock(at(8), at(9)).haveCompleteDays(at(12), at(13), -1)) << "outside the window";
}

TEST(TimeBlockTest, InfiniteSlotsAndLengthsDoNotOverflow) {
  const ptime never(boost::date_time::pos_infin);
  const TimeBlock open(at(8), never);
  const std::string error = "the days from 2024-03-01 to +infinity cannot be listed";
  EXPECT_EQ(error, errorOf([&] { open.getAllDates(); }));
  EXPECT_EQ(error, errorOf([&] { open.getStatisticByDay(); }));
  EXPECT_TRUE(open.getTotalDur().is_pos_infinity());
  EXPECT_EQ(error, errorOf([&] { open.getInvolveStatus(kFirstDay, never.date()); }));
  // A length of all time does not overflow.
  const time_duration longest(boost::date_time::max_date_time);
  EXPECT_TRUE(kThreeSlots.getBlockAtPos4Dur(at(8), longest).empty());
  EXPECT_TRUE(kThreeSlots.getBlockAtPos4DurByEnd(at(30), longest).empty());
  EXPECT_NE("no error", errorOf([&] { kThreeSlots.getBlockAtPos4DurByEnd(at(30), -longest); }));
  const TimeSlot ages(ptime(date(1400, 1, 1)), ptime(date(9999, 12, 31)));
  EXPECT_TRUE(TimeBlock(std::vector<TimeSlot>(40, ages)).getTotalDur().is_pos_infinity());
}

TEST(TimeBlockTest, ViolatedPreconditionsAbort) {
  const TimeBlock none;
  TimeBlock block(at(8), at(12));
  const std::string noSlots = "Assertion `!this->timeslots.empty()' failed";
  const date tomorrow(2024, 3, 2);
  const TimeBlock reversed = blockOf({slot(50, 20)});
  const TimeBlock unsorted = blockOf({slot(40, 60), slot(2, 30)});
  const auto logged = [](const TimeBlock& b) { return "timeBlock: \n" + b.dumpAsString() + " \n"; };
  const std::tuple<std::string, std::string, std::function<void()>> cases[] = {
      {"", "Assertion `begin <= end' failed", [] { TimeSlot(at(9), at(8)); }},
      {"", "Assertion `start <= end' failed", [&] { block.removeTimeBlock(at(9), at(8)); }},
      {"", "src/time/TimeBlock.cpp:", [&] { none.haveBlock(at(9), at(8)); }},
      {"", "Assertion `s2 <= e2' failed", [&] { block.hasIntersection(at(29), at(28)); }},
      {"", "Assertion `s2 <= e2' failed", [&] { block.intersection(at(29), at(28)); }},
      {"", "include/libvarrow/time/TimeBlock.h:", [&] { none.beginTime(); }},
      {"", noSlots, [&] { none.endTime(); }},
      {"", noSlots, [&] { none.overlap(at(8), at(9)); }},
      {"", noSlots, [&] { (void)(none < block); }},
      {"", "'start <= end' is false", [&] { block.gaps(at(9), at(8)); }},
      {"", "'!work.is_negative()' is false", [&] { block.workEnd(at(9), hours(-1)); }},
      {"", "'!work.is_negative()' is false", [&] { block.workStart(at(9), hours(-1)); }},
      {"", "'t1 <= t2' is false", [] { slot(1, 2).overlap(at(9), at(8)); }},
      {"", "'t1 <= t2' is false", [] { TimeSlot::overlap(at(9), at(8), at(9), at(8)); }},
      {"", "'p1 <= p2' is false", [] { TimeSlot::overlap(at(8), at(9), at(9), at(8)); }},
      {"", "'start <= end' is false", [&] { none.overlap(at(9), at(8)); }},
      {"", "'statistical_time_begin < statistical_time_end' is false",
       [&] { block.getTotalDur(at(8), at(8)); }},
      {"",
       "'date_begin <= date_end' is false in function 'std::vector<bool> "
       "libvarrow::TimeBlock::getInvolveStatus",
       [&] { block.getInvolveStatus(tomorrow, kFirstDay); }},
      {"", "'date_begin <= date_end' is false",
       [&] { block.getFullDayInvolveStatus(tomorrow, kFirstDay); }},
      {logged(reversed), "'false' is false in function", [&] { reversed.getAllDates(); }},
      {logged(reversed), "'false' is false",
       [&] { reversed.getInvolveStatus(kFirstDay, kFirstDay); }},
      {"", "'x <= y' is false", [&] { reversed.getTotalDur(at(10), at(60)); }},
      {logged(unsorted), "Assertion `false' failed", [&] { unsorted.getAllDates(); }},
      {logged(unsorted), "Assertion `false' failed", [&] { unsorted.getDatesContainFullDay(); }}};
  for (const auto& [log, report, call] : cases) {
    const ChildResult child = runInChild(call);
    EXPECT_EQ(SIGABRT, child.signal) << report;
    EXPECT_TRUE(contains(child.errors, log) && contains(child.errors, report)) << child.errors;
  }
}

}  // namespace
