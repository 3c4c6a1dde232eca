// Pieces of capacity, with and without a rate.
#include "libvarrow/time/SchedulingTimeSlot.h"

#include <boost/make_shared.hpp>

#include "cppbind/cppbind.h"
#include "libvarrow/libvarrow.h"
#include "support/support.h"

namespace {

using namespace boost::posix_time;
using namespace test_support;
using utility::TimeSlot;
using utility::TimeSlotWithEfficiency;

ptime at(int hour, int minute = 0) {
  return ptime(boost::gregorian::date(2024, 3, 5), hours(hour) + minutes(minute));
}

boost::shared_ptr<std::string> name(const char* text) {
  return boost::make_shared<std::string>(text);
}

TimeSlot slot(int begin, int end, float blocks = 2, bool rest = true) {
  return TimeSlot(at(begin), at(end), blocks, rest, name("early"), hours(8), nullptr);
}

TimeSlotWithEfficiency slotAt(double efficiency) {
  return TimeSlotWithEfficiency(at(8), at(10), 2, true, efficiency, name("early"), hours(8),
                                nullptr);
}

// Both slots of the library live side by side.
static_assert(std::is_same_v<libvarrow::utility::TimeSlot, ::utility::TimeSlot>);
static_assert(!std::is_constructible_v<libvarrow::TimeSlot, ::utility::TimeSlot>);
static_assert(!std::is_constructible_v<::utility::TimeSlot, libvarrow::TimeSlot>);

TEST(SchedulingTimeSlotTest, WhatIsLockedOrNotUsableOffersNothing) {
  TimeSlot usable = slot(8, 12);
  EXPECT_TRUE(usable.hasNeedBlock(2));
  EXPECT_FALSE(usable.hasNeedBlock(3));
  EXPECT_TRUE(usable.isValid({}));
  usable.setTag(TimeSlot::Tag::Frozen, true);
  EXPECT_FALSE(usable.isValid({TimeSlot::Tag::Host0}));
  EXPECT_TRUE(usable.isValid({TimeSlot::Tag::Frozen}));
  usable.setLocked(true);
  EXPECT_EQ(hours(0), usable.getDur());
  const TimeSlot closed = slot(8, 12, 1, false);
  EXPECT_EQ(hours(0), closed.getDur());
  EXPECT_TRUE(closed.hasNeedBlock(3));
  EXPECT_FALSE(closed.isValid({}));
  const auto noTag = static_cast<TimeSlot::Tag>(3);
  EXPECT_EQ("invalid bitset<N> position", errorOf([&] { usable.setTag(noTag, true); }));
  EXPECT_EQ("invalid bitset<N> position", errorOf([&] { usable.getTag(noTag); }));
}

TEST(SchedulingTimeSlotTest, OnlyTouchingSlotsOfTheSameKindMerge) {
  const auto merged = [](TimeSlot a, const TimeSlot& b) {
    if (!a.merge(b)) return std::string("no");
    return libvarrow::time2str(a.getBeginTime().time_of_day()) + " " +
           libvarrow::time2str(a.getEndTime().time_of_day());
  };
  EXPECT_EQ("08:00:00 12:00:00", merged(slot(8, 10), slot(10, 12)));
  EXPECT_EQ("08:00:00 12:00:00", merged(slot(10, 12), slot(8, 10)));
  TimeSlot reversed = slot(10, 12);
  reversed.setEndTime(at(8));
  EXPECT_EQ("08:00:00 08:00:00", merged(slot(8, 10), reversed)) << "its own end is compared first";
  EXPECT_EQ("no", merged(slot(8, 10), slot(11, 12)));
  EXPECT_EQ("no", merged(slot(8, 10), slot(10, 12, 3)));
  EXPECT_EQ("no", merged(slot(8, 10, NAN), slot(10, 12, NAN)));
  EXPECT_EQ("no", merged(slot(8, 10), slot(10, 12, 2, false)));
  EXPECT_TRUE(slot(8, 10).isSameWithoutTime(slot(9, 12, 3)));
  EXPECT_TRUE(slot(8, 10) < slot(8, 12));
  EXPECT_TRUE(TimeSlot::compareLess(slot(8, 12), slot(9, 10)));
  TimeSlot other = slot(10, 12);
  other.setLocked(true);
  other.setShiftDur(hours(1));
  EXPECT_EQ("08:00:00 12:00:00", merged(slot(8, 10), other));
  other.setTag(TimeSlot::Tag::Host1, true);
  EXPECT_EQ("no", merged(slot(8, 10), other));
  other.setTag(TimeSlot::Tag::Host1, false);
  other.setOriginalSlot(boost::make_shared<TimeSlot>());
  EXPECT_EQ("no", merged(slot(8, 10), other));
  other.setOriginalSlot(nullptr);
  other.setShift(nullptr);
  EXPECT_EQ("no", merged(slot(8, 10), other));
}

TEST(SchedulingTimeSlotTest, APieceTakesOverAllButTheLock) {
  TimeSlot whole = slot(8, 12);
  whole.setOriginalSlot(boost::make_shared<TimeSlot>(slot(0, 24)));
  whole.setTag(TimeSlot::Tag::Frozen, true);
  whole.setLocked(true);
  const TimeSlot piece = whole.newFromThis(at(9), at(9), 1);
  EXPECT_EQ(
      "[2024-03-05 09:00:00,2024-03-05 09:00:00], block count:1.000000, dur:00:00:00, "
      "valid,unlock,early tags:100",
      piece.dumpAsString());
  EXPECT_EQ(whole.getShift(), piece.getShift());
  EXPECT_EQ(hours(8), piece.getShiftDur());
  EXPECT_EQ(whole.getOriginalSlot(), piece.getOriginalSlot());
  EXPECT_EQ("时间范围错误，开始时间:2024-03-05 10:00:00 晚于结束时间:2024-03-05 09:00:00",
            errorOf([&] { whole.newFromThis(at(10), at(9), 1); }));
  EXPECT_EQ(
      "[not-a-date-time,not-a-date-time], block count:1.000000, dur:not-a-date-time, "
      "valid,unlock, tags:000",
      TimeSlot().dumpAsString());
}

TEST(SchedulingTimeSlotTest, DurationIsUsedUpFromEitherEnd) {
  struct Case {
    bool backwards;
    int from, length, time, rest;
  };
  const Case cases[] = {{true, 12, 3, 9, 0},  {true, 12, 5, 8, 1},  {true, 8, 0, 8, 0},
                        {false, 8, 4, 12, 0}, {false, 8, 5, 12, 1}, {false, 12, 2, 12, 2}};
  const TimeSlot usable = slot(8, 12);
  for (const auto& [backwards, from, length, time, rest] : cases) {
    time_duration work = hours(length);
    EXPECT_EQ(at(time),
              backwards ? usable.getBeginTime(at(from), work) : usable.getEndTime(at(from), work));
    EXPECT_EQ(hours(rest), work);
  }
  time_duration work = hours(5);
  EXPECT_EQ(at(8), usable.getBeginTime(work));
  EXPECT_EQ(at(9), usable.getEndTime(work));
  work = time_duration(boost::date_time::max_date_time);
  EXPECT_EQ(at(12), usable.getEndTime(work));
  EXPECT_EQ(at(8), usable.getBeginTime(work));
  work = hours(5);
  EXPECT_EQ(at(8), slot(8, 12, 1, false).getBeginTime(at(20), work));
  EXPECT_EQ(at(12), slot(8, 12, 1, false).getEndTime(at(20), work));
  EXPECT_EQ(hours(5), work);
  for (const ptime& outside : {at(7), at(13)}) {
    expectAbort("'end_time >= begin_time_ && end_time <= end_time_' is false",
                [&] { usable.getBeginTime(outside, work); });
    expectAbort("'begin_time >= begin_time_ && begin_time <= end_time_' is false",
                [&] { usable.getEndTime(outside, work); });
  }
}

Json::Value slotJson(const std::string& more) {
  return test_support::json(R"({"timeBegin":"2024-03-05 08:00:00","timeEnd":"2024-03-05 10:00:00",
                                "shift":"early")" +
                            more + "}");
}

