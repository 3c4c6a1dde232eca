#!/usr/bin/env bash
# Plans the instances of the job shop, and one whose files have Chinese names, with the Windows
# program and with that of this system. Fails if the files of the runs differ, except in line ends,
# times, paths and the encoding of logs. The code page must be 936.
#
#     compare_demo.sh BUILD DEPENDENCIES LINUX_PROGRAM
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$(realpath -m "$1") dependencies=$(realpath -m "$2") linux_program=$(realpath -m "$3")
shop=$(cd "$here/../../examples/jobshop" && pwd)
runs=$build/demo

# Returns a text as a regular expression that matches only this text.
literally() {
  printf %s "$1" | sed 's/[][\.*^$+?(){}|,]/\\&/g'
}

# Removes differences that are wanted from all files of a run.
normalize() {
  rm -r "$1"/log "$1"/run.json "$1"/run.lock  # in the encoding of the system, or of this run
  rm "$1"/report.html                         # has the other files
  find "$1" -type f -exec sed -i -E -e 's/\r$//' \
    -e 's/^[0-9]+ ([0-9]{4}-)/THREAD \1/' -e 's/[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9:]{8}/TIME/g' \
    -e 's/"minutes" : [0-9.e-]+/"minutes" : M/' \
    -e 's/"(at|wall|cpu|memory|ts|dur)":[0-9.]+/"\1":N/g' -e 's/"time":"[^"]*"/"time":"TIME"/' \
    -e "s,(Z:)?($shop_pattern|$runs_pattern(/(linux|windows))?)/,SHOP/,g" {} +
}

shop_pattern=$(literally "$shop") runs_pattern=$(literally "$runs")

# plan NAME ARGUMENT...: plans on both systems, into the folder NAME.
plan() {
  local name=$1 system
  shift
  for system in linux windows; do
    local program=(timeout 600 "$linux_program" run "$@")
    if [ "$system" = windows ]; then
      program=("$here/wine.sh" "$build" "$dependencies" "$build/examples/jobshop/jobshop.exe" run "${@/#\//Z:/}")
    fi
    cd "$runs/$system"
    "${program[@]}" --out "$name" > /dev/null
    normalize "$name"
  done
  diff -r "$runs/linux/$name" "$runs/windows/$name"
  echo "$name: $(find "$runs/windows/$name" -type f | wc -l) files as on Linux"
}

rm -rf "$runs"
mkdir -p "$runs/linux" "$runs/windows" "$runs/车间"
for name in ft06 la01; do
  plan "$name" --instance "$shop/data/$name.txt" "$shop/pipeline.json"
done
cp "$shop/data/ft06.txt" "$runs/车间/排产.txt"
sed -e 's|data/ft06\.txt|排产.txt|' -e 's|schedule\.csv|表/工序.csv|' "$shop/pipeline.json" > "$runs/车间/流程.json"
plan 排产 "$runs/车间/流程.json"
