#!/usr/bin/env bash
# Crashes a host in one way many times: each time it must end by the right signal, with a back-trace.
#
#     crash.sh HOST WAY TIMES AT_ONCE SIGNAL... -- PATTERN...
#
# SIGNAL: the numbers by which it may end. PATTERN: extended regular expressions that its standard
# error must match; a line "dump file" is added to it for a dump file that is not empty. The variable
# CRASH_TIMES replaces TIMES, and CRASH_AT_ONCE AT_ONCE. The host has ten seconds of processor time,
# or CRASH_SECONDS, and three minutes in case it hangs.
set -euo pipefail

host=$1 way=$2 times=${CRASH_TIMES:-$3} at_once=${CRASH_AT_ONCE:-$4}
shift 4
signals=()
while [ "$1" != -- ]; do signals+=("$1") && shift; done
shift

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
ulimit -c 0 -t "${CRASH_SECONDS:-10}"
export host way folder
crash() {
  local status=0
  mkdir "$folder/$1" && cd "$folder/$1"
  # The shell's message about the end of a child is written to the same file.
  { timeout --signal=KILL 180 "$host" "$way" >/dev/null || status=$?; } 2>"$folder/$1.err"
  sed -i 's/\r$//' "$folder/$1.err"
  find . -name '*.coredump' -size +0 -printf 'dump file\n' >>"$folder/$1.err"
  echo "$status" >"$folder/$1.status"
}
export -f crash
seq "$times" | xargs -P "$at_once" -I{} bash -c 'crash {}'

for ((run = 1; run <= times; ++run)); do
  ended=no
  for signal in "${signals[@]}"; do
    [ "$(cat "$folder/$run.status")" -ne $((128 + signal)) ] || ended=yes
  done
  for pattern in "$@"; do
    grep -qE "$pattern" "$folder/$run.err" || ended="without $pattern"
  done
  if [ "$ended" != yes ]; then
    echo "$way, run $run: status $(cat "$folder/$run.status"), $ended; its standard error:" >&2
    cat "$folder/$run.err" >&2
    exit 1
  fi
done
echo "$way: $times of $times"
