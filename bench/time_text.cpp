// A time point as text: time2str against strftime, as a string and appended to a line; and a
// duration from text.
#include <benchmark/benchmark.h>

#include <array>
#include <boost/date_time/posix_time/conversion.hpp>
#include <cstddef>
#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

#include "cppbind/type/StringConverter.h"
#include "libvarrow/stream/FastStringStream.h"
#include "libvarrow/time/time_range.h"
#include "operations.h"

namespace bench {

namespace {

using boost::posix_time::ptime;
using boost::posix_time::time_duration;

const std::vector<ptime>& sampleTimes() {
  static const std::vector<ptime> times = [] {
    std::vector<ptime> made;
    for (const Operation& operation : samplePlan().operations) made.push_back(operation.start);
    return made;
  }();
  return times;
}

const std::vector<std::tm>& sampleBrokenDownTimes() {
  static const std::vector<std::tm> times = [] {
    std::vector<std::tm> made;
    for (const ptime& time : sampleTimes()) made.push_back(boost::posix_time::to_tm(time));
    return made;
  }();
  return times;
}

using Buffer = std::array<char, 20>;

std::size_t writeByStrftime(Buffer& buffer, const std::tm& time) {
  return std::strftime(buffer.data(), buffer.size(), kTimeFormat, &time);
}

std::string textByStrftime(const std::tm& time) {
  Buffer buffer;
  return std::string(buffer.data(), writeByStrftime(buffer, time));
}

std::string textFromPtimeByStrftime(const ptime& time) {
  return textByStrftime(boost::posix_time::to_tm(time));
}

std::string textByTime2str(const ptime& time) {
  return libvarrow::time2str(time);
}

template <class Time, std::string (*text)(const Time&)>
void timeText(benchmark::State& state, const std::vector<Time>& times) {
  if (text(times.front()) != libvarrow::time2str(sampleTimes().front())) {
    return state.SkipWithError("not the text of time2str");
  }
  std::size_t at = 0;
  for (auto _ : state) {
    std::string made = text(times[at]);
    benchmark::DoNotOptimize(made);
    if (++at == times.size()) at = 0;
  }
}

void time2str(benchmark::State& state) {
  timeText<ptime, textByTime2str>(state, sampleTimes());
}

void strftimeFromPtime(benchmark::State& state) {
  timeText<ptime, textFromPtimeByStrftime>(state, sampleTimes());
}

void strftimeFromTm(benchmark::State& state) {
  timeText<std::tm, textByStrftime>(state, sampleBrokenDownTimes());
}

// Without the allocation of a new string, which costs all of the above the same.

void appendToStream(benchmark::State& state) {
  libvarrow::FastStringStream line;
  std::size_t at = 0;
  for (auto _ : state) {
    line.str().clear();
    line << sampleTimes()[at];
    benchmark::DoNotOptimize(line.str().data());
    benchmark::ClobberMemory();
    if (++at == sampleTimes().size()) at = 0;
  }
}

void strftimeIntoBuffer(benchmark::State& state) {
  Buffer buffer;
  std::size_t at = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(writeByStrftime(buffer, sampleBrokenDownTimes()[at]));
    benchmark::ClobberMemory();
    if (++at == sampleBrokenDownTimes().size()) at = 0;
  }
}

const std::vector<std::string>& sampleDurations() {
  static const std::vector<std::string> texts = [] {
    std::vector<std::string> made;
    for (const ptime& time : sampleTimes()) made.push_back(libvarrow::time2str(time).substr(11));
    return made;
  }();
  return texts;
}

time_duration durationByBinding(const std::string& text) {
  return cppbind::BoostTimeDurationText::fromString(text);
}

time_duration durationBySscanf(const std::string& text) {
  int hours = 0, minutes = 0, seconds = 0;
  if (std::sscanf(text.c_str(), "%d:%d:%d", &hours, &minutes, &seconds) != 3) return {};
  return time_duration(hours, minutes, seconds);
}

template <time_duration (*read)(const std::string&)>
void readDuration(benchmark::State& state) {
  std::size_t at = 0;
  for (auto _ : state) {
    time_duration duration = read(sampleDurations()[at]);
    benchmark::DoNotOptimize(duration);
    if (++at == sampleDurations().size()) at = 0;
  }
}

BENCHMARK(readDuration<durationByBinding>)->Name("duration_read/binding");
BENCHMARK(readDuration<durationBySscanf>)->Name("duration_read/sscanf");
BENCHMARK(time2str)->Name("time_text/time2str");
BENCHMARK(strftimeFromPtime)->Name("time_text/strftime_from_ptime");
BENCHMARK(strftimeFromTm)->Name("time_text/strftime_from_tm");
BENCHMARK(appendToStream)->Name("time_append/fast_string_stream");
BENCHMARK(strftimeIntoBuffer)->Name("time_append/strftime_from_tm");

}  // namespace

}  // namespace bench
