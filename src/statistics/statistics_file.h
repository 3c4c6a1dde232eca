// Writes statistics files and reports whether a file is complete.
#pragma once

#include <json/value.h>

#include <string>

namespace libvarrow {

struct StatisticsFile {
  std::string name;
  bool isWhole;
};

/// Treatment of an old file. Overwritten: its content is replaced, also through a symbolic link.
/// Removed: an old file, link or empty directory is removed first, and a new file is created.
enum class OldFile { Overwritten, Removed };

/// Writes `value` into the file `name` as CommonStatistics::dumpToFile does. A file that cannot be
/// written completely (full disk, for example) is left truncated. Throws std::bad_alloc before
/// anything is written or removed.
StatisticsFile writeStatisticsFile(const std::string& name, const Json::Value& value,
                                   OldFile old = OldFile::Overwritten);

/// Returns `value` as text in the form of statistics files.
std::string statisticsText(const Json::Value& value);

}  // namespace libvarrow
