// Statistics files, for who must know whether one was written whole.
#pragma once

#include <json/value.h>

#include <boost/filesystem/path.hpp>
#include <string>

namespace libvarrow {

struct StatisticsFile {
  std::string name;
  bool isWhole;
};

/// CommonStatistics::dumpToFile. What was cut short (a full disk, say) is left as it is.
StatisticsFile writeStatisticsFile(const boost::filesystem::path& path, const Json::Value& value);

/// Statistics as they stand in files.
std::string statisticsText(const Json::Value& value);

}  // namespace libvarrow
