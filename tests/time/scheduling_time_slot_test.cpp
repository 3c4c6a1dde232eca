// Pieces of capacity, with and without a rate.
#include "libvarrow/time/SchedulingTimeSlot.h"

#include <boost/make_shared.hpp>

#include "cppbind/cppbind.h"
#include "libvarrow/libvarrow.h"
#include "support/support.h"

namespace {

using namespace boost::posix_time;
using namespace test_support;
using libvarrow::utility::fromUtf8;
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

static_assert(std::is_same_v<libvarrow::utility::TimeSlot, ::utility::TimeSlot>);

TEST(SchedulingTimeSlotTest, LockedAndUnusableSlotsOfferNoTime) {
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
}

TEST(SchedulingTimeSlotTest, OnlyTouchingSlotsOfTheSameKindMerge) {
  const auto merged = [](TimeSlot a, const TimeSlot& b) {
    if (!a.merge(b)) return std::string("no");
    return libvarrow::time2str(a.getBeginTime().time_of_day()) + " " +
           libvarrow::time2str(a.getEndTime().time_of_day());
  };
  const auto changed = [](void (*change)(TimeSlot&)) {
    TimeSlot made = slot(10, 12);
    change(made);
    return made;
  };
  const std::pair<std::string, TimeSlot> cases[] = {
      {"08:00:00 12:00:00", slot(10, 12)},
      {"06:00:00 10:00:00", slot(6, 8)},
      {"08:00:00 08:00:00", changed([](TimeSlot& s) { s.setEndTime(at(8)); })},  // its end first
      {"no", changed([](TimeSlot& s) { s.setTag(TimeSlot::Tag::Host1, true); })},
      {"no", changed([](TimeSlot& s) { s.setOriginalSlot(boost::make_shared<TimeSlot>()); })},
      {"no", changed([](TimeSlot& s) { s.setShift(nullptr); })},
      {"no", changed([](TimeSlot& s) { s.setShift(name("late")); })},
      {"08:00:00 12:00:00", changed([](TimeSlot& s) { s.setLocked(true); })},
      {"no", slot(11, 12)},
      {"no", slot(10, 12, 3)},
      {"no", slot(10, 12, 2, false)}};
  for (const auto& [expected, other] : cases) EXPECT_EQ(expected, merged(slot(8, 10), other));
  EXPECT_EQ("no", merged(slot(8, 10, NAN), slot(10, 12, NAN)));
  EXPECT_TRUE(slot(8, 10).isSameWithoutTime(slot(9, 12, 3)));
  EXPECT_TRUE(TimeSlot::compareLess(slot(8, 10), slot(8, 12)));
}

TEST(SchedulingTimeSlotTest, APieceCopiesEverythingExceptTheLock) {
  TimeSlot whole = slot(8, 12);
  whole.setOriginalSlot(boost::make_shared<TimeSlot>(slot(0, 24)));
  whole.setTag(TimeSlot::Tag::Frozen, true);
  whole.setLocked(true);
  const TimeSlot piece = whole.newFromThis(at(9), at(9), 1);
  EXPECT_EQ(
      "[2024-03-05 09:00:00,2024-03-05 09:00:00], block count:1.000000, dur:00:00:00, "
      "valid,unlock,early tags:100",
      piece.dumpAsString());
  EXPECT_EQ(hours(8), piece.getShiftDur());
  EXPECT_EQ(whole.getOriginalSlot(), piece.getOriginalSlot());
  EXPECT_EQ(fromUtf8("时间范围错误，开始时间:2024-03-05 10:00:00 晚于结束时间:2024-03-05 09:00:00"),
            errorOf([&] { whole.newFromThis(at(10), at(9), 1); }));
}

TEST(SchedulingTimeSlotTest, DurationIsConsumedFromEitherEnd) {
  struct Case {
    bool backwards;
    int from, length, time, rest;
  };
  const Case cases[] = {
      {true, 12, 3, 9, 0}, {true, 10, 5, 8, 3}, {false, 8, 4, 12, 0}, {false, 9, 5, 12, 2}};
  const TimeSlot usable = slot(8, 12), closed = slot(8, 12, 1, false);
  for (const auto& [backwards, from, length, time, rest] : cases) {
    time_duration work = hours(length);
    EXPECT_EQ(at(time),
              backwards ? usable.getBeginTime(at(from), work) : usable.getEndTime(at(from), work));
    EXPECT_EQ(hours(rest), work);
  }
  time_duration work(boost::date_time::max_date_time);
  EXPECT_EQ(at(12), usable.getEndTime(work));
  EXPECT_EQ(at(8), usable.getBeginTime(work));
  work = hours(5);
  EXPECT_EQ(at(8), closed.getBeginTime(at(20), work));
  EXPECT_EQ(at(12), closed.getEndTime(at(20), work));
  EXPECT_EQ(hours(5), work);
  expectAbort("'end_time >= begin_time_ && end_time <= end_time_' is false",
              [&] { usable.getBeginTime(at(13), work); });
  expectAbort("'begin_time >= begin_time_ && begin_time <= end_time_' is false",
              [&] { usable.getEndTime(at(7), work); });
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

TEST(SchedulingTimeSlotTest, TagsAreReadButNotWritten) {
  testing::internal::CaptureStderr();
  TimeSlot tagged = slot(8, 10, 3);
  tagged.setTag(TimeSlot::Tag::Host1, true);
  cppbind::JsonDecodeBinder().decode(slotJson(R"(,"tags":["x","frozen","x"])"), tagged);
  EXPECT_EQ(fromUtf8("不支持的tag:x 受支持的列表参考:frozen\n"),
            testing::internal::GetCapturedStderr());
  EXPECT_EQ("110", tagged.getTags().to_string());
  EXPECT_EQ(3.0F, tagged.getBlockCount());
  EXPECT_EQ(0u, cppbind::JsonEncodeBinder().encode(tagged)["tags"].size());
  EXPECT_EQ(4.0F, read<TimeSlot>(slotJson(R"(,"tags":[],"blockCount":4)")).getBlockCount());
  EXPECT_EQ("tags: not found", errorOf([] { read<TimeSlot>(slotJson("")); }));
}

TEST(TimeSlotWithEfficiencyTest, WorkAndClockTimeAreConvertedInWholeMilliseconds) {
  const time_duration part = microseconds(900);
  struct Case {
    double efficiency;
    time_duration work;
    ptime end, begin;
    time_duration rest{};
  };
  const Case cases[] = {
      {0.8, hours(2), at(10), at(8), minutes(24)},
      {0.8, minutes(48) + part, at(9), at(9)},
      {1, minutes(60) + part, at(9) + part, at(9) - part},
      {0.8, milliseconds(1598), at(8) + milliseconds(1997), at(10) - milliseconds(1997)}};
  for (const auto& [efficiency, work, end, begin, rest] : cases) {
    time_duration forwards = work, backwards = work;
    EXPECT_EQ(end, slotAt(efficiency).getEndTimeWithEfficiency(forwards));
    EXPECT_EQ(begin, slotAt(efficiency).getBeginTimeWithEfficiency(backwards));
    EXPECT_EQ(rest, forwards);
    EXPECT_EQ(rest, backwards);
  }
  TimeSlotWithEfficiency slow = slotAt(0.8).newFromThis(at(8), at(8) + milliseconds(1997), 1);
  EXPECT_EQ(milliseconds(1597), slow.getDurWithEfficiency()) << "of 1597.6";
  slow.setLocked(true);
  EXPECT_EQ(hours(0), slow.getDurWithEfficiency());
}

TEST(TimeSlotWithEfficiencyTest, ExtremeEfficienciesSaturate) {
  time_duration work = hours(1);
  EXPECT_EQ(at(10), slotAt(0).getEndTimeWithEfficiency(work));
  EXPECT_TRUE(work.is_pos_infinity());
  EXPECT_EQ(hours(0), slotAt(-1).getDurWithEfficiency());
  EXPECT_EQ(hours(0), slotAt(NAN).getDurWithEfficiency());
  EXPECT_TRUE(slotAt(1e300).getDurWithEfficiency().is_pos_infinity());
}

TEST(TimeSlotWithEfficiencyTest, PiecesAndMergingKeepTheEfficiency) {
  TimeSlotWithEfficiency slot = slotAt(0.8);
  EXPECT_FALSE(slot.merge(slotAt(0.9).newFromThis(at(10), at(12), 2)));
  slot.setTag(TimeSlot::Tag::Frozen, true);
  EXPECT_TRUE(slot.merge(slot.newFromThis(at(10), at(12), 2)));
  EXPECT_FALSE(slot.isSameWithoutTime(slot.newFromThis(at(8), at(9), 1, false)));
  const auto piece = slot.newFromThis(at(8), at(9), 1, false, hours(3), 1.25);
  EXPECT_EQ(
      "[2024-03-05 08:00:00,2024-03-05 09:00:00], block count:1.000000, dur:00:00:00, "
      "invalid,unlock,early tags:100, efficiency:1.250000",
      piece.dumpAsString());
  EXPECT_EQ(hours(3), piece.getShiftDur());
}

TEST(TimeSlotWithEfficiencyTest, JsonTruncatesTheEfficiencyToFourDecimals) {
  const std::pair<const char*, float> cases[] = {
      {"1.23456", 1.2345F}, {"0.85", 0.85F}, {"-3", 0.0F}};
  for (const auto& [text, expected] : cases) {
    const auto slot = read<TimeSlotWithEfficiency>(
        slotJson(R"(,"tags":[],"processEfficiency":)" + std::string(text)));
    EXPECT_EQ(static_cast<double>(expected), slot.getEfficiency()) << text;
  }
  TimeSlotWithEfficiency slot = slotAt(0.12345);
  EXPECT_EQ(0.12345, cppbind::JsonEncodeBinder().encode(slot)["processEfficiency"].asDouble());
  EXPECT_EQ(static_cast<double>(0.1234F), slot.getEfficiency()) << "writing truncates, too";
}

}  // namespace
