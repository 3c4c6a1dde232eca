#include "libvarrow/utility/file_name.h"

#include <algorithm>
#include <boost/filesystem/operations.hpp>
#include <mutex>
#include <set>
#include <utility>

#include "base/NeverDestroyed.h"
#include "libvarrow/log/log.h"

namespace libvarrow::utility {

namespace {

// The characters that the limits count: not bytes on Windows.
using Text = boost::filesystem::path::string_type;

constexpr std::size_t kMaxFileName = 255;
constexpr std::size_t kMaxPath = 259;

std::string narrow(const Text& text) {
  return boost::filesystem::path(text).string();
}

std::size_t excess(std::size_t length, std::size_t limit) {
  return length > limit ? length - limit : 0;
}

// Returns true once for each directory, but forgets all directories after kMaxDirectories of them.
bool isFirstCutIn(const std::string& directory) {
  constexpr std::size_t kMaxDirectories = 1000;
  static std::mutex mutex;
  static base::NeverDestroyed<std::set<std::string>> known;
  const std::lock_guard<std::mutex> lock(mutex);
  if (known->size() >= kMaxDirectories) known->clear();
  return known->insert(directory).second;
}

// Two long names may become equal, and one file replace the other: the log must show it.
void warnOfCut(const std::string& directory, const std::string& whole, const std::string& cut) {
  if (!isFirstCutIn(directory)) return;
  LIBVARROW_LOG_WARN(
      "the file name %s is too long and is cut to %s; further cuts in its directory are not "
      "logged",
      whole.c_str(), cut.c_str());
}

// Returns whether the name is absolute and short, as usual, and needs no conversion. Returns false
// on systems where a leading slash is not a root.
bool isShortAbsoluteName(const std::string& name) {
  constexpr bool kSlashIsRoot = boost::filesystem::path::preferred_separator == '/';
  return kSlashIsRoot && name.size() <= kMaxFileName && !name.empty() && name.front() == '/';
}

}  // namespace

void adjustFileName(std::string& name) {
  if (isShortAbsoluteName(name)) return;
  const boost::filesystem::path given(name);
  Text absolute = boost::filesystem::absolute(given).generic_string<Text>();
  const std::size_t lastSlash = absolute.rfind(Text::value_type{'/'});
  const std::size_t fileLength =
      lastSlash == Text::npos ? absolute.size() : absolute.size() - lastSlash - 1;
  const std::size_t tooLong =
      std::max(excess(fileLength, kMaxFileName), excess(absolute.size(), kMaxPath));
  if (tooLong == 0) {
    name = narrow(absolute);
    return;
  }
  const std::size_t extensionLength = given.extension().native().size();
  const std::size_t cut = std::min(tooLong, excess(fileLength, extensionLength));
  const Text whole = absolute;
  absolute.erase(absolute.size() - extensionLength - cut, cut);
  name = narrow(absolute);
  warnOfCut(narrow(absolute.substr(0, whole.size() - fileLength)), narrow(whole), name);
}

bool removeIfExist(const std::string& path) {
  boost::system::error_code error;
  if (boost::filesystem::symlink_status(path, error).type() == boost::filesystem::file_not_found) {
    return true;
  }
  boost::filesystem::remove_all(path, error);
  if (!error) return true;
  LIBVARROW_LOG_ERROR("can not remove path:%s, error message:%s", path.c_str(),
                      error.message().c_str());
  return false;
}

}  // namespace libvarrow::utility
