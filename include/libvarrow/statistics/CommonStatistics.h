// The base of every statistic.
#pragma once

#include <json/value.h>

#include <boost/filesystem/path.hpp>
#include <boost/noncopyable.hpp>
#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

/// A value that is recorded while a program runs and rendered as one JSON value. Statistics live in
/// a StatisticsContainer, which owns them, and are updated through the pointers that it hands out.
/// Each class says what threads may do with it.
class LIBVARROW_API CommonStatistics : private boost::noncopyable {
 public:
  virtual ~CommonStatistics();

  /// The statistic as JSON, as each class documents.
  virtual Json::Value toJsonValue4Bind() const = 0;

  /// Statistics are never read back: ends the process with a back-trace.
  virtual void fromJsonValue4Bind(const Json::Value& json);

  /// toJsonValue4Bind() as text, indented by one space a level, with a line end.
  std::string dumpAsJsonString() const;

  /// Writes that text to `path` and returns the name of the file really written: `path` made
  /// absolute and shortened as by utility::adjustFileName. Missing directories are made. A file
  /// that cannot be opened is logged at ERROR and ends the process with a back-trace; errors while
  /// writing are not reported.
  std::string dumpToFile(const boost::filesystem::path& path) const;
  /// The same for any JSON value.
  static std::string dumpToFile(const boost::filesystem::path& path, const Json::Value& value);
};

}  // namespace libvarrow
