#include "libvarrow/statistics/RejectionStatistics.h"

#include <array>
#include <boost/thread/lock_guard.hpp>
#include <cmath>
#include <functional>
#include <tuple>

#include "base/time_text.h"
#include "libvarrow/backtrace/Check.h"

namespace libvarrow {

using boost::posix_time::time_duration;
using Lock = boost::lock_guard<boost::mutex>;

namespace {

std::string textOf(const time_duration& duration) {
  std::string text = duration.is_negative() ? "-" : "";
  std::array<char, base::time_text::kMaxLength> digits;
  return text.append(digits.data(), base::time_text::write(digits.data(), duration));
}

template <class Miss>
auto rankOf(const Miss& miss) {
  return std::make_tuple(miss.kind, miss.ticks, miss.number, std::string_view(miss.candidate));
}

}  // namespace

std::size_t RejectionStatistics::PairHash::operator()(const Pair& pair) const {
  const std::hash<std::string_view> hash;
  return hash(pair.subject) * 31 + hash(pair.reason);
}

void RejectionStatistics::rejected(std::string_view subject, std::string_view candidate,
                                   std::string_view reason) {
  const Lock lock(mutex_);
  add({subject, reason}, 1, {ShortBy::Nothing, 0, 0, candidate});
}

void RejectionStatistics::rejected(std::string_view subject, std::string_view candidate,
                                   std::string_view reason, double shortBy) {
  if (!std::isfinite(shortBy)) return rejected(subject, candidate, reason);
  const double amount = shortBy + 0.0;  // -0 becomes 0: they are equal, but have different texts
  const Lock lock(mutex_);
  add({subject, reason}, 1, {ShortBy::Number, 0, amount, candidate});
}

void RejectionStatistics::rejected(std::string_view subject, std::string_view candidate,
                                   std::string_view reason, const time_duration& shortBy) {
  if (shortBy.is_special()) return rejected(subject, candidate, reason);
  const Lock lock(mutex_);
  add({subject, reason}, 1, {ShortBy::Duration, shortBy.ticks(), 0, candidate});
}

void RejectionStatistics::placed(std::string_view subject) {
  const std::string name(subject);
  const Lock lock(mutex_);
  place(name);
}

void RejectionStatistics::merge(RejectionStatistics* other) {
  LIBVARROW_CHECK(other != this);  // else it would wait for its own lock
  const Lock lock(mutex_);
  const Lock otherLock(other->mutex_);
  dropped_ += other->dropped_;
  for (const auto& [name, isPlaced] : other->subjects_) {
    if (isPlaced) place(name);
  }
  for (const auto& [pair, rejections] : other->pairs_) {
    const auto& [kind, ticks, number, candidate] = rejections.nearest;
    add(pair, rejections.count, {kind, ticks, number, candidate});
  }
}

Json::Value RejectionStatistics::toJsonValue4Bind() const {
  const Lock lock(mutex_);
  Json::Value json(Json::objectValue);
  Json::Value& content = json["__rejections__"];
  content["dropped"] = static_cast<Json::UInt64>(dropped_);
  Json::Value& subjects = content["subjects"] = Json::Value(Json::objectValue);
  for (const auto& [name, isPlaced] : subjects_) {
    Json::Value& entry = subjects[name];
    entry["placed"] = isPlaced;
    entry["examined"] = Json::UInt64{0};
    entry["reasons"] = Json::Value(Json::objectValue);
  }
  for (const auto& [pair, rejections] : pairs_) {
    Json::Value& entry = subjects[std::string(pair.subject)];
    Json::Value& examined = entry["examined"];
    examined = examined.asUInt64() + static_cast<Json::UInt64>(rejections.count);
    entry["reasons"][std::string(pair.reason)] = jsonOf(rejections);
  }
  return json;
}

void RejectionStatistics::add(const Pair& pair, std::uint64_t count,
                              const Miss<std::string_view>& miss) {
  Rejections* const rejections = recordOf(pair);
  if (rejections == nullptr) {
    dropped_ += count;
    return;
  }
  auto& nearest = rejections->nearest;
  const bool isFirst = rejections->count == 0;
  rejections->count += count;
  if (!isFirst && rankOf(miss) >= rankOf(nearest)) return;
  nearest.kind = miss.kind;
  nearest.ticks = miss.ticks;
  nearest.number = miss.number;
  nearest.candidate.assign(miss.candidate);
}

// Returns null for a new pair when the statistic is full.
RejectionStatistics::Rejections* RejectionStatistics::recordOf(const Pair& pair) {
  const auto known = pairs_.find(pair);
  if (known != pairs_.end()) return &known->second;
  if (pairs_.size() >= maxPairs_) return nullptr;
  const std::string name(pair.subject);
  auto subject = subjects_.find(name);
  if (subject == subjects_.end()) {
    if (subjects_.size() >= maxPairs_) return nullptr;
    subject = subjects_.emplace(name, false).first;
  }
  const auto reason = reasons_.emplace(pair.reason).first;
  return &pairs_[{subject->first, *reason}];
}

void RejectionStatistics::place(const std::string& subject) {
  const auto known = subjects_.find(subject);
  if (known != subjects_.end()) {
    known->second = true;
  } else if (subjects_.size() < maxPairs_) {
    subjects_[subject] = true;
  } else {
    ++dropped_;
  }
}

Json::Value RejectionStatistics::jsonOf(const Rejections& rejections) {
  const auto& nearest = rejections.nearest;
  Json::Value json(Json::objectValue);
  json["count"] = static_cast<Json::UInt64>(rejections.count);
  json[nearest.kind == ShortBy::Nothing ? "example" : "nearest"] = nearest.candidate;
  if (nearest.kind == ShortBy::Duration) {
    json["short_by"] = textOf(time_duration(0, 0, 0, nearest.ticks));
  } else if (nearest.kind == ShortBy::Number) {
    json["short_by"] = nearest.number;
  }
  return json;
}

}  // namespace libvarrow
