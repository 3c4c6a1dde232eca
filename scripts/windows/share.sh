#!/usr/bin/env bash
# Prints the share of the tests of Linux that ran on Windows, and those that did not run or skipped
# themselves. Fails if docs/windows.md does not list one of them, or if fewer than nine of ten ran.
#
#     share.sh RESULTS LINUX_BUILD    with the file of ctest --output-junit; the build for Linux needs
#                                     to be configured only
set -euo pipefail

results=$1 linux=$2
tree=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)

# A test with parameters counts once.
names() {
  sed -E 's|^[A-Za-z]+/([^/]*)/.*|\1|' | sort -u
}

windows_names() {
  sed -nE 's/^[[:blank:]]*<testcase name="([^"]*)".* status="run".*/\1/p' "$results" | names
}

# Test programs that are not built have no list of their tests: the sources have it.
linux_names() {
  ctest --test-dir "$linux" -N 2>/dev/null | sed -n 's/^ *Test *#[0-9]*: //p' | names |
    grep -v 'NOT_BUILT$' || true
  find "$tree/tests" -name '*_test.cpp' -exec cat {} + |
    tr '\n' ' ' | grep -oE '\bTEST(_F|_P)?\([A-Za-z0-9]+, *[A-Za-z0-9]+\)' |
    sed -E 's/^TEST(_F|_P)?\((.*), *(.*)\)$/\2.\3/'
}

all=$(linux_names | sort -u)
missing=$(comm -23 <(echo "$all") <(windows_names))
total=$(wc -l <<<"$all")
here=$((total - $(grep -c . <<<"$missing" || true)))
echo "$here of the $total tests of Linux ran ($((100 * here / total)) %). These did not:"
status=0
for name in $missing; do
  listed=''
  grep -qF -e "\`$name\`" -e "\`${name%.*}.*\`" "$tree/docs/windows.md" || { listed=', which docs/windows.md does not list' && status=1; }
  echo "  $name$listed"
done
[ $((10 * here)) -ge $((9 * total)) ] || status=1
exit $status
