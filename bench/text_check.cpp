// Checking a JSON text for all its faults, against parsing and reading it.
#include <benchmark/benchmark.h>
#include <json/writer.h>

#include <string>

#include "cppbind/Checker.h"
#include "libvarrow/json/json.h"
#include "operations.h"

namespace bench {

namespace {

const std::string& sampleText() {
  static const std::string text =
      Json::FastWriter().write(cppbind::JsonEncodeBinder().encode(samplePlan()));
  return text;
}

void checkText(benchmark::State& state) {
  for (auto _ : state) {
    const cppbind::Faults faults = cppbind::check<Plan>(sampleText());
    if (faults.hasErrors()) return state.SkipWithError("faults in a valid text");
  }
}

void readText(benchmark::State& state) {
  for (auto _ : state) {
    Plan plan;
    cppbind::JsonDecodeBinder().decode(libvarrow::Str2Json(sampleText()), plan);
    benchmark::DoNotOptimize(plan);
  }
}

BENCHMARK(checkText)->Name("text_check/check")->Unit(benchmark::kMillisecond);
BENCHMARK(readText)->Name("text_check/parse_and_read")->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace bench
