#include "time_texts.h"

#include <algorithm>
#include <boost/date_time/posix_time/posix_time.hpp>
#include <cctype>
#include <utility>

#include "base/time_digits.h"
#include "cppbind/ParseErrorException.h"
#include "cppbind/type/StringConverter.h"

namespace cppbind::detail {

namespace {

// Returns true for a text that is already in the form in which its value is written. Most texts
// are, and are then not converted.
bool isCanonical(ValueKind kind, std::string_view text) {
  namespace time_digits = libvarrow::base::time_digits;
  boost::gregorian::date date;
  boost::posix_time::ptime time;
  boost::posix_time::time_duration duration;
  if (kind == ValueKind::Date) return time_digits::readDate(text, date);
  if (kind == ValueKind::Time) return time_digits::readTime(text, time);
  return time_digits::readDuration(text, duration);
}

template <class Text>
std::string rewritten(std::string_view text) {
  return Text::toString(Text::fromString(text));
}

// The text of a duration has no sign.
template <>
std::string rewritten<BoostTimeDurationText>(std::string_view text) {
  const boost::posix_time::time_duration value = BoostTimeDurationText::fromString(text);
  const bool isNegative = !value.is_special() && value.is_negative();
  return (isNegative ? "-" : "") + BoostTimeDurationText::toString(value);
}

// Returns the form in which the value of `text` is written; `text` itself if it has no value.
std::string formOf(ValueKind kind, const std::string& text) {
  try {
    if (kind == ValueKind::Date) return rewritten<BoostGDateText>(text);
    if (kind == ValueKind::Time) return rewritten<BoostPTimeText>(text);
    return rewritten<BoostTimeDurationText>(text);
  } catch (const std::exception&) {
    return text;  // an error that was found before
  }
}

std::string lowered(std::string name) {
  for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return name;
}

bool hasTimes(const ValueDescription& value) {
  return value.kind == ValueKind::Date || value.kind == ValueKind::Time ||
         value.kind == ValueKind::Duration ||
         std::any_of(value.elements.begin(), value.elements.end(), hasTimes);
}

bool hasTimesInFields(const ObjectDescription& object) {
  const auto isTime = [](const FieldDescription& field) { return hasTimes(field.value); };
  return std::any_of(object.fields.begin(), object.fields.end(), isTime) ||
         std::any_of(object.whole.begin(), object.whole.end(), isTime);
}

const Json::Value* memberOf(const Json::Value& object, const std::string& key) {
  return object.isObject() ? object.find(key.data(), key.data() + key.size()) : nullptr;
}

}  // namespace

TimeTexts::TimeTexts(const Describer& describer, Visit visit) : visit_(std::move(visit)) {
  for (const ObjectDescription& record : describer.records()) {
    recordsById_[record.id] = &record;
    hasObjectsWithTimes_ |= hasTimesInFields(record);
  }
  for (const ObjectDescription& entry : describer.classes()) {
    classesByName_[lowered(entry.name)].push_back(&entry);
    hasObjectsWithTimes_ |= hasTimesInFields(entry);
  }
}

void TimeTexts::find(const ValueDescription& value, const Json::Value& json, Path path) {
  if (!hasObjectsWithTimes_ && !hasTimes(value)) return;
  path_ = std::move(path);
  walk(value, json);
}

void TimeTexts::findInObject(const ValueDescription& value, const Json::Value& json, Path path) {
  if (!hasObjectsWithTimes_) return;
  path_ = std::move(path);
  const ObjectDescription* const object = classOf(value, path_.back());
  if (object != nullptr) walkObject(*object, json);
}

void TimeTexts::walk(const ValueDescription& value, const Json::Value& json) {
  switch (value.kind) {
    case ValueKind::Date:
    case ValueKind::Time:
    case ValueKind::Duration: {
      if (!json.isString()) return;
      const std::string text = json.asString();
      if (isCanonical(value.kind, text)) return;
      const std::string form = formOf(value.kind, text);
      if (form != text) visit_(path_, form);
      return;
    }
    case ValueKind::List:
    case ValueKind::Set:
      if (value.elements.empty() || !json.isArray()) return;
      for (auto element = json.begin(); element != json.end(); ++element) {
        below("[" + std::to_string(element.index()) + "]",
              [&] { walk(value.elements.front(), *element); });
      }
      return;
    case ValueKind::Map:
      if (value.elements.empty() || !json.isObject()) return;
      for (auto member = json.begin(); member != json.end(); ++member) {
        below(member.name(), [&] { walk(value.elements.front(), *member); });
      }
      return;
    case ValueKind::Record: {
      const auto record =
          value.names.empty() ? recordsById_.end() : recordsById_.find(value.names.front());
      if (record != recordsById_.end()) walkObject(*record->second, json);
      return;
    }
    case ValueKind::Object:
      return walkNamed(value, json);
    default:
      return;
  }
}

void TimeTexts::walkObject(const ObjectDescription& object, const Json::Value& json) {
  if (object.fields.empty() && object.whole.empty()) return;
  // Objects under a key that is bound twice, at each level, would take exponential time.
  if (!walked_[&object].insert(&json).second) return;
  for (const FieldDescription& whole : object.whole) walk(whole.value, json);
  for (const FieldDescription& field : object.fields) {
    const Json::Value* const member = memberOf(json, field.key);
    if (member != nullptr) below(field.key, [&] { walk(field.value, *member); });
  }
}

void TimeTexts::walkNamed(const ValueDescription& value, const Json::Value& json) {
  if (!json.isObject() || json.size() != 1) return;
  const auto member = json.begin();
  std::string name = member.name();
  const ObjectDescription* const object = classOf(value, name);
  if (object != nullptr) below(std::move(name), [&] { walkObject(*object, *member); });
}

const ObjectDescription* TimeTexts::classOf(const ValueDescription& value,
                                            const std::string& name) const {
  const auto named = classesByName_.find(lowered(name));
  if (named == classesByName_.end()) return nullptr;
  for (const ObjectDescription* object : named->second) {
    const auto& ids = value.names;
    if (std::find(ids.begin(), ids.end(), object->id) != ids.end()) return object;
  }
  return nullptr;
}

}  // namespace cppbind::detail
