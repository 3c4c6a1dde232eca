#include "statistics/statistics_file.h"

#include <boost/filesystem/operations.hpp>
#include <utility>

#include "backtrace/stop.h"
#include "base/json_text.h"
#include "base/text_file.h"
#include "libvarrow/log/log.h"
#include "libvarrow/utility/file_name.h"
#include "utility/new_folder.h"

namespace libvarrow {

namespace {

constexpr const char* kOperation =
    "static std::string libvarrow::CommonStatistics::dumpToFile(const boost::filesystem::path&, "
    "const Json::Value&)";

// Removes the old file where `old` says so. Returns false when it cannot be removed: it may be a
// link to a file of another user.
bool removeOldFile(const std::string& fileName, OldFile old) {
  if (old == OldFile::Overwritten) return true;
  boost::system::error_code error;
  boost::filesystem::remove(fileName, error);
  return !error;
}

base::TextWritten write(const std::string& fileName, const std::string& text, OldFile old) {
  if (!removeOldFile(fileName, old)) return base::TextWritten::NotOpened;
  return base::writeTextFile(fileName, text);
}

}  // namespace

StatisticsFile writeStatisticsFile(const std::string& name, const Json::Value& value, OldFile old) {
  using base::TextWritten;
  std::string realFile = name;
  utility::adjustFileName(realFile);
  const std::string text = statisticsText(value);
  TextWritten written = TextWritten::NotOpened;
  utility::openInFolder(realFile, [&] {
    written = write(realFile, text, old);
    return written != TextWritten::NotOpened;
  });
  if (written != TextWritten::NotOpened) {
    return {std::move(realFile), written == TextWritten::Whole};
  }
  const std::string reason = kOperation + (" src_file:" + name + " real_file:" + realFile);
  LIBVARROW_LOG_ERROR("%s", reason.c_str());
  stopAfterLogging(reason);
}

std::string statisticsText(const Json::Value& value) {
  return base::json_text::styled(value, " ");
}

}  // namespace libvarrow
