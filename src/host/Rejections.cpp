#include "host/Rejections.h"

#include <cppbind/type/StringConverter.h>

#include <algorithm>
#include <stdexcept>
#include <tuple>

namespace libvarrow::host {

namespace {

using IsOfType = bool (Json::Value::*)() const;

const Json::Value& member(const Json::Value& object, const char* key, IsOfType isOfType) {
  if (object.isObject() && (object[key].*isOfType)()) return object[key];
  throw std::runtime_error(std::string("\"") + key + "\" of rejections is missing or wrong");
}

std::uint64_t countIn(const Json::Value& object, const char* key) {
  return member(object, key, &Json::Value::isUInt64).asUInt64();
}

// The nearest miss comes first, as in RejectionStatistics.
bool isNearer(const Rejection& left, const Rejection& right) {
  const auto rankOf = [](const Rejection& rejection) {
    const Json::Value& amount = rejection.shortBy;
    const bool isDuration = amount.isString();
    const auto duration =
        cppbind::BoostTimeDurationText::fromString(isDuration ? amount.asString() : "00:00:00");
    return std::make_tuple(isDuration           ? 0
                           : amount.isNumeric() ? 1
                                                : 2,
                           duration, amount.isNumeric() ? amount.asDouble() : 0,
                           rejection.candidate);
  };
  return rankOf(left) < rankOf(right);
}

Rejection rejectionOf(const Json::Value& json) {
  Rejection rejection{countIn(json, "count")};
  const bool isExample = json.isMember("example");
  rejection.candidate =
      member(json, isExample ? "example" : "nearest", &Json::Value::isString).asString();
  if (isExample) return rejection;
  const bool isDuration = json["short_by"].isString();
  rejection.shortBy =
      member(json, "short_by", isDuration ? &Json::Value::isString : &Json::Value::isNumeric);
  return rejection;
}

Verdict verdictOf(const Json::Value& json) {
  Verdict verdict;
  verdict.isPlaced = member(json, "placed", &Json::Value::isBool).asBool();
  const Json::Value& reasons = member(json, "reasons", &Json::Value::isObject);
  for (auto reason = reasons.begin(); reason != reasons.end(); ++reason) {
    verdict.rejections[reason.name()] = rejectionOf(*reason);
  }
  return verdict;
}

void add(const Json::Value& content, RejectionsAtPlace& place) {
  place.dropped += countIn(content, "dropped");
  const Json::Value& subjects = member(content, "subjects", &Json::Value::isObject);
  for (auto subject = subjects.begin(); subject != subjects.end(); ++subject) {
    place.subjects[subject.name()].merge(verdictOf(*subject));
  }
}

// Containers are lists; the keys of objects are the names of a place. The root's name is left out.
void find(const Json::Value& json, const std::string& place, bool isRoot, Rejections& found) {
  if (json.isArray()) {
    for (const Json::Value& element : json) find(element, place, false, found);
  } else if (json.isObject() && json.size() == 1 && json.isMember("__rejections__")) {
    add(json["__rejections__"], found[place]);
  } else if (json.isObject()) {
    for (auto child = json.begin(); child != json.end(); ++child) {
      const std::string inside = place.empty() ? child.name() : place + "/" + child.name();
      find(*child, isRoot ? "" : inside, false, found);
    }
  }
}

}  // namespace

std::uint64_t Verdict::examined() const {
  std::uint64_t sum = 0;
  for (const auto& [reason, rejection] : rejections) sum += rejection.count;
  return sum;
}

std::vector<std::pair<std::string, Rejection>> Verdict::byCount() const {
  std::vector<std::pair<std::string, Rejection>> sorted(rejections.begin(), rejections.end());
  std::stable_sort(sorted.begin(), sorted.end(), [](const auto& left, const auto& right) {
    return left.second.count > right.second.count;
  });
  return sorted;
}

void Verdict::merge(const Verdict& other) {
  isPlaced = isPlaced || other.isPlaced;
  for (const auto& [reason, added] : other.rejections) {
    const auto [known, isNew] = rejections.try_emplace(reason, added);
    if (isNew) continue;
    const std::uint64_t count = known->second.count + added.count;
    if (isNearer(added, known->second)) known->second = added;
    known->second.count = count;
  }
}

Rejections rejectionsIn(const Json::Value& statistics) {
  Rejections found;
  find(statistics, "", true, found);
  return found;
}

}  // namespace libvarrow::host
