#include "libvarrow/time/TimeSlotWithEfficiency.h"

#include <limits>
#include <utility>

#include "base/number_text.h"
#include "base/truncated.h"
#include "cppbind/imp/binder.h"

namespace utility {

using boost::posix_time::milliseconds;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;

namespace {

time_duration wholeMilliseconds(double count) {
  const std::uint64_t whole = libvarrow::base::truncatedToUnsigned(count);
  // A greater count would overflow the duration's representation.
  const auto most = std::numeric_limits<std::int64_t>::max() / time_duration::ticks_per_second();
  if (whole / 1000 >= static_cast<std::uint64_t>(most)) return boost::date_time::pos_infin;
  return milliseconds(static_cast<std::int64_t>(whole));
}

double inMilliseconds(const time_duration& duration) {
  return static_cast<double>(duration.total_milliseconds());
}

// Converts clock time to work time.
time_duration fromEfficiencyDur(const time_duration& clock, double efficiency) {
  return clock.is_special() ? clock : wholeMilliseconds(inMilliseconds(clock) * efficiency);
}

// Converts work time to clock time.
time_duration toEfficiencyDur(const time_duration& work, double efficiency) {
  return work.is_special() ? work : wholeMilliseconds(inMilliseconds(work) / efficiency);
}

// Returns the result of `use` for clock time, where `dur` is work time before and after.
template <class Use>
ptime atRate(double efficiency, time_duration& dur, Use use) {
  if (efficiency == 1.0) return use(dur);
  time_duration clock = toEfficiencyDur(dur, efficiency);
  const ptime time = use(clock);
  dur = fromEfficiencyDur(clock, efficiency);
  return time;
}

// The precision that readers of the JSON have always received: four decimals in single precision.
double toFourDecimals(double efficiency) {
  return static_cast<float>(libvarrow::base::truncatedToUnsigned(efficiency * 10000.0)) / 10000.0F;
}

}  // namespace

TimeSlotWithEfficiency::TimeSlotWithEfficiency(ptime const& begin, ptime const& end,
                                               float blockCount, bool rest, double efficiency,
                                               boost::shared_ptr<std::string> shift,
                                               time_duration const& shiftDur,
                                               boost::shared_ptr<TimeSlot> originalSlot)
    : TimeSlot(begin, end, blockCount, rest, std::move(shift), shiftDur, std::move(originalSlot)),
      efficiency_(efficiency) {}

TimeSlotWithEfficiency::TimeSlotWithEfficiency(ptime const& begin, ptime const& end,
                                               float blockCount, bool rest,
                                               boost::shared_ptr<std::string> shift,
                                               time_duration const& shiftDur,
                                               boost::shared_ptr<TimeSlot> originalSlot)
    : TimeSlot(begin, end, blockCount, rest, std::move(shift), shiftDur, std::move(originalSlot)) {}

time_duration TimeSlotWithEfficiency::getDurWithEfficiency() const {
  return fromEfficiencyDur(getDur(), efficiency_);
}

ptime TimeSlotWithEfficiency::getBeginTimeWithEfficiency(ptime const& end_time,
                                                         time_duration& dur) const {
  return atRate(efficiency_, dur,
                [&](time_duration& clock) { return getBeginTime(end_time, clock); });
}

ptime TimeSlotWithEfficiency::getBeginTimeWithEfficiency(time_duration& dur) const {
  return getBeginTimeWithEfficiency(getEndTime(), dur);
}

ptime TimeSlotWithEfficiency::getEndTimeWithEfficiency(ptime const& begin_time,
                                                       time_duration& dur) const {
  return atRate(efficiency_, dur,
                [&](time_duration& clock) { return getEndTime(begin_time, clock); });
}

ptime TimeSlotWithEfficiency::getEndTimeWithEfficiency(time_duration& dur) const {
  return getEndTimeWithEfficiency(getBeginTime(), dur);
}

bool TimeSlotWithEfficiency::isSameWithoutTime(TimeSlotWithEfficiency const& other) const {
  return efficiency_ == other.efficiency_ && TimeSlot::isSameWithoutTime(other);
}

bool TimeSlotWithEfficiency::merge(TimeSlotWithEfficiency const& other) {
  return isSameWithoutTime(other) && TimeSlot::merge(other);
}

TimeSlotWithEfficiency TimeSlotWithEfficiency::newFromThis(ptime const& begin, ptime const& end,
                                                           float blockCount) const {
  return newFromThis(begin, end, blockCount, isRest());
}

TimeSlotWithEfficiency TimeSlotWithEfficiency::newFromThis(ptime const& begin, ptime const& end,
                                                           float blockCount, bool rest) const {
  return newFromThis(begin, end, blockCount, rest, getShiftDur());
}

TimeSlotWithEfficiency TimeSlotWithEfficiency::newFromThis(ptime const& begin, ptime const& end,
                                                           float blockCount, bool rest,
                                                           time_duration const& shiftDur) const {
  return newFromThis(begin, end, blockCount, rest, shiftDur, efficiency_);
}

TimeSlotWithEfficiency TimeSlotWithEfficiency::newFromThis(ptime const& begin, ptime const& end,
                                                           float blockCount, bool rest,
                                                           time_duration const& shiftDur,
                                                           double efficiency) const {
  TimeSlotWithEfficiency slot(begin, end, blockCount, rest, efficiency, getShift(), shiftDur,
                              getOriginalSlot());
  slot.copyTags(*this);
  return slot;
}

std::string TimeSlotWithEfficiency::dumpAsString() const {
  return TimeSlot::dumpAsString() +
         ", efficiency:" + libvarrow::base::number_text::sixDecimals(efficiency_);
}

void TimeSlotWithEfficiency::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  TimeSlot::setBind(binder, bindFields);
  binder->bind("processEfficiency", efficiency_, efficiency_);
  efficiency_ = toFourDecimals(efficiency_);
}

}  // namespace utility
