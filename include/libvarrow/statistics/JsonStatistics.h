// A JSON value among the statistics.
#pragma once

#include "libvarrow/Export.h"
#include "libvarrow/statistics/CommonStatistics.h"

namespace libvarrow {

/// Holds a copy of a JSON value and renders it as it is. Not locked: do not change it while it is
/// rendered.
class LIBVARROW_API JsonStatistics : public CommonStatistics {
 public:
  /// A null pointer gives a JSON null.
  explicit JsonStatistics(const Json::Value* value = nullptr);
  /// Copies `value`.
  explicit JsonStatistics(const Json::Value& value);

  /// Replaces the value by a copy of `value`.
  void setJsonValue(const Json::Value& value) { value_ = value; }

  Json::Value toJsonValue4Bind() const override;

 private:
  Json::Value value_;
};

}  // namespace libvarrow
