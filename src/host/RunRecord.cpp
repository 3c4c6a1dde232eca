#include "host/RunRecord.h"

#include <cppbind/Checker.h>

#include <boost/date_time/posix_time/posix_time.hpp>
#include <boost/filesystem/operations.hpp>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "libvarrow/json/json.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;

// The first member of every record, by which a folder is recognised.
constexpr const char* kMark = "libvarrow_run";
constexpr int kFormat = 1;

std::string now() {
  return boost::posix_time::to_iso_extended_string(
             boost::posix_time::microsec_clock::universal_time()) +
         "Z";
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
  const fs::path path = folder / kFileName;
  if (fs::symlink_status(path).type() != fs::regular_file) return false;
  std::ifstream file(path.string(), std::ios::binary);
  const std::string text(std::istreambuf_iterator<char>(file), {});
  const cppbind::Checker checker(text);
  return checker.isJson() && checker.json().isObject() && checker.json()[kMark].isInt();
}

RunRecord::RunRecord(const fs::path& folder, Json::Value facts)
    : folder_(folder), json_(std::move(facts)) {
  json_[kMark] = kFormat;
}

void RunRecord::begin() {
  json_["begin"] = now();
  json_["outcome"] = "running";
  write();
}

void RunRecord::end(const RunResult& result, const Json::Value& facts) {
  json_["end"] = now();
  json_["outcome"] = outcomeText(result.end);
  if (!result.step.empty()) json_["failed_step"] = result.step;
  if (!result.error.empty()) json_["error"] = result.error;
  for (const std::string& rule : result.brokenRules) json_["rules_broken"].append(rule);
  for (const std::string& key : facts.getMemberNames()) json_[key] = facts[key];
  write();
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
    throw std::runtime_error("cannot write " + file.generic_string() + ": " + std::strerror(error));
  }
  fs::rename(made, file);
}

}  // namespace libvarrow::host
