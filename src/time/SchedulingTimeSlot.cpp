#include "libvarrow/time/SchedulingTimeSlot.h"

#include <map>
#include <set>
#include <stdexcept>
#include <tuple>
#include <utility>

#include "base/NeverDestroyed.h"
#include "base/number_text.h"
#include "base/system_text.h"
#include "cppbind/imp/binder.h"
#include "libvarrow/backtrace/Check.h"
#include "libvarrow/backtrace/TracedError.h"
#include "libvarrow/log/log.h"
#include "libvarrow/stream/FastStringStream.h"
#include "libvarrow/time/time_range.h"
#include "libvarrow/utility/UTFConverter.h"
#include "time/saturating_time.h"

namespace utility {

using boost::posix_time::ptime;
using boost::posix_time::time_duration;
using libvarrow::utility::fromUtf8;

namespace {

const std::map<std::string, TimeSlot::Tag>& namedTags() {
  using NamedTags = const std::map<std::string, TimeSlot::Tag>;
  static libvarrow::base::NeverDestroyed<NamedTags> tags(
      NamedTags{{"frozen", TimeSlot::Tag::Frozen}});
  return *tags;
}

std::string tagNames() {
  std::string names;
  for (const auto& [name, tag] : namedTags()) names += (names.empty() ? "" : ",") + name;
  return names;
}

std::size_t positionOf(TimeSlot::Tag tag) {
  const auto position = static_cast<std::size_t>(tag);
  if (position >= TimeSlot::kTagCount) throw std::out_of_range("invalid bitset<N> position");
  return position;
}

bool areSameText(const boost::shared_ptr<std::string>& a, const boost::shared_ptr<std::string>& b) {
  return a == b || (a != nullptr && b != nullptr && *a == *b);
}

}  // namespace

TimeSlot::TimeSlot(ptime const& begin, ptime const& end, float blockCount, bool rest,
                   boost::shared_ptr<std::string> shift, time_duration const& shiftDur,
                   boost::shared_ptr<TimeSlot> originalSlot)
    : begin_time_(begin),
      end_time_(end),
      blockCount_(blockCount),
      rest_(rest),
      shift_(std::move(shift)),
      shiftDur_(shiftDur),
      originalSlot_(std::move(originalSlot)) {
  if (end < begin) {
    libvarrow::throwTraced(fromUtf8("时间范围错误，开始时间:") + libvarrow::time2str(begin) +
                           fromUtf8(" 晚于结束时间:") + libvarrow::time2str(end));
  }
}

TimeSlot::~TimeSlot() = default;

void TimeSlot::setShift(boost::shared_ptr<std::string> shift) {
  shift_ = std::move(shift);
}

void TimeSlot::setOriginalSlot(boost::shared_ptr<TimeSlot> originalSlot) {
  originalSlot_ = std::move(originalSlot);
}

bool TimeSlot::getTag(Tag tag) const {
  return tags_[positionOf(tag)];
}

void TimeSlot::setTag(Tag tag, bool value) {
  tags_[positionOf(tag)] = value;
}

time_duration TimeSlot::getDur() const {
  return rest_ && !locked_ ? end_time_ - begin_time_ : time_duration();
}

bool TimeSlot::hasNeedBlock(float need) const {
  return !rest_ || blockCount_ >= need;
}

bool TimeSlot::isValid(std::unordered_set<Tag> const& allowed) const {
  return rest_ && (!getTag(Tag::Frozen) || allowed.count(Tag::Frozen) > 0);
}

bool TimeSlot::isSameWithoutTime(TimeSlot const& other) const {
  return rest_ == other.rest_;
}

bool TimeSlot::isSameKind(TimeSlot const& other) const {
  return originalSlot_ == other.originalSlot_ && rest_ == other.rest_ &&
         blockCount_ == other.blockCount_ && areSameText(shift_, other.shift_) &&
         tags_ == other.tags_;
}

bool TimeSlot::merge(TimeSlot const& other) {
  if (!isSameKind(other)) return false;
  if (end_time_ == other.begin_time_) {
    end_time_ = other.end_time_;
    return true;
  }
  if (begin_time_ == other.end_time_) {
    begin_time_ = other.begin_time_;
    return true;
  }
  return false;
}

TimeSlot TimeSlot::newFromThis(ptime const& begin, ptime const& end, float blockCount) const {
  TimeSlot slot(begin, end, blockCount, rest_, shift_, shiftDur_, originalSlot_);
  slot.copyTags(*this);
  return slot;
}

ptime TimeSlot::getBeginTime(ptime const& end_time, time_duration& dur) const {
  if (!rest_) return begin_time_;
  LIBVARROW_CHECK(end_time >= begin_time_ && end_time <= end_time_);
  const ptime begin = libvarrow::shifted(end_time, -dur);
  if (begin >= begin_time_) {
    dur = time_duration();
    return begin;
  }
  dur -= end_time - begin_time_;
  return begin_time_;
}

ptime TimeSlot::getBeginTime(time_duration& dur) const {
  return getBeginTime(end_time_, dur);
}

ptime TimeSlot::getEndTime(ptime const& begin_time, time_duration& dur) const {
  if (!rest_) return end_time_;
  LIBVARROW_CHECK(begin_time >= begin_time_ && begin_time <= end_time_);
  const ptime end = libvarrow::shifted(begin_time, dur);
  if (end <= end_time_) {
    dur = time_duration();
    return end;
  }
  dur -= end_time_ - begin_time;
  return end_time_;
}

ptime TimeSlot::getEndTime(time_duration& dur) const {
  return getEndTime(begin_time_, dur);
}

bool TimeSlot::operator<(TimeSlot const& other) const {
  return std::tie(begin_time_, end_time_) < std::tie(other.begin_time_, other.end_time_);
}

std::string TimeSlot::dumpAsString() const {
  libvarrow::FastStringStream text;
  text << '[' << begin_time_ << ',' << end_time_
       << "], block count:" << libvarrow::base::number_text::sixDecimals(blockCount_)
       << ", dur:" << getDur() << ", " << (rest_ ? "valid" : "invalid") << ','
       << (locked_ ? "locked" : "unlock") << ',' << (shift_ != nullptr ? *shift_ : std::string())
       << " tags:" << tags_.to_string();
  return text.str();
}

void TimeSlot::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  binder->bind("timeBegin", begin_time_);
  binder->bind("timeEnd", end_time_);
  binder->bind("shift", shift_);
  binder->bind("blockCount", blockCount_, blockCount_);
  readTags(*binder);
}

// Binds a new, empty set: tags are read from JSON into the slot, but never written.
void TimeSlot::readTags(cppbind::Binder& binder) {
  std::set<std::string> names;
  binder.bind("tags", names);
  for (const std::string& name : names) {
    const auto found = namedTags().find(name);
    if (found != namedTags().end()) {
      setTag(found->second, true);
    } else {
      LIBVARROW_LOG_ERROR("%s%s%s%s", fromUtf8("不支持的tag:").c_str(),
                          libvarrow::base::systemText(name).c_str(),
                          fromUtf8(" 受支持的列表参考:").c_str(), tagNames().c_str());
    }
  }
}

}  // namespace utility
