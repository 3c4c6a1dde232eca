#include "statistics/statistics_file.h"

#include <boost/filesystem/operations.hpp>

#include "backtrace/stop.h"
#include "base/json_text.h"
#include "base/text_file.h"
#include "libvarrow/log/log.h"
#include "libvarrow/utility/DirCreator.h"
#include "libvarrow/utility/file_name.h"

namespace libvarrow {

namespace {

constexpr const char* kOperation =
    "static std::string libvarrow::CommonStatistics::dumpToFile(const boost::filesystem::path&, "
    "const Json::Value&)";

}  // namespace

StatisticsFile writeStatisticsFile(const boost::filesystem::path& path, const Json::Value& value,
                                   OldFile old) {
  using base::TextWritten;
  std::string realFile = path.generic_string();
  utility::adjustFileName(realFile);
  const std::string text = statisticsText(value);
  if (old == OldFile::Removed) {
    boost::system::error_code ignored;  // opening the file tells
    boost::filesystem::remove(realFile, ignored);
  }
  // The directory is there as a rule: it is made only when the file cannot be opened.
  TextWritten written = base::writeTextFile(realFile, text);
  if (written == TextWritten::NotOpened) {
    DirCreator(realFile, false);
    written = base::writeTextFile(realFile, text);
  }
  if (written != TextWritten::NotOpened) return {realFile, written == TextWritten::Whole};
  const std::string reason = kOperation + (" src_file:" + path.string() + " real_file:" + realFile);
  LIBVARROW_LOG_ERROR("%s", reason.c_str());
  stopAfterLogging(reason);
}

std::string statisticsText(const Json::Value& value) {
  return base::json_text::styled(value, " ");
}

}  // namespace libvarrow
