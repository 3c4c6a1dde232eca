// A statistic that holds a JSON value.
#pragma once

#include "libvarrow/Export.h"
#include "libvarrow/statistics/CommonStatistics.h"

namespace libvarrow {

/// A copy of a JSON value, rendered unchanged. Not thread-safe: do not change it while it is
/// rendered.
class LIBVARROW_API JsonStatistics : public CommonStatistics {
 public:
  /// Copies `*value`; a null pointer gives a JSON null.
  explicit JsonStatistics(const Json::Value* value = nullptr);
  /// Copies `value`.
  explicit JsonStatistics(const Json::Value& value);

  /// Replaces the value with a copy of `value`.
  void setJsonValue(const Json::Value& value) { value_ = value; }

  Json::Value toJsonValue4Bind() const override;

 private:
  Json::Value value_;
};

}  // namespace libvarrow
