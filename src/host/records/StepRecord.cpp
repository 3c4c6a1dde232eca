#include "host/records/StepRecord.h"

#include <cerrno>
#include <stdexcept>

#include "host/records/json_line.h"
#include "host/utc_text.h"

namespace libvarrow::host {

namespace {

// Returns the key figures as a member of a line. What the data throws here, it throws again when
// the frame asks; the step then fails as it would without a record.
std::string figures(const char* key, ModuleData& data) {
  try {
    const Json::Value info = data.getBaiscInfoJson();
    if (!info.isNull()) return std::string(",\"") + key + "\":" + jsonLine(info);
  } catch (...) {
    return std::string();
  }
  return std::string();
}

std::string member(const char* key, const std::string& json) {
  return std::string(",\"") + key + "\":" + json;
}

std::string firstMembers(const char* event, const std::string& step) {
  return std::string("{\"event\":\"") + event + "\",\"step\":" + jsonText(step);
}

}  // namespace

StepRecord::StepRecord(const boost::filesystem::path& folder, Clock::time_point begin)
    : file_(folder / kFileName), begin_(begin) {}

void StepRecord::open() {
  errno = 0;
  stream_.open(file_.string(), std::ios::trunc);
  if (!stream_) error_ = errno;
  requireWhole();
}

void StepRecord::begins(Step& step, Module& module, ModuleData& data) {
  step.begin = Clock::now();
  step.processorTime = system::processUse().processorTime;
  write(firstMembers("begin", step.name) + member("class", jsonText(module.getModuleName())) +
        member("time", jsonText(utcText(std::chrono::system_clock::now()))) +
        member("at", jsonSeconds(step.begin - begin_)) + member("place", jsonText(step.place)) +
        figures("before", data) + "}\n");
}

std::string StepRecord::lastLine(const char* event, const Step& step) const {
  const Clock::time_point now = Clock::now();
  const system::ProcessUse use = system::processUse();
  return firstMembers(event, step.name) + member("at", jsonSeconds(now - begin_)) +
         member("wall", jsonSeconds(now - step.begin)) +
         member("cpu", jsonSeconds(use.processorTime - step.processorTime)) +
         member("memory", std::to_string(use.peakMemory));
}

void StepRecord::ends(const Step& step, ModuleData& data) {
  const std::string line = lastLine("end", step);
  write(line + figures("after", data) + "}\n");
}

void StepRecord::fails(const Step& step) {
  write(lastLine("failed", step) + "}\n");
}

void StepRecord::write(const std::string& line) {
  if (error_ != 0) return;
  errno = 0;
  stream_ << line << std::flush;
  if (!stream_) error_ = errno == 0 ? EIO : errno;
}

void StepRecord::requireWhole() const {
  if (error_ == 0) return;
  throw std::runtime_error("cannot write " + file_.generic_string() + ": " +
                           system::errorText(error_));
}

}  // namespace libvarrow::host
