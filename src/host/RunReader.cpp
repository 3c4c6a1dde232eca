#include "host/RunReader.h"

#include <boost/filesystem/operations.hpp>
#include <initializer_list>
#include <stdexcept>
#include <string>

#include "base/json_text.h"
#include "host/RunRecord.h"
#include "host/file_text.h"
#include "host/one_line.h"
#include "host/run_file_names.h"
#include "host/without_links.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;

[[noreturn]] void fail(const fs::path& path, const std::string& reason) {
  throw std::runtime_error(path.generic_string() + reason);
}

std::string textOf(const fs::path& file) {
  std::string text;
  const std::string reason = readFileOfRun(file, text);
  if (!reason.empty()) fail(file, " cannot be read: " + reason);
  return text;
}

// `place` continues the file's name in errors: ":3".
Json::Value parsed(const std::string& text, const fs::path& file, const std::string& place = "") {
  Json::Value json;
  std::string errors;
  if (!base::json_text::parse(text, json, errors)) {
    fail(file, place + " is not JSON: " + oneLine(errors));
  }
  return json;
}

// On systems without links the file "latest" contains the name of the folder beside it.
fs::path folderOf(const fs::path& path) {
  boost::system::error_code ignored;
  if (!fs::is_regular_file(path, ignored)) return path;
  if (path.filename() == kRecordFile) return path.parent_path();
  if (path.filename() != "latest") fail(path, " is not a run folder: it is a file");
  return path.parent_path() / oneLine(textOf(path));
}

bool isMissing(const fs::path& path) {
  boost::system::error_code ignored;
  return fs::symlink_status(path, ignored).type() == fs::file_not_found;
}

void check(const Json::Value& record, const fs::path& file) {
  if (!record.isObject() || !record[RunRecord::kMark].isInt()) {
    fail(file, " is not the record of a run");
  }
  if (record[RunRecord::kMark].asInt() != RunRecord::kFormat) {
    fail(file,
         " has a format that this version does not know: " + record[RunRecord::kMark].asString());
  }
  const auto require = [&](std::initializer_list<const char*> keys, Json::ValueType element,
                           bool isList) {
    for (const char* const key : keys) {
      const Json::Value& value = record[key];
      bool isRight = value.isNull() || value.type() == (isList ? Json::arrayValue : element);
      for (const Json::Value& each : isList&& isRight ? value : Json::Value()) {
        isRight = isRight && each.type() == element;
      }
      if (!isRight) fail(file, ": \"" + std::string(key) + "\" has a wrong value");
    }
  };
  require({"host", "version", "library", "compiler", "pipeline", "begin", "outcome", "end",
           "failed_step", "error", "folder_of_inputs", "dumps", "until", "from"},
          Json::stringValue, false);
  require({"with", "set", "command_line", "rules_broken", "rules_kept", "entries"},
          Json::stringValue, true);
  require({"inputs", "files", "libraries", "plugins", "seeds", "warnings"}, Json::objectValue,
          true);
}

bool isStep(const Json::Value& line) {
  return line.isObject() && line["event"].isString() && line["step"].isString();
}

}  // namespace

RunReader::RunReader(const fs::path& folder) : folder_(withoutLinks(folderOf(folder))) {
  if (isMissing(folder_)) fail(folder_, " does not exist");
  const fs::path file = folder_ / kRecordFile;
  if (isMissing(file)) {
    fail(folder_, " is not a run folder: it has no " + std::string(kRecordFile));
  }
  record_ = parsed(textOf(file), file);
  check(record_, file);
}

Json::Value RunReader::steps() const {
  Json::Value steps(Json::arrayValue);
  const fs::path file = folder_ / kStepsFile;
  if (isMissing(file)) return steps;
  const std::string text = textOf(file);
  std::size_t number = 0;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = text.find('\n', begin);
    if (end == std::string::npos) break;
    const std::string place = ":" + std::to_string(++number);
    const Json::Value step = parsed(text.substr(begin, end - begin), file, place);
    if (!isStep(step)) fail(file, place + " is not about a step");
    steps.append(step);
    begin = end + 1;
  }
  return steps;
}

Json::Value RunReader::statistics() const {
  const fs::path file = folder_ / kStatisticsFile;
  if (isMissing(file)) return Json::Value();
  return parsed(textOf(file), file);
}

}  // namespace libvarrow::host
