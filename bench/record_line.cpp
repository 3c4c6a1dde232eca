// A report line of numbers, texts, flags and a time: FastStringStream against the standard stream
// and fmt, all with the same characters.
#include <benchmark/benchmark.h>
#include <fmt/chrono.h>
#include <fmt/compile.h>
#include <fmt/format.h>

#include <boost/date_time/posix_time/conversion.hpp>
#include <boost/date_time/posix_time/posix_time_io.hpp>
#include <cstddef>
#include <ctime>
#include <iomanip>
#include <iterator>
#include <locale>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "allocations.h"
#include "libvarrow/stream/FastStringStream.h"
#include "operations.h"
#include "sample_doubles.h"

namespace bench {

namespace {

using boost::posix_time::ptime;

struct Record {
  int job;
  int sequence;
  std::string machine;
  double hours;
  double price;
  double progress;
  bool isFixed;
  bool isLate;
  ptime start;
};

const std::vector<Record>& sampleRecords() {
  static const std::vector<Record> records = [] {
    std::vector<Record> made;
    for (std::size_t i = 0; i + 2 < sampleDoubles().size(); i += 4) {
      const Operation& operation = samplePlan().operations[i];
      made.push_back({operation.id * 97, static_cast<int>(i % 7), operation.machine,
                      sampleDoubles()[i], sampleDoubles()[i + 1], sampleDoubles()[i + 2],
                      operation.isFixed, i % 3 == 0, operation.start});
    }
    return made;
  }();
  return records;
}

void writeLine(libvarrow::FastStringStream& out, const Record& record) {
  out << "job " << record.job << '/' << record.sequence << ',' << record.machine << ','
      << record.hours << ',' << record.price << ',' << record.progress << ',' << record.isFixed
      << ',' << record.isLate << ',' << record.start << '\n';
}

// The standard stream.

const std::locale& facetLocale() {
  static const std::locale locale(std::locale::classic(),
                                  new boost::posix_time::time_facet(kTimeFormat));
  return locale;
}

void writeTimeByFacet(std::ostream& out, const ptime& time) {
  out << time;
}

void writeTimeByPutTime(std::ostream& out, const ptime& time) {
  const std::tm parts = boost::posix_time::to_tm(time);
  out << std::put_time(&parts, kTimeFormat);
}

using WriteTime = void (*)(std::ostream&, const ptime&);

void setUp(std::ostream& out) {
  out.imbue(facetLocale());
  out << std::boolalpha << std::setprecision(17);
}

template <WriteTime writeTime>
void writeLine(std::ostream& out, const Record& record) {
  out << "job " << record.job << '/' << record.sequence << ',' << record.machine << ','
      << record.hours << ',' << record.price << ',' << record.progress << ',' << record.isFixed
      << ',' << record.isLate << ',';
  writeTime(out, record.start);
  out << '\n';
}

// fmt. The compiler checks its format text, and with FMT_COMPILE turns it into code.

std::tm partsOf(const ptime& time) {
  return boost::posix_time::to_tm(time);
}

#define WRITE_LINE_BY_FMT(function, format)                                                      \
  void function(fmt::memory_buffer& out, const Record& record) {                                 \
    fmt::format_to(std::back_inserter(out), format, record.job, record.sequence, record.machine, \
                   record.hours, record.price, record.progress, record.isFixed, record.isLate,   \
                   partsOf(record.start));                                                       \
  }
WRITE_LINE_BY_FMT(writeLineByFmt,
                  FMT_STRING("job {}/{},{},{:.17g},{:.17g},{:.17g},{},{},{:%Y-%m-%d %H:%M:%S}\n"))
WRITE_LINE_BY_FMT(writeLineByCompiledFmt,
                  FMT_COMPILE("job {}/{},{},{:.17g},{:.17g},{:.17g},{},{},{:%Y-%m-%d %H:%M:%S}\n"))
WRITE_LINE_BY_FMT(writeLineByShortestFmt,
                  FMT_STRING("job {}/{},{},{},{},{},{},{},{:%Y-%m-%d %H:%M:%S}\n"))
#undef WRITE_LINE_BY_FMT

// The runs. A fresh one makes its stream or buffer for every line; a reused one clears it.

enum class Text { Same, OtherDigits };

/// Calls `write` for one record after another; its result holds the text.
template <class Write>
void eachRecord(benchmark::State& state, Text text, Write write) {
  for (const Record& record : sampleRecords()) {
    libvarrow::FastStringStream expected;
    writeLine(expected, record);
    const auto& line = write(record);
    if (text == Text::Same && std::string(line.data(), line.size()) != expected.str()) {
      return state.SkipWithError("not the text of FastStringStream");
    }
  }
  const AllocationCounter counted(state);
  std::size_t at = 0;
  for (auto _ : state) {
    const auto& made = write(sampleRecords()[at]);
    benchmark::DoNotOptimize(made.data());
    benchmark::ClobberMemory();
    if (++at == sampleRecords().size()) at = 0;
  }
}

void freshFastStringStream(benchmark::State& state) {
  eachRecord(state, Text::Same, [](const Record& record) {
    libvarrow::FastStringStream out;
    writeLine(out, record);
    return std::move(out.str());
  });
}

void reusedFastStringStream(benchmark::State& state) {
  libvarrow::FastStringStream out;
  eachRecord(state, Text::Same, [&](const Record& record) -> const std::string& {
    out.str().clear();
    writeLine(out, record);
    return out.str();
  });
}

template <WriteTime writeTime>
void freshStandardStream(benchmark::State& state) {
  eachRecord(state, Text::Same, [](const Record& record) {
    std::ostringstream out;
    setUp(out);
    writeLine<writeTime>(out, record);
    return out.str();
  });
}

template <WriteTime writeTime>
void reusedStandardStream(benchmark::State& state) {
  std::ostringstream out;
  setUp(out);
  eachRecord(state, Text::Same, [&](const Record& record) {
    out.str(std::string());
    writeLine<writeTime>(out, record);
    return out.str();
  });
}

using WriteByFmt = void (*)(fmt::memory_buffer&, const Record&);

template <WriteByFmt write>
void freshFmt(benchmark::State& state) {
  eachRecord(state, Text::Same, [](const Record& record) {
    fmt::memory_buffer out;
    write(out, record);
    return fmt::to_string(out);
  });
}

template <WriteByFmt write, Text text = Text::Same>
void reusedFmt(benchmark::State& state) {
  fmt::memory_buffer out;
  eachRecord(state, text, [&](const Record& record) -> const fmt::memory_buffer& {
    out.clear();
    write(out, record);
    return out;
  });
}

// Appends the two truth values of each record in turn.
template <class Append>
void appendBools(benchmark::State& state, std::string& text, Append append) {
  const std::vector<Record>& records = sampleRecords();
  std::size_t at = 0;
  for (auto _ : state) {
    text.clear();
    append(records[at].isFixed);
    append(records[at].isLate);
    benchmark::DoNotOptimize(text.data());
    benchmark::ClobberMemory();
    if (++at == records.size()) at = 0;
  }
}

void boolsByFastStringStream(benchmark::State& state) {
  libvarrow::FastStringStream out;
  appendBools(state, out.str(), [&](bool value) { out << value; });
}

void boolsByAppend(benchmark::State& state) {
  std::string text;
  appendBools(state, text, [&](bool value) {
    if (value) {
      text.append("true", 4);
    } else {
      text.append("false", 5);
    }
  });
}

BENCHMARK(boolsByFastStringStream)->Name("bool_append/fast_string_stream");
BENCHMARK(boolsByAppend)->Name("bool_append/append");
BENCHMARK(freshFastStringStream)->Name("record_fresh/fast_string_stream");
BENCHMARK(freshStandardStream<writeTimeByFacet>)->Name("record_fresh/ostringstream_facet");
BENCHMARK(freshStandardStream<writeTimeByPutTime>)->Name("record_fresh/ostringstream_put_time");
BENCHMARK(freshFmt<writeLineByFmt>)->Name("record_fresh/fmt_17g");
BENCHMARK(reusedFastStringStream)->Name("record_reused/fast_string_stream");
BENCHMARK(reusedStandardStream<writeTimeByFacet>)->Name("record_reused/ostringstream_facet");
BENCHMARK(reusedStandardStream<writeTimeByPutTime>)->Name("record_reused/ostringstream_put_time");
BENCHMARK(reusedFmt<writeLineByFmt>)->Name("record_reused/fmt_17g");
BENCHMARK(reusedFmt<writeLineByCompiledFmt>)->Name("record_reused/fmt_17g_compiled");
BENCHMARK(reusedFmt<writeLineByShortestFmt, Text::OtherDigits>)->Name("record_reused/fmt_shortest");

}  // namespace

}  // namespace bench
