#include "host/page/run_links.h"

#include <Poco/Base64Encoder.h>

#include <boost/filesystem/operations.hpp>
#include <cstdint>
#include <sstream>
#include <string>

#include "host/file_text.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;

// Larger pictures are only linked.
constexpr std::uintmax_t kLargestPicture = 1024 * 1024;

std::string base64(const std::string& bytes) {
  std::ostringstream text;
  Poco::Base64Encoder encoder(text);
  encoder.rdbuf()->setLineLength(0);
  encoder << bytes;
  encoder.close();
  return text.str();
}

std::string pictureType(const fs::path& file) {
  const std::string extension = file.extension().string();
  if (extension == ".svg") return "image/svg+xml";
  if (extension == ".png") return "image/png";
  return extension == ".jpg" || extension == ".jpeg" ? "image/jpeg" : "";
}

// Returns the path of a file from `folder`, which is canonical; empty for a file that is not in it
// or does not exist. A link of the file system may not lead out of the folder either.
fs::path pathInside(const fs::path& folder, const std::string& file) {
  boost::system::error_code error;
  const fs::path real = fs::canonical(fs::absolute(file, folder), error);
  if (error || !fs::is_regular_file(real, error)) return fs::path();
  const fs::path relative = real.lexically_relative(folder);
  return relative.empty() || *relative.begin() == ".." ? fs::path() : relative;
}

Json::Value linkOf(const fs::path& folder, const Json::Value& entry) {
  Json::Value link(Json::objectValue);
  link["kind"] = entry["kind"].isString() ? entry["kind"] : "file";
  link["path"] = entry["path"];
  const fs::path inside = pathInside(folder, link["path"].asString());
  if (inside.empty()) return link;
  link["link"] = inside.generic_string();
  const std::string type = pictureType(inside);
  boost::system::error_code error;
  if (type.empty() || fs::file_size(folder / inside, error) > kLargestPicture) return link;
  std::string bytes;
  if (!readFile(folder / inside, bytes).empty()) return link;
  link["picture"] = "data:" + type + ";base64," + base64(bytes);
  return link;
}

}  // namespace

Json::Value runLinks(const fs::path& folder, const Json::Value& record) {
  Json::Value links(Json::objectValue);
  Json::Value& own = links["own"] = Json::Value(Json::arrayValue);
  for (const char* name : {"run.json", "pipeline.json", "steps.jsonl", "statistics.json",
                           "trace.json", "log/run.log", "log/output.txt", "dump"}) {
    if (fs::exists(folder / name)) own.append(name);
  }
  Json::Value& files = links["files"] = Json::Value(Json::arrayValue);
  const fs::path real = fs::canonical(folder);
  if (!record["files"].isArray()) return links;
  for (const Json::Value& entry : record["files"]) {
    if (entry.isObject() && entry["path"].isString()) files.append(linkOf(real, entry));
  }
  return links;
}

}  // namespace libvarrow::host