template <class Slot>
Slot read(const Json::Value& json) {
  Slot slot;
  cppbind::JsonDecodeBinder().decode(json, slot);
  return slot;
}

TEST(SchedulingTimeSlotTest, TagsTravelFromJsonOnlyAndUnknownOnesAreLogged) {
  const auto child = runInChild([] {
    const auto slot = read<TimeSlot>(slotJson(R"(,"tags":["x","frozen","x"],"blockCount":3)"));
    std::cout << slot.dumpAsString() << cppbind::JsonEncodeBinder().encode(slot)["tags"].size();
  });
  EXPECT_TRUE(contains(child.output,
                       "block count:3.000000, dur:02:00:00, "
                       "valid,unlock,early tags:1000"));
  const std::string complaint = "不支持的tag:x 受支持的列表参考:frozen";
  EXPECT_EQ(child.errors.find(complaint), child.errors.rfind(complaint));
  EXPECT_TRUE(contains(child.errors, complaint));
  EXPECT_EQ(1.0F, read<TimeSlot>(slotJson(R"(,"tags":[])")).getBlockCount());
  EXPECT_EQ("tags: not found", errorOf([] { read<TimeSlot>(slotJson("")); }));
  TimeSlot tagged = slot(8, 10, 3);
  tagged.setTag(TimeSlot::Tag::Host1, true);
  cppbind::JsonDecodeBinder().decode(slotJson(R"(,"tags":["frozen"])"), tagged);
  EXPECT_EQ("110", tagged.getTags().to_string());
  EXPECT_EQ(3.0F, tagged.getBlockCount());
  EXPECT_EQ("tags: should be a list",
            errorOf([] { read<TimeSlot>(slotJson(R"(,"tags":"frozen")")); }));
  EXPECT_TRUE(cppbind::JsonEncodeBinder().encode(TimeSlot())["shift"].isNull());
}

