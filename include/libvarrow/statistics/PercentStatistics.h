// A count out of a fixed total.
#pragma once

#include <cstdint>

#include "libvarrow/Export.h"
#include "libvarrow/statistics/CountStatistics.h"

namespace libvarrow {

/// A CountStatistics with a total. Rendered as "count/total;percent%", 3 of 4 as "3/4;75%", with
/// six significant digits; a total of 0 gives "inf", "nan" or "-nan".
class LIBVARROW_API PercentStatistics : public CountStatistics {
 public:
  /// Starts at 0 of `total`.
  explicit PercentStatistics(std::uint64_t total) : total_(total) {}

  Json::Value toJsonValue4Bind() const override;

 protected:
  /// Returns the count that is 100 %.
  std::uint64_t total() const { return total_; }

 private:
  std::uint64_t total_;
};

}  // namespace libvarrow
