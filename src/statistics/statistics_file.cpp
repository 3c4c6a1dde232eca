#include "statistics_file.h"

#include <boost/filesystem/operations.hpp>

#include "JsonText.h"
#include "TextFile.h"
#include "backtrace/stop.h"
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
  using cppbind::TextWritten;
  std::string realFile = path.generic_string();
  utility::adjustFileName(realFile);
  const std::string text = statisticsText(value);
  if (old == OldFile::Removed) {
    boost::system::error_code ignored;  // opening the file tells
    boost::filesystem::remove(realFile, ignored);
  }
  // The directory is there as a rule: it is made only when the file cannot be opened.
  TextWritten written = cppbind::writeTextFile(realFile, text);
  if (written == TextWritten::NotOpened) {
    DirCreator(realFile, false);
    written = cppbind::writeTextFile(realFile, text);
  }
  if (written != TextWritten::NotOpened) return {realFile, written == TextWritten::Whole};
  const std::string reason = kOperation + (" src_file:" + path.string() + " real_file:" + realFile);
  LIBVARROW_LOG_ERROR("%s", reason.c_str());
  stopAfterLogging(reason);
}

std::string statisticsText(const Json::Value& value) {
  return cppbind::json_text::styled(value, " ");
}

}  // namespace libvarrow
