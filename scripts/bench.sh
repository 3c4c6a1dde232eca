#!/usr/bin/env bash
# Builds and runs the benchmarks and compares each with its peers.
#
#     scripts/bench.sh [BENCHMARK_OPTION...]
#
# Options are passed to the benchmark program: --benchmark_repetitions=15, or
# --benchmark_filter=block for the time blocks alone. VARROW_BENCH_BUILD names another build
# directory. Rows that exceed their limit are measured again. Exit status: 0, 1 when a limit of
# bench/targets.txt is exceeded again, 2 when a measurement is missing.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=${VARROW_BENCH_BUILD:-build/release}
report=$build/bench.json
missed=$build/missed_rows

mkdir -p "$build"
cmake --preset release -B "$build" -DVARROW_BUILD_BENCHMARKS=ON >"$build/configure.log" 2>&1 || {
  cat "$build/configure.log" >&2
  exit 2
}
cmake --build "$build" --target varrow_bench

# Interleaved, so that other load on the machine affects a benchmark and its peer alike.
measure() {
  "$build/bench/varrow_bench" \
    --benchmark_enable_random_interleaving=true \
    --benchmark_report_aggregates_only=true \
    --benchmark_out_format=json \
    "$@" >/dev/null
}

# Prints the rows that a report has, and writes their names into a file.
judge() {
  awk -v isPart="$1" -v missedRows="$missed" -f bench/ratios.awk bench/targets.txt "$2"
}

measure --benchmark_repetitions=7 --benchmark_min_time=0.2 --benchmark_out="$report" "$@"
isPart=0
[[ $* != *--benchmark_filter* ]] || isPart=1
status=0
judge $isPart "$report" || status=$?
[ $status -eq 1 ] || exit $status

# In minutes a shared machine becomes faster and slower, and a few of hundreds of rows exceed their
# limits by chance. Two benchmarks alone take seconds.
mapfile -t rows <"$missed"
echo "${#rows[@]} missed rows again, each alone with its peer, in 41 repetitions:"
status=0
again=$build/again
for row in "${rows[@]}"; do
  rm -f "$again".*
  measure "$@" --benchmark_filter="^(${row/ /|})(/|\$)" --benchmark_repetitions=41 \
    --benchmark_min_time=0.02 --benchmark_out="$again.json" 2>"$again.log" || {
    cat "$again.log" >&2
    exit 2
  }
  judge 1 "$again.json" >"$again.txt" || status=$?
  grep -E 'holds|MISSED' "$again.txt" || exit 2
done
exit $status
