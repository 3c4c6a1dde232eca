#!/usr/bin/env bash
# Builds the example job shop and plans three well-known instances by rules and local search: one also
# longer, with a progress bar and an override, one in shifts, which keeps the shop's rules, and once
# too late, which breaks some. Then shows the errors of a broken file, and the first difference of two
# runs with other seeds. Needs neither network nor root once the packages are installed.
set -euo pipefail

if [ $# -ne 0 ]; then
  echo "usage: scripts/demo.sh" >&2
  exit 2
fi
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/.." && pwd)
build=$root/build/demo
out=$root/out/demo
runs=$out/runs
jobshop=$build/examples/jobshop/jobshop
pipeline=$root/examples/jobshop/pipeline_improve.json
shifts=$root/examples/jobshop/pipeline_shifts.json
late=$root/examples/jobshop/pipeline_late.json

bold='' plain=''
if [ -t 1 ]; then
  bold=$'\e[1m' plain=$'\e[0m'
fi

# Runs a command with its output in a log; shows the log only on failure.
quietly() {
  local log=$1
  shift
  "$@" >"$log" 2>&1 || {
    cat "$log" >&2
    exit 1
  }
}

build_jobshop() {
  cd "$root" &&
    cmake --preset release -B "$build" -DVARROW_BUILD_TESTS=OFF -DVARROW_BUILD_BENCHMARKS=OFF &&
    cmake --build "$build" --target jobshop --parallel "$(nproc)"
}

# Plans an instance and prints the summary; the progress bar is on standard error.
run_jobshop() {
  local name=$1 file=$2 run=$3
  shift 3
  LIBVARROW_TIMED_STAT_DUMP=1 "$jobshop" run "$file" --out "$run" --overwrite \
    --instance "$root/examples/jobshop/data/$name.txt" "$@"
}

# Prints the rest of the summary line that starts with the given word.
entry() {
  sed -n "s/^$1  *//p" <<<"$2"
}

# Prints by how much a makespan is above the optimum.
gap() {
  awk -v found="$1" -v best="$2" 'BEGIN { printf "%.1f %%", 100 * (found - best) / best }'
}

# Says what a schedule lacks: length, or the proof that it is optimal.
remainder() {
  local makespan=$1 optimum=$2 bound=$3
  if [ "$makespan" -gt "$optimum" ]; then
    echo "$((makespan - optimum)); other seeds or more iterations may find less"
  elif [ "$makespan" -gt "$bound" ]; then
    echo "the proof: the lower bound is $bound"
  else
    echo "nothing: the lower bound is $bound, too"
  fi
}

plan() {
  local name=$1 optimum=$2
  local run=$runs/$name summary makespan by_rules
  summary=$(run_jobshop "$name" "$pipeline" "$run")
  makespan=$(entry makespan "$summary")
  by_rules=$(sed -n 's/.*"makespan" : \([0-9]*\).*/\1/p' "$run/dump/2_Improve/in_info.json")

  printf '\n%s%s%s\n' "$bold" "$name" "$plain"
  printf '  %-12s %s\n' \
    'by rules' "$by_rules, optimum $optimum, gap $(gap "$by_rules" "$optimum")" \
    improved "$bold${makespan%% *}$plain, gap $(gap "${makespan%% *}" "$optimum")" \
    remains "$(remainder "${makespan%% *}" "$optimum" "${makespan##* }")" \
    'run folder' "$run" \
    statistics "$run/statistics.json" \
    chart "$run/gantt.svg"
}

plan_in_shifts() {
  local name=$1
  local run=$runs/${name}_shifts summary
  summary=$(run_jobshop "$name" "$shifts" "$run")

  printf '\n%s%s in shifts%s\n' "$bold" "$name" "$plain"
  printf '  %-12s %s\n' \
    makespan "$bold$(entry makespan "$summary")$plain" \
    clock "$(entry clock "$summary")" \
    rules "$(entry rules "$summary")" \
    'run folder' "$run" \
    calendar "$run/dump/1_SetCalendars/out_detail.txt" \
    statistics "$run/statistics.json" \
    chart "$run/gantt.svg"
}

# Searches longer than the pipeline file says, by an override.
plan_longer() {
  local name=$1 override=Improve.iterations=3000000
  local run=$runs/${name}_longer summary
  printf '\n%s%s with an override%s\n' "$bold" "$name" "$plain"
  [ -t 2 ] || echo '  (no progress bar: standard error is not a terminal)'
  summary=$(run_jobshop "$name" "$pipeline" "$run" --set "$override")

  printf '  %-12s %s\n' \
    override "$override" \
    makespan "$bold$(entry makespan "$summary")$plain" \
    'run folder' "$run" \
    'as it ran' "$run/pipeline.json"
}

# Expects exit status 3, since the broken rules are to be shown.
plan_too_late() {
  local name=$1
  local run=$runs/${name}_late status=0 error
  error=$(run_jobshop "$name" "$late" "$run" 2>&1 >/dev/null) || status=$?
  if [ "$status" -ne 3 ] || [ ! -s "$run/rule_report.txt" ]; then
    printf '%s\n' "$error" >&2
    return 1
  fi

  printf '\n%s%s by the shortest operation first, too late%s\n' "$bold" "$name" "$plain"
  printf '  %-12s %s\n' \
    'exit status' "$bold$status$plain, as rules are broken" \
    'run folder' "$run" \
    chart "$run/gantt.svg" \
    'rule report' "$run/rule_report.txt"
  sed 's/^/    /' "$run/rule_report.txt"
}

# Expects exit status 1, since the file has errors.
check_broken_file() {
  local file=$out/broken.json status=0
  cat >"$file" <<'END'
{"modules": [
  {"ReadInstance": {"fil": "data/ft06.txt"}},
  {"Dispach": {"rule": "SPT"}},
  {"Dispatch": {"rule": "EDD", "tries": 0}}
]}
END
  "$jobshop" check "$file" >"$out/broken.txt" 2>/dev/null || status=$?
  if [ "$status" -ne 1 ]; then
    cat "$out/broken.txt" >&2
    return 1
  fi

  printf '\n%sThe check of a broken file%s\n' "$bold" "$plain"
  printf '  %-12s %s\n' 'exit status' "$bold$status$plain, as the file has errors"
  sed 's/^/    /' "$out/broken.txt"
}

# Expects exit status 1, since the seeds differ.
compare_seeds() {
  local name=$1 override=Improve.seed=2
  local run=$runs/${name}_seed status=0
  run_jobshop "$name" "$pipeline" "$run" --set "$override" >/dev/null
  "$jobshop" diff "$runs/$name" "$run" >"$out/diff.txt" || status=$?
  if [ "$status" -ne 1 ]; then
    cat "$out/diff.txt" >&2
    return 1
  fi

  printf '\n%s%s with another seed: the first difference%s\n' "$bold" "$name" "$plain"
  printf '  %-12s %s\n' override "$override" 'exit status' "$bold$status$plain, as the runs differ"
  sed 's/^/    /' "$out/diff.txt"
}

"$here/install_packages.sh"
mkdir -p "$out"
echo "Building (log: $out/build.log) ..."
quietly "$out/build.log" build_jobshop
plan ft06 55
plan la01 666
plan ft10 930
plan_longer ft10
plan_in_shifts ft06
plan_too_late ft06
check_broken_file
compare_seeds ft10
printf '\nOpen a chart or the page of a run in a browser:\n  %s\n' "$runs/ft10/report.html"
