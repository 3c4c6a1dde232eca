// Runs the benchmarks that the other files register.
#include <benchmark/benchmark.h>

BENCHMARK_MAIN();
