#include "host/RunRecord.h"

#include <cppbind/Checker.h>

#include <boost/filesystem/operations.hpp>
#include <cerrno>
#include <chrono>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "host/json_string.h"
#include "host/page/write_page.h"
#include "host/system.h"
#include "host/utc_text.h"
#include "libvarrow/json/json.h"
#include "libvarrow/utility/UTFConverter.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;

std::string now() {
  return utcText(std::chrono::system_clock::now());
}

// Returns the record of a run; null when the folder has none of ours.
Json::Value readRecord(const fs::path& folder) {
  const fs::path path = folder / RunRecord::kFileName;
  if (fs::symlink_status(path).type() != fs::regular_file) return Json::Value();
  std::ifstream file(path.string(), std::ios::binary);
  const cppbind::Checker checker(std::string(std::istreambuf_iterator<char>(file), {}));
  const bool isRecord =
      checker.isJson() && checker.json().isObject() && checker.json()[RunRecord::kMark].isInt();
  return isRecord ? checker.json() : Json::Value();
}

// A name that is not UTF-8 is written as JSON can, and its folder is not overwritten.
Json::Value namesIn(const fs::path& folder) {
  Json::Value names(Json::arrayValue);
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    names.append(jsonString(entry.path().filename()));
  }
  return names;
}

}  // namespace

const char* outcomeText(RunResult::End end) {
  switch (end) {
    case RunResult::End::Done:
      return "done";
    case RunResult::End::RulesBroken:
      return "rules broken";
    case RunResult::End::Faulty:
      return "faulty";
    case RunResult::End::Ended:
      return "ended on request";
    case RunResult::End::Failed:
      break;
  }
  return "failed";
}

bool RunRecord::isIn(const fs::path& folder) {
  return readRecord(folder).isObject();
}

std::set<std::string> RunRecord::entriesIn(const fs::path& folder) {
  const Json::Value record = readRecord(folder);
  std::set<std::string> names;
  if (!record.isObject() || !record["entries"].isArray()) return names;
  for (const Json::Value& name : record["entries"]) {
    if (name.isString()) names.insert(utility::fromUtf8(name.asString()));
  }
  if (!names.empty()) names.insert(kPageFile);  // written afterwards, and again by `report`
  return names;
}

RunRecord::RunRecord(const fs::path& folder, Json::Value facts)
    : folder_(folder), json_(std::move(facts)) {
  json_[kMark] = kFormat;
  json_["folder"] = jsonString(folder);
}

void RunRecord::begin() {
  json_["begin"] = now();
  json_["outcome"] = "running";
  write();
}

void RunRecord::add(const Json::Value& facts) {
  for (const std::string& key : facts.getMemberNames()) json_[key] = facts[key];
  write();
}

void RunRecord::end(const RunResult& result, const Json::Value& facts) {
  json_["end"] = now();
  json_["outcome"] = outcomeText(result.end);
  if (!result.step.empty()) json_["failed_step"] = jsonString(result.step);
  if (!result.error.empty()) json_["error"] = jsonString(result.error);
  json_["entries"] = namesIn(folder_);
  add(facts);
}

void RunRecord::write() const {
  writeWhole(folder_ / kFileName, Json2Str(json_));
}

void writeWhole(const fs::path& file, const std::string& text) {
  const fs::path made = file.string() + ".writing";
  errno = 0;
  std::ofstream stream(made.string(), std::ios::trunc);
  stream << text << std::flush;
  const bool isWhole = stream.good();
  const int error = errno;
  stream.close();
  boost::system::error_code ignored;
  if (!isWhole || stream.fail()) {
    fs::remove(made, ignored);
    throw std::runtime_error("cannot write " + file.generic_string() + ": " +
                             system::errorText(error));
  }
  boost::system::error_code renamed;
  fs::rename(made, file, renamed);
  if (!renamed) return;
  fs::remove(made, ignored);
  throw std::runtime_error("cannot write " + file.generic_string() + ": " +
                           system::errorText(renamed.default_error_condition().value()));
}

}  // namespace libvarrow::host
