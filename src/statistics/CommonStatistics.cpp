#include "libvarrow/statistics/CommonStatistics.h"

#include <boost/current_function.hpp>

#include "JsonText.h"
#include "TextFile.h"
#include "libvarrow/backtrace/BackTraceException.h"
#include "libvarrow/log/log.h"
#include "libvarrow/utility/DirCreator.h"
#include "libvarrow/utility/file_name.h"

namespace libvarrow {

namespace {

std::string asText(const Json::Value& value) {
  return cppbind::json_text::styled(value, " ");
}

}  // namespace

CommonStatistics::~CommonStatistics() = default;

void CommonStatistics::fromJsonValue4Bind(const Json::Value&) {
  throw BackTraceException();
}

std::string CommonStatistics::dumpAsJsonString() const {
  return asText(toJsonValue4Bind());
}

std::string CommonStatistics::dumpToFile(const boost::filesystem::path& path) const {
  return dumpToFile(path, toJsonValue4Bind());
}

std::string CommonStatistics::dumpToFile(const boost::filesystem::path& path,
                                         const Json::Value& value) {
  std::string realFile = path.generic_string();
  utility::adjustFileName(realFile);
  const std::string text = asText(value);
  // The directory is there as a rule: it is made only when the file cannot be opened.
  if (cppbind::writeTextFile(realFile, text)) return realFile;
  DirCreator(realFile, false);
  if (cppbind::writeTextFile(realFile, text)) return realFile;
  LIBVARROW_LOG_ERROR("%s src_file:%s real_file:%s", BOOST_CURRENT_FUNCTION, path.string().c_str(),
                      realFile.c_str());
  throw BackTraceException();
}

}  // namespace libvarrow