TEST(TimeSlotWithEfficiencyTest, WorkAndClockTimeAreConvertedInWholeMilliseconds) {
  TimeSlotWithEfficiency slow = slotAt(0.8);
  EXPECT_EQ(minutes(96), slow.getDurWithEfficiency());
  time_duration work = minutes(48);
  EXPECT_EQ(at(9), slow.getEndTimeWithEfficiency(at(8), work));
  EXPECT_EQ(hours(0), work);
  work = hours(2);
  EXPECT_EQ(at(10), slow.getEndTimeWithEfficiency(work));
  EXPECT_EQ(minutes(24), work);
  work = hours(2);
  EXPECT_EQ(at(8), slow.getBeginTimeWithEfficiency(work));
  EXPECT_EQ(minutes(24), work);
  work = minutes(48) + microseconds(900);
  EXPECT_EQ(at(9), slow.getBeginTimeWithEfficiency(work));
  const auto inSlow = [&](int milliseconds) {
    const auto length = boost::posix_time::milliseconds(milliseconds);
    return slow.newFromThis(at(8), at(8) + length, 1).getDurWithEfficiency().total_milliseconds();
  };
  EXPECT_EQ(1597, inSlow(1997));  // of 1597.6
  work = minutes(60) + microseconds(900);
  EXPECT_EQ(at(9) + microseconds(900), slotAt(1).getEndTimeWithEfficiency(at(8), work));
  work = minutes(60) + microseconds(900);
  EXPECT_EQ(at(9) - microseconds(900), slotAt(1).getBeginTimeWithEfficiency(at(10), work));
  slow.setLocked(true);
  EXPECT_EQ(hours(0), slow.getDurWithEfficiency());
}

TEST(TimeSlotWithEfficiencyTest, RatesThatNoClockHasAreSettled) {
  time_duration work = hours(1);
  EXPECT_EQ(at(10), slotAt(0).getEndTimeWithEfficiency(work));
  EXPECT_TRUE(work.is_pos_infinity());
  work = boost::date_time::neg_infin;
  EXPECT_TRUE(slotAt(2).getEndTimeWithEfficiency(work).is_neg_infinity());
  EXPECT_EQ(hours(0), slotAt(-1).getDurWithEfficiency());
  EXPECT_EQ(hours(0), slotAt(NAN).getDurWithEfficiency());
  EXPECT_TRUE(slotAt(1e300).getDurWithEfficiency().is_pos_infinity());
}

TEST(TimeSlotWithEfficiencyTest, PiecesAndMergingMindTheEfficiency) {
  TimeSlotWithEfficiency slot = slotAt(0.8);
  EXPECT_FALSE(slot.merge(slotAt(0.9).newFromThis(at(10), at(12), 2)));
  slot.setTag(TimeSlot::Tag::Frozen, true);
  EXPECT_TRUE(slot.merge(slot.newFromThis(at(10), at(12), 2)));
  EXPECT_EQ(hours(4), slot.getDur());
  slot.setLocked(true);
  EXPECT_FALSE(slot.newFromThis(at(8), at(9), 1).isLocked());
  EXPECT_FALSE(slot.isSameWithoutTime(slot.newFromThis(at(8), at(9), 1, false)));
  const auto piece = slot.newFromThis(at(8), at(9), 1, false, hours(3), 1.25);
  EXPECT_EQ(
      "[2024-03-05 08:00:00,2024-03-05 09:00:00], block count:1.000000, dur:00:00:00, "
      "invalid,unlock,early tags:100, efficiency:1.250000",
      piece.dumpAsString());
  EXPECT_EQ(hours(3), piece.getShiftDur());
}

TEST(TimeSlotWithEfficiencyTest, JsonCutsTheEfficiencyToFourDecimalsInSinglePrecision) {
  const std::pair<const char*, float> cases[] = {
      {"1.23456", 1.2345F}, {"0.85", 0.85F}, {"-3", 0.0F}};
  for (const auto& [text, expected] : cases) {
    const auto slot = read<TimeSlotWithEfficiency>(
        slotJson(R"(,"tags":[],"processEfficiency":)" + std::string(text)));
    EXPECT_EQ(static_cast<double>(expected), slot.getEfficiency()) << text;
  }
  EXPECT_EQ(1.0, read<TimeSlotWithEfficiency>(slotJson(R"(,"tags":[])")).getEfficiency());
  TimeSlotWithEfficiency slot = slotAt(0.12345);
  EXPECT_EQ(0.12345, cppbind::JsonEncodeBinder().encode(slot)["processEfficiency"].asDouble());
  EXPECT_EQ(static_cast<double>(0.1234F), slot.getEfficiency());
}

}  // namespace
