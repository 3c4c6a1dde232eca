#include "host/records/TraceRecord.h"

#include <algorithm>
#include <utility>

#include "host/RunRecord.h"
#include "host/records/json_line.h"
#include "host/run_file_names.h"

namespace libvarrow::host {

namespace {

std::size_t dropped(std::size_t count) {
  return count - std::min(count, TraceRecord::kLimit);
}

}  // namespace

TraceRecord::TraceRecord(Clock::time_point begin) : begin_(begin) {
  threadNumber();
}

void TraceRecord::addStep(const std::string& step, Clock::time_point begin) {
  const std::lock_guard lock(mutex_);
  add({step, begin, Clock::now(), threadNumber(), /*isStep=*/true}, steps_);
}

void TraceRecord::addSpan(const std::string& name, Clock::time_point begin, Clock::time_point end) {
  const std::lock_guard lock(mutex_);
  add({name, begin, end, threadNumber()}, spans_);
}

// Steps and spans have separate limits: the outer steps, which end last, are not lost.
void TraceRecord::add(Event event, std::size_t& count) {
  if (count++ < kLimit) events_.push_back(std::move(event));
}

std::size_t TraceRecord::threadNumber() {
  return threads_.emplace(std::this_thread::get_id(), threads_.size() + 1).first->second;
}

std::uint64_t TraceRecord::micros(Clock::time_point time) const {
  const auto since = std::chrono::duration_cast<std::chrono::microseconds>(time - begin_);
  return static_cast<std::uint64_t>(std::max<std::int64_t>(0, since.count()));
}

// Rounds both ends in the same way, so that events keep their nesting and order.
void TraceRecord::appendEvent(std::string& text, const Event& event) const {
  const std::string_view name = event.name;
  text += "{\"name\":";
  if (!event.isStep) {
    appendJson(text, name);
  } else if (name.empty()) {
    text += "\"pipeline\"";
  } else {
    appendJson(text, name.substr(name.rfind('/') + 1));
  }
  text += event.isStep ? R"(,"cat":"step","ph":"X","pid":1,"tid":)"
                       : R"(,"cat":"span","ph":"X","pid":1,"tid":)";
  appendJson(text, event.thread);
  const std::uint64_t begin = micros(event.begin);
  text += ",\"ts\":";
  appendJson(text, begin);
  text += ",\"dur\":";
  appendJson(text, micros(event.end) - begin);
  text += ",\"args\":{";
  if (event.isStep) {
    text += "\"step\":";
    appendJson(text, name);
  }
  text += "}}";
}

std::string TraceRecord::text() const {
  // By begin; of those that begin together the outer first, which ends last or was added last.
  std::vector<const Event*> sorted;
  sorted.reserve(events_.size());
  for (auto event = events_.rbegin(); event != events_.rend(); ++event) sorted.push_back(&*event);
  std::stable_sort(sorted.begin(), sorted.end(), [](const Event* a, const Event* b) {
    return a->begin != b->begin ? a->begin < b->begin : a->end > b->end;
  });
  std::string text = "{\"displayTimeUnit\":\"ms\",\"otherData\":{\"steps_dropped\":" +
                     std::to_string(dropped(steps_)) +
                     ",\"spans_dropped\":" + std::to_string(dropped(spans_)) +
                     "},\"traceEvents\":[";
  constexpr std::size_t kUsualBytes = 128;
  text.reserve(sorted.size() * kUsualBytes);
  for (const auto& [id, number] : threads_) {
    const std::string name = number == 1 ? "main" : "thread " + std::to_string(number);
    text += R"({"name":"thread_name","ph":"M","pid":1,"tid":)" + std::to_string(number) +
            ",\"args\":{\"name\":\"" + name + "\"}},\n";
  }
  for (const Event* event : sorted) {
    appendEvent(text, *event);
    text += ",\n";
  }
  text.replace(text.size() - 2, 2, "]}\n");
  return text;
}

void TraceRecord::write(const boost::filesystem::path& folder) const {
  const std::lock_guard lock(mutex_);
  writeWhole(folder / kTraceFile, text());
}

}  // namespace libvarrow::host
