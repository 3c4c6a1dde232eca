#include "host/RunRecord.h"

#include <cppbind/Checker.h>

#include <boost/filesystem/operations.hpp>
#include <cerrno>
#include <chrono>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "base/FilePatience.h"
#include "host/json_string.h"
#include "host/page/write_page.h"
#include "host/records/json_line.h"
#include "host/run_file_names.h"
#include "host/system.h"
#include "host/utc_text.h"
#include "libvarrow/utility/UTFConverter.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;

std::string now() {
  return utcText(std::chrono::system_clock::now());
}

// Returns the record of a run; null when the folder has none of ours.
Json::Value readRecord(const fs::path& folder) {
  const fs::path path = folder / kRecordFile;
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

RunRecord::RunRecord(const fs::path& folder, const Json::Value& facts) : folder_(folder) {
  for (const std::string& key : facts.getMemberNames()) set(key, facts[key]);
  set(kMark, kFormat);
  set("folder", jsonString(folder));
}

// The elements of a list are on lines of their own.
void RunRecord::set(const std::string& key, const Json::Value& value) {
  std::string& text = members_[key];
  text.clear();
  appendJson(text, value, /*depth=*/1);
}

void RunRecord::begin() {
  set("begin", now());
  set("outcome", "running");
  write();
}

void RunRecord::setConfiguration(Configuration configuration) {
  members_["configuration"] = std::move(configuration.json);
  set("seeds", configuration.seeds);
  write();
}

void RunRecord::end(const RunResult& result, const Json::Value& facts) {
  set("end", now());
  set("outcome", outcomeText(result.end));
  if (!result.step.empty()) set("failed_step", result.step);
  if (!result.error.empty()) set("error", jsonString(result.error));
  set("entries", namesIn(folder_));
  for (const std::string& key : facts.getMemberNames()) set(key, facts[key]);
  write();
}

void RunRecord::write() const {
  std::string text;
  for (const auto& [key, value] : members_) {
    text.append(text.empty() ? "{\n \"" : ",\n \"").append(key).append("\" : ").append(value);
  }
  writeWhole(folder_ / kRecordFile, text + "\n}\n");
}

void writeWhole(const fs::path& file, const std::string& text) {
  const fs::path made = file.string() + ".writing";
  boost::system::error_code ignored;
  fs::remove(made, ignored);  // a link would lead the text into another file
  errno = 0;
  std::ofstream stream(made.string(), std::ios::trunc);
  stream << text << std::flush;
  const bool isWhole = stream.good();
  const int error = errno;
  stream.close();
  if (!isWhole || stream.fail()) {
    fs::remove(made, ignored);
    throw std::runtime_error("cannot write " + file.generic_string() + ": " +
                             system::errorText(error));
  }
  boost::system::error_code renamed;
  base::FilePatience patience;
  do {
    fs::rename(made, file, renamed);
  } while (patience.isWorthATry(renamed));
  if (!renamed) return;
  fs::remove(made, ignored);
  throw std::runtime_error("cannot write " + file.generic_string() + ": " +
                           system::errorText(renamed));
}

}  // namespace libvarrow::host
