#!/usr/bin/env bash
# Builds the fuzzers with Clang and runs them in parallel, one per processor.
#
#     scripts/fuzz.sh [SECONDS [TARGET...]]
#
# SECONDS (default 30) is the time of each target. TARGET (default: all) is a source in fuzz/
# without .cpp. Each target starts from its seed corpus in fuzz/corpus/ alone. Failing input is
# written to build/fuzz/, and the exit status is 1.
set -euo pipefail

seconds=${1:-30}
shift $(($# ? 1 : 0))
cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=$PWD/build/fuzz
targets=("$@")
[ $# -gt 0 ] || mapfile -t targets < <(ls fuzz/corpus)

scripts/install_packages.sh clang
mkdir -p "$build"
{ cmake --preset fuzz && cmake --build --preset fuzz --parallel "$(nproc)"; } >"$build/build.log" 2>&1 || {
  cat "$build/build.log" >&2
  exit 1
}

# Fuzzers create thousands of files: in memory where possible.
scratch=$(mktemp -d -p "$([ -w /dev/shm ] && echo /dev/shm || echo "${TMPDIR:-/tmp}")")
trap 'rm -rf "$scratch"' EXIT

run_target() {
  local log=$build/$1.log status=0
  mkdir -p "$scratch/$1"
  cp -r "fuzz/corpus/$1" "$scratch/$1/corpus"
  TMPDIR=$scratch/$1 UBSAN_OPTIONS=print_stacktrace=1 "$build/fuzz/fuzz_$1" \
    -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -max_len=4096 -dict=fuzz/json.dict \
    -artifact_prefix="$build/$1-" -print_final_stats=1 "$scratch/$1/corpus" >"$log" 2>&1 || status=1
  printf '%-16s %9s executions %6s features %s\n' "$1" \
    "$(sed -n 's/.*executed_units: *//p' "$log")" \
    "$(sed -n 's/^#.* ft: \([0-9]*\).*/\1/p' "$log" | tail -1)" \
    "$([ $status -eq 0 ] && echo 'no finding' || echo "FAILED: $log")"
  [ $status -eq 0 ] || tail -60 "$log" >&2
  return $status
}
export -f run_target
export build scratch seconds

printf '%s\n' "${targets[@]}" | xargs -P "$(nproc)" -I{} bash -c 'set -euo pipefail; run_target {}' || exit 1
