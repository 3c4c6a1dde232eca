#include "host/records/StepRecord.h"

#include <cerrno>
#include <stdexcept>

#include "base/system_text.h"
#include "host/json_string.h"
#include "host/records/json_line.h"
#include "host/run_file_names.h"
#include "host/utc_text.h"

namespace libvarrow::host {

StepRecord::StepRecord(const boost::filesystem::path& folder, Clock::time_point begin)
    : file_(folder / kStepsFile), begin_(begin) {}

void StepRecord::open() {
  stream_.rdbuf()->pubsetbuf(nullptr, 0);  // each line is written at once
  errno = 0;
  stream_.open(file_.string(), std::ios::trunc | std::ios::binary);
  if (!stream_) error_ = errno;
  requireWhole();
}

void StepRecord::begins(Step& step, Module& module, ModuleData& data) {
  step.begin = Clock::now();
  step.processorTime = system::processUse().processorTime;
  beginLine("begin", step);
  add<std::string_view>(R"(,"class":)", base::utf8Text(module.getModuleName()));
  add<std::string_view>(R"(,"time":)", utcText(std::chrono::system_clock::now()));
  add<std::chrono::nanoseconds>(R"(,"at":)", step.begin - begin_);
  add(R"(,"place":)", jsonString(step.place));
  addFigures(R"(,"before":)", data);
  endLine();
}

void StepRecord::ends(const Step& step, ModuleData& data) {
  beginLine("end", step);
  addUse(step);
  addFigures(R"(,"after":)", data);
  endLine();
}

void StepRecord::fails(const Step& step) {
  beginLine("failed", step);
  addUse(step);
  endLine();
}

void StepRecord::beginLine(const char* event, const Step& step) {
  line_.assign("{\"event\":\"").append(event) += '"';
  add<std::string_view>(R"(,"step":)", step.name);
}

template <class T>
void StepRecord::add(const char* key, const T& value) {
  line_ += key;
  appendJson(line_, value);
}

// Ignores exceptions: the frame of the step asks again, and the step then fails as without a
// record.
void StepRecord::addFigures(const char* key, ModuleData& data) {
  const std::size_t size = line_.size();
  try {
    const Json::Value info = data.getBaiscInfoJson();
    if (!info.isNull()) add(key, info);
  } catch (...) {
    line_.resize(size);
  }
}

void StepRecord::addUse(const Step& step) {
  const Clock::time_point now = Clock::now();
  const system::ProcessUse use = system::processUse();
  add<std::chrono::nanoseconds>(R"(,"at":)", now - begin_);
  add<std::chrono::nanoseconds>(R"(,"wall":)", now - step.begin);
  add<std::chrono::nanoseconds>(R"(,"cpu":)", use.processorTime - step.processorTime);
  add(R"(,"memory":)", use.peakMemory);
}

void StepRecord::endLine() {
  if (error_ != 0) return;
  line_ += "}\n";
  errno = 0;
  stream_ << line_ << std::flush;
  if (!stream_) error_ = errno == 0 ? EIO : errno;
}

void StepRecord::requireWhole() const {
  if (error_ == 0) return;
  throw std::runtime_error("cannot write " + file_.generic_string() + ": " +
                           system::errorText(error_));
}

}  // namespace libvarrow::host
