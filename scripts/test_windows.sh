#!/usr/bin/env bash
# Cross-compiles everything for Windows with mingw-w64 and runs the tests under wine, without a
# display. Usage: scripts/test_windows.sh [CTEST_ARGUMENT...]. See docs/windows.md.
#
# The dependencies are built once, into $VARROW_WINDOWS_DEPENDENCIES (default
# ~/.cache/varrow/windows, or below $XDG_CACHE_HOME).
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
dependencies=${VARROW_WINDOWS_DEPENDENCIES:-${XDG_CACHE_HOME:-$HOME/.cache}/varrow/windows}

"$here/install_packages.sh" windows
cd "$here/.."
build=$PWD/build/windows
"$here/windows/dependencies.sh" "$dependencies" "$build/dependencies"

cmake -S . -B "$build" -G Ninja -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64.cmake \
  -DCMAKE_PREFIX_PATH="$dependencies" -DBoost_NO_BOOST_CMAKE=ON \
  -DCMAKE_CROSSCOMPILING_EMULATOR="$here/windows/wine.sh;$build;$dependencies" \
  -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O2 -g1" \
  -DVARROW_BUILD_BENCHMARKS=OFF
cmake --build "$build" --parallel "$(nproc)"

trap '"$here/windows/wine.sh" "$build" "$dependencies" --stop' EXIT
"$here/windows/wine.sh" "$build" "$dependencies" --start
ctest --test-dir "$build" --output-on-failure --parallel "$(nproc)" "$@"
