#!/usr/bin/env bash
# Compares two equal runs with large dumps by the program varrow and by "diff -rq", and fails when
# varrow takes more than twice the time, or more than 64 MB of memory:
#
#     scripts/test_diff.sh [MEGABYTES]
#
# Both runs have that size, by default 1000. Uses the build of the preset release.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

size=${1:-1000}
if [[ $# -gt 1 || ! $size =~ ^[1-9][0-9]*$ ]]; then
  echo "usage: scripts/test_diff.sh [MEGABYTES]" >&2
  exit 2
fi
cmake --preset release >/dev/null
cmake --build --preset release --target varrow_tool >/dev/null
work=$(mktemp -d -p build)
trap 'rm -rf "$work"' EXIT

# A run of one step: half of its dump is text, half is binary.
make() {
  local dump=$work/$1/dump/0_Plan
  mkdir -p "$dump/after_process"
  echo '{"libvarrow_run": 1, "host": "orders", "outcome": "done", "dumps": "all"}' \
    >"$work/$1/run.json"
  printf '{"event": "%s", "step": "0_Plan", "class": "Plan"}\n' begin end >"$work/$1/steps.jsonl"
  yes 'operation 12 of job 34: machine 5, from 2024-03-05 08:00:00' |
    head -c "$((size * 500000))" >"$dump/out_detail.txt" || true
  head -c "$((size * 500000))" /dev/zero | tr '\0' '\1' >"$dump/after_process/data.bin"
}
make one
make two

# Prints the processor time of a command in milliseconds: the least of three, as other processes
# disturb it.
milliseconds() {
  local least='' time TIMEFORMAT='%U %S'
  for _ in 1 2 3; do
    time=$({ time "$@" >/dev/null; } 2>&1 | awk '{print int(($1 + $2) * 1000)}')
    if [[ -z $least || $time -lt $least ]]; then least=$time; fi
  done
  echo "$least"
}
varrow=build/release/tools/varrow
"$varrow" diff "$work/one" "$work/two"
own=$(milliseconds "$varrow" diff "$work/one" "$work/two")
peer=$(milliseconds diff -rq "$work/one" "$work/two")
echo "varrow diff $own ms, diff -rq $peer ms of processor time"
[ "$own" -le $((2 * peer + 50)) ]  # milliseconds of the start of the program

echo end >>"$work/two/dump/0_Plan/out_detail.txt"
(
  ulimit -d 65536
  status=0
  "$varrow" diff "$work/one" "$work/two" || status=$?
  [ "$status" -eq 1 ]
)
