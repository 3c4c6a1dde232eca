#include "host/page/run_links.h"

#include <algorithm>
#include <boost/filesystem/operations.hpp>
#include <cstdint>

#include "host/file_text.h"
#include "host/json_string.h"
#include "host/run_file_names.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;

// The most bytes of pictures in a page. Pictures for which no room is left are only linked.
constexpr std::uintmax_t kMostPictures = 4 * 1024 * 1024;

// Writes three bytes as four digits.
void writeGroup(char* to, const unsigned char* bytes) {
  constexpr const char* kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  const unsigned group = unsigned{bytes[0]} << 16U | unsigned{bytes[1]} << 8U | bytes[2];
  to[0] = kDigits[group >> 18U];
  to[1] = kDigits[group >> 12U & 63U];
  to[2] = kDigits[group >> 6U & 63U];
  to[3] = kDigits[group & 63U];
}

// Appends the bytes in base 64. The last group is filled with zeros, whose digits are replaced.
void appendBase64(std::string& text, std::string bytes) {
  const std::size_t missing = (3 - bytes.size() % 3) % 3;
  bytes.append(missing, '\0');
  const std::size_t begin = text.size();
  text.resize(begin + bytes.size() / 3 * 4);
  const auto* from = reinterpret_cast<const unsigned char*>(bytes.data());
  const auto* const end = from + bytes.size();
  for (char* to = text.data() + begin; from < end; from += 3, to += 4) writeGroup(to, from);
  text.replace(text.size() - missing, missing, missing, '=');
}

std::string pictureType(const fs::path& file) {
  const std::string extension = file.extension().string();
  if (extension == ".svg") return "image/svg+xml";
  if (extension == ".png") return "image/png";
  return extension == ".jpg" || extension == ".jpeg" ? "image/jpeg" : "";
}

// Returns the path of a file relative to `folder`; empty for a file that is not in it or does not
// exist.
std::string pathInside(const fs::path& folder, const std::string& file) {
  const std::string begin = folder.generic_string() + "/";
  if (file.compare(0, begin.size(), begin) != 0) return "";
  if (file.find("/../") != std::string::npos) return "";
  boost::system::error_code ignored;
  return fs::is_regular_file(file, ignored) ? file.substr(begin.size()) : "";
}

// Returns a picture as data URI; empty for other files, and for one that is larger than `room`,
// which it reduces. A link of the file system may not bring a file from elsewhere into the page.
std::string pictureOf(const fs::path& folder, const fs::path& link, std::uintmax_t& room) {
  const std::string type = pictureType(link);
  if (type.empty()) return type;
  boost::system::error_code error;
  const fs::path file = fs::canonical(folder / link, error);
  if (error || pathInside(folder, file.generic_string()).empty()) return "";
  std::string bytes;
  if (fs::file_size(file, error) > room || !readFile(file, bytes).empty()) return "";
  room -= std::min<std::uintmax_t>(room, bytes.size());
  std::string uri = "data:" + type + ";base64,";
  appendBase64(uri, std::move(bytes));
  return uri;
}

void addLink(RunLinks& links, const fs::path& folder, const std::string& kind,
             const std::string& path, std::uintmax_t& room) {
  Json::Value& link = links.json["files"].append(Json::Value(Json::objectValue));
  link["kind"] = jsonString(kind);
  link["path"] = jsonString(path);
  const std::string inside = pathInside(folder, path);
  if (inside.empty()) return;
  link["link"] = jsonString(inside);
  std::string picture = pictureOf(folder, inside, room);
  if (picture.empty()) return;
  link["picture"] = static_cast<Json::UInt64>(links.pictures.size());
  links.pictures.push_back(std::move(picture));
}

}  // namespace

RunLinks runLinks(const fs::path& folder, const RunFiles& files) {
  RunLinks links;
  links.json["own"] = links.json["files"] = Json::Value(Json::arrayValue);
  for (const char* name : {kRecordFile, kPipelineFile, kStepsFile, kStatisticsFile, kTraceFile,
                           "log/run.log", "log/output.txt", "dump"}) {
    boost::system::error_code ignored;
    if (fs::exists(folder / name, ignored)) links.json["own"].append(name);
  }
  std::uintmax_t room = kMostPictures;
  for (const auto& [kind, path] : files) addLink(links, folder, kind, path, room);
  return links;
}

}  // namespace libvarrow::host
