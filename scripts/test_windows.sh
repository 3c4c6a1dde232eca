#!/usr/bin/env bash
# Cross-compiles everything for Windows with mingw-w64 and tests it under wine, without a display:
# all tests with code page 1252, those of texts with 936, and the demo, whose files must be those of
# Linux. Usage: scripts/test_windows.sh [CTEST_ARGUMENT...]; with arguments it runs only those tests.
# See docs/windows.md.
#
# The dependencies are built once, into $VARROW_WINDOWS_DEPENDENCIES (default
# ~/.cache/varrow/windows, or below $XDG_CACHE_HOME).
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
dependencies=${VARROW_WINDOWS_DEPENDENCIES:-${XDG_CACHE_HOME:-$HOME/.cache}/varrow/windows}

dependencies=$(realpath -m "$dependencies")  # commands below run in other folders

"$here/install_packages.sh" windows
cd "$here/.."
build=$PWD/build/windows
linux=$PWD/build/release  # lists its tests and plans the demo
jobs=$(nproc)
"$here/windows/dependencies.sh" "$dependencies" "$build/dependencies"

# CLI11 has only headers, of which the cross compiler must not see the others.
cli11=$build/cli11
mkdir -p "$cli11/include"
cp -r /usr/include/CLI "$cli11/include"
cat >"$cli11/CLI11Config.cmake" <<'CONFIG'
add_library(CLI11::CLI11 INTERFACE IMPORTED)
target_include_directories(CLI11::CLI11 INTERFACE "${CMAKE_CURRENT_LIST_DIR}/include")
CONFIG
cp /usr/share/cmake/CLI11/CLI11ConfigVersion.cmake "$cli11"

timeout 600 cmake -S . -B "$build" -G Ninja -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64.cmake \
  -DCMAKE_PREFIX_PATH="$dependencies" -DCLI11_DIR="$cli11" \
  -DCMAKE_CROSSCOMPILING_EMULATOR="$here/windows/wine.sh;$build;$dependencies" \
  -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O2 -g1" \
  -DVARROW_BUILD_BENCHMARKS=OFF
timeout 7200 cmake --build "$build" --parallel "$jobs"

trap '"$here/windows/wine.sh" "$build" "$dependencies" --stop' EXIT

# Runs tests with a code page, which wine takes from the locale.
run_tests() {
  local page=$1 locale=$2
  shift 2
  "$here/windows/wine.sh" "$build" "$dependencies" --stop
  local -x LOCPATH=$build/locales LC_ALL=$locale VARROW_TEST_CODE_PAGE=$page
  "$here/windows/wine.sh" "$build" "$dependencies" --start
  ctest --test-dir "$build" --output-on-failure --no-tests=error --parallel "$jobs" "$@"
}

mkdir -p "$build/locales"
localedef -i zh_CN -f UTF-8 "$build/locales/zh_CN.UTF-8" || [ -d "$build/locales/zh_CN.UTF-8" ]
if [ $# -gt 0 ]; then
  run_tests CP1252 C.UTF-8 "$@"
  exit
fi
results=$build/tests.xml
run_tests CP1252 C.UTF-8 --output-junit "$results"
run_tests CP936 zh_CN.UTF-8 -R '^(UTFConverter|Execute|HostProgram|Json|Overrides|Records|Diff|Repeat|Page|Why|RunFolders|Time[^r]|Scheduling|DllManager|Log|Utility|Rule|Module|Chain|Shared)'

timeout 600 "$here/windows/press_ctrl_c.py" "$build" "$dependencies"

timeout 600 cmake --preset release > /dev/null
timeout 3600 cmake --build --preset release --target jobshop jobshop_gantt --parallel "$jobs"
LOCPATH=$build/locales LC_ALL=zh_CN.UTF-8 \
  "$here/windows/compare_demo.sh" "$build" "$dependencies" "$linux/examples/jobshop/jobshop"
"$here/windows/share.sh" "$results" "$linux"
