#include "libvarrow/statistics/PercentStatistics.h"

#include <string>

#include "base/number_text.h"

namespace libvarrow {

Json::Value PercentStatistics::toJsonValue4Bind() const {
  const std::int64_t part = count();
  const double percent = static_cast<double>(part) / static_cast<double>(total_) * 100;
  return Json::Value(std::to_string(part) + "/" + std::to_string(total_) + ";" +
                     base::number_text::general(percent) + "%");
}

}  // namespace libvarrow
