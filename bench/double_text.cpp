// A double as text with 17 significant digits: FastStringStream, the standard library and others.
#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <array>
#include <boost/lexical_cast.hpp>
#include <charconv>
#include <cstddef>
#include <iterator>
#include <string>

#include "libvarrow/stream/FastStringStream.h"
#include "sample_doubles.h"

namespace bench {

namespace {

/// Calls `write` for one number after another; it returns the address of the text.
template <class Write>
void eachDouble(benchmark::State& state, Write write) {
  std::size_t at = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(write(sampleDoubles()[at]));
    benchmark::ClobberMemory();
    if (++at == sampleDoubles().size()) at = 0;
  }
}

void fastStringStream(benchmark::State& state) {
  libvarrow::FastStringStream line;
  eachDouble(state, [&](double number) {
    line.str().clear();
    line << number;
    return line.str().data();
  });
}

void toChars(benchmark::State& state) {
  std::array<char, 32> buffer;
  eachDouble(state, [&](double number) {
    return std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                         std::chars_format::general, 17)
        .ptr;
  });
}

void lexicalCast(benchmark::State& state) {
  std::string text;
  eachDouble(state, [&](double number) {
    text = boost::lexical_cast<std::string>(number);
    return text.data();
  });
}

void fmtSeventeenDigits(benchmark::State& state) {
  fmt::memory_buffer buffer;
  eachDouble(state, [&](double number) {
    buffer.clear();
    fmt::format_to(std::back_inserter(buffer), FMT_STRING("{:.17g}"), number);
    return buffer.data();
  });
}

void fmtShortest(benchmark::State& state) {
  fmt::memory_buffer buffer;
  eachDouble(state, [&](double number) {
    buffer.clear();
    fmt::format_to(std::back_inserter(buffer), FMT_STRING("{}"), number);
    return buffer.data();
  });
}

BENCHMARK(fastStringStream)->Name("double_text/fast_string_stream");
BENCHMARK(toChars)->Name("double_text/to_chars");
BENCHMARK(lexicalCast)->Name("double_text/lexical_cast");
BENCHMARK(fmtSeventeenDigits)->Name("double_text/fmt_17g");
BENCHMARK(fmtShortest)->Name("double_text/fmt_shortest");

}  // namespace

}  // namespace bench
