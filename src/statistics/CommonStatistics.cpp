#include "libvarrow/statistics/CommonStatistics.h"

#include "backtrace/stop.h"
#include "statistics/statistics_file.h"

namespace libvarrow {

CommonStatistics::~CommonStatistics() = default;

void CommonStatistics::fromJsonValue4Bind(const Json::Value&) {
  stop("statistics are not read back from JSON");
}

std::string CommonStatistics::dumpAsJsonString() const {
  return statisticsText(toJsonValue4Bind());
}

std::string CommonStatistics::dumpToFile(const boost::filesystem::path& path) const {
  return dumpToFile(path, toJsonValue4Bind());
}

std::string CommonStatistics::dumpToFile(const boost::filesystem::path& path,
                                         const Json::Value& value) {
  return writeStatisticsFile(path.string(), value).name;
}

}  // namespace libvarrow
