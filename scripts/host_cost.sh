#!/usr/bin/env bash
# Counts instructions with callgrind and prints two ratios with their limits: the host's part of a
# run of 1,000 empty modules without dumps to the frame's own, and the share of the records in a run
# of the example with all dumps. The counts hardly depend on the machine. Takes about a minute.
#
#     scripts/host_cost.sh
#
# VARROW_BENCH_BUILD names another build directory. Exit status: 0, 1 when a limit is exceeded.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
if [ $# -ne 0 ]; then
  echo "usage: scripts/host_cost.sh" >&2
  exit 2
fi
scripts/install_packages.sh count
root=$PWD
build=${VARROW_BENCH_BUILD:-$root/build/release}
work=$root/build/host_cost

cmake --preset release -B "$build" -DVARROW_BUILD_BENCHMARKS=ON >/dev/null
cmake --build "$build" --target varrow_host_cost jobshop
rm -rf "$work"
mkdir -p "$work/frame/log"
cd "$work"

# Prints the instructions of a command, or of the functions `only` in it.
only=()
count() {
  valgrind --quiet --tool=callgrind --callgrind-out-file="$work/callgrind.out" \
    "${only[@]/#/--toggle-collect=}" "$@" >"$work/output.txt"
  sed -n 's/^summary: //p' "$work/callgrind.out"
}

# Prints a ratio; fails when it exceeds its limit.
compare() {
  awk -v name="$1" -v part="$2" -v whole="$3" -v limit="$4" 'BEGIN {
    printf "%-42s %5.1f M of %5.1f M = %.3f, limit %.3f\n", name, part / 1e6, whole / 1e6,
      part / whole, limit
    exit part <= 0 || part / whole > limit
  }'
}

awk 'BEGIN {
  for (i = 0; i < 1000; ++i) printf "%s{\"E\": {}}", i == 0 ? "{\"modules\": [" : ", "
  print "]}"
}' >p.json
program=$build/bench/varrow_host_cost
host=$(count "$program" run p.json --out host --dumps none)
cp host/log/log.conf frame/log/
frame=$(cd frame && count "$program" frame ../p.json)

jobshop=$build/examples/jobshop/jobshop
pipeline=$root/examples/jobshop/pipeline.json
whole=$(count "$jobshop" run "$pipeline" --out whole)
# None of these calls another one.
only=('libvarrow::host::runFacts*' 'libvarrow::host::RunRecord::begin*'
  'libvarrow::host::configurationOf*' 'libvarrow::host::RunRecord::setConfiguration*'
  'libvarrow::host::RunSession::step*' 'libvarrow::host::Run::writeRecords*')
records=$(count "$jobshop" run "$pipeline" --out records)

isKept=0
compare "the host's part to the frame's own" $((host - frame)) "$frame" 0.333 || isKept=1
compare "the records' share of the example's run" "$records" "$whole" 0.05 || isKept=1
exit $isKept
