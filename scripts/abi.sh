#!/usr/bin/env bash
# Compares the binary interface of the library with that of an earlier commit, before a release. Fails
# and lists the changes when a host that was built against the earlier one would not run with this one.
# Added functions and variables are compatible and not listed.
#
#     scripts/abi.sh COMMIT
set -euo pipefail

if [ $# -ne 1 ]; then
  echo "usage: scripts/abi.sh COMMIT" >&2
  exit 2
fi
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
"$here/install_packages.sh" abi
cd "$here/.."

work=$(mktemp -d)
trap 'rm -rf "$work"; git worktree prune' EXIT
git worktree add --quiet --detach "$work/before" "$1"

build() {
  cmake -S "$1" -B "$2" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVARROW_BUILD_TESTS=OFF \
    -DVARROW_BUILD_EXAMPLES=OFF -DVARROW_BUILD_BENCHMARKS=OFF >/dev/null
  cmake --build "$2" --target varrow varrow_host
}
build "$work/before" "$work/built_before"
build . "$work/built_now"

# Bits of the exit status: 1 and 2 errors of the tool, 4 a change, 8 a change that the tool knows to be
# incompatible. A data member added to a public class has only bit 4. Types of other folders are private.
status=0
for library in libvarrow host/libvarrow-host; do
  abidiff --no-added-syms \
    --headers-dir1 "$work/before/include" --headers-dir1 "$work/before/3pp/cppbind/include" \
    --headers-dir2 include --headers-dir2 3pp/cppbind/include \
    "$work/built_before/src/$library.so" "$work/built_now/src/$library.so" || status=$((status | $?))
done
if ((status & 3)); then exit 2; fi
if ((status != 0)); then
  echo "Hosts of $1 would not run with this library: raise the major version." >&2
  exit 1
fi
echo "Hosts of $1 run with this library."
