#!/usr/bin/env bash
# Plans the instances of the job shop with the Windows program and with that of this system. Fails
# if the files of the runs differ, except in line ends, times, paths and logs.
#
#     compare_demo.sh BUILD DEPENDENCIES LINUX_PROGRAM
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$1 dependencies=$2 linux_program=$3
shop=$(cd "$here/../../examples/jobshop" && pwd)
runs=$build/demo

# Removes differences that are wanted from all files of a run.
normalize() {
  rm -r "$1"/log "$1"/run.json "$1"/run.lock  # in the encoding of the system, or of this run
  find "$1" -type f -exec sed -i -E -e 's/\r$//' \
    -e 's/[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9:]{8}/TIME/g' -e 's/"minutes" : [0-9.e-]+/"minutes" : M/' \
    -e "s|(Z:)?$shop/|SHOP/|g" {} +
}

rm -rf "$runs"
mkdir -p "$runs/linux" "$runs/windows"
for name in ft06 la01; do
  for system in linux windows; do
    program=("$linux_program") drive=''
    if [ "$system" = windows ]; then
      program=("$here/wine.sh" "$build" "$dependencies" "$build/examples/jobshop/jobshop.exe") drive=Z:
    fi
    cd "$runs/$system"
    "${program[@]}" run "$drive$shop/pipeline.json" --out "$name" \
      --instance "$drive$shop/data/$name.txt" > /dev/null
    normalize "$name"
  done
  diff -r "$runs/linux/$name" "$runs/windows/$name"
  echo "$name: $(find "$runs/windows/$name" -type f | wc -l) files as on Linux"
done
