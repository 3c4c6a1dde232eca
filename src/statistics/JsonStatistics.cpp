#include "libvarrow/statistics/JsonStatistics.h"

namespace libvarrow {

JsonStatistics::JsonStatistics(const Json::Value* value) {
  if (value != nullptr) value_ = *value;
}

JsonStatistics::JsonStatistics(const Json::Value& value) : value_(value) {}

Json::Value JsonStatistics::toJsonValue4Bind() const {
  return value_;
}

}  // namespace libvarrow
