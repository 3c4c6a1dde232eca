#!/usr/bin/env bash
# Builds and runs the benchmarks and compares each with its peers.
#
#     scripts/bench.sh [BENCHMARK_OPTION...]
#
# Options are passed to the benchmark program: --benchmark_repetitions=15, or
# --benchmark_filter=block for the time blocks alone. VARROW_BENCH_BUILD names another build
# directory. Exit status: 0, 1 when a limit of bench/targets.txt is exceeded, 2 when a measurement
# is missing.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=${VARROW_BENCH_BUILD:-build/release}
report=$build/bench.json

mkdir -p "$build"
cmake --preset release -B "$build" -DVARROW_BUILD_BENCHMARKS=ON >"$build/configure.log" 2>&1 || {
  cat "$build/configure.log" >&2
  exit 2
}
cmake --build "$build" --target varrow_bench

# Interleaved, so that other load on the machine affects a benchmark and its peer alike.
"$build/bench/varrow_bench" \
  --benchmark_repetitions=7 \
  --benchmark_min_time=0.2 \
  --benchmark_enable_random_interleaving=true \
  --benchmark_report_aggregates_only=true \
  --benchmark_out="$report" \
  --benchmark_out_format=json \
  "$@" >/dev/null

isPart=0
[[ $* != *--benchmark_filter* ]] || isPart=1
awk -v isPart=$isPart -f bench/ratios.awk bench/targets.txt "$report"
