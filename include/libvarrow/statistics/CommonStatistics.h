// The base of every statistic.
#pragma once

#include <json/value.h>

#include <boost/filesystem/path.hpp>
#include <boost/noncopyable.hpp>
#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

/// Base of the values that are recorded while a program runs and rendered as one JSON value each.
/// Statistics live in a StatisticsContainer, which owns them, and are updated through the pointers
/// that it returns. Each class documents its thread safety.
class LIBVARROW_API CommonStatistics : private boost::noncopyable {
 public:
  virtual ~CommonStatistics();

  /// Returns the statistic as JSON, as each class documents.
  virtual Json::Value toJsonValue4Bind() const = 0;

  /// Aborts with a back-trace: statistics are never read back.
  virtual void fromJsonValue4Bind(const Json::Value& json);

  /// Returns toJsonValue4Bind() as text, indented by one space per level, with a line end.
  std::string dumpAsJsonString() const;

  /// Writes that text to `path` and creates missing directories. Returns the name of the file
  /// really written: `path` made absolute and shortened as by utility::adjustFileName. Logs at
  /// ERROR and aborts with a back-trace when the file cannot be opened. Errors while writing are
  /// not reported.
  std::string dumpToFile(const boost::filesystem::path& path) const;
  /// Writes any JSON value in the same way.
  static std::string dumpToFile(const boost::filesystem::path& path, const Json::Value& value);
};

}  // namespace libvarrow
