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

/// Overwritten: the content is replaced, through a symbolic link too. Removed: an old file, link or
/// empty directory is removed first, and a new file is made.
enum class OldFile { Overwritten, Removed };

/// Writes `value` as CommonStatistics::dumpToFile does. A file cut short (by a full disk, say) is
/// left as it is. Throws std::bad_alloc before anything is written or removed.
StatisticsFile writeStatisticsFile(const boost::filesystem::path& path, const Json::Value& value,
                                   OldFile old = OldFile::Overwritten);

/// Statistics as they stand in files.
std::string statisticsText(const Json::Value& value);

}  // namespace libvarrow
