#!/usr/bin/env bash
# Builds and runs the consumer in a way of using the library:
#
#     run.sh cmake|pkg-config|subproject BUILD_TREE WORK_FOLDER [CXX_FLAGS]
set -euo pipefail

way=$1 built=$2 work=$3 flags=${4:-}
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
prefix=$work/prefix
rm -rf "$work"
mkdir -p "$work/plugins"
cd "$work"

configure() {
  cmake -S "$here" -B . -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS="$flags" "$@"
  cmake --build .
}

# -DNDEBUG as Release has it.
compile() {
  local options
  options=$(PKG_CONFIG_PATH=$prefix/lib/pkgconfig pkg-config --cflags --libs varrow)
  # shellcheck disable=SC2086
  "${CXX:-c++}" -std=c++17 -O1 -DNDEBUG $flags "$here/plugin.cpp" -shared -fPIC \
    -o plugins/shout.so $options
  # shellcheck disable=SC2086
  "${CXX:-c++}" -std=c++17 -O1 -DNDEBUG $flags "-DPLUGINS=\"$work/plugins\"" \
    "-DPIPELINE=\"$here/pipeline.json\"" "$here/main.cpp" -o consumer $options \
    "-Wl,-rpath,$prefix/lib"
}

case $way in
  cmake)
    cmake --install "$built" --prefix "$prefix" >install.log
    configure "-DCMAKE_PREFIX_PATH=$prefix"
    ;;
  pkg-config)
    cmake --install "$built" --prefix "$prefix" >install.log
    compile
    ;;
  subproject) configure "-DVARROW_SOURCE=$here/../.." ;;
  *) exit 2 ;;
esac

./consumer | tee output.txt
grep -qx 'run/1_Shout/' output.txt
grep -qx 'steps: 2' output.txt
if ./consumer break-a-check 2>errors.txt; then
  echo "a failed check did not end the process" >&2
  exit 1
fi
grep -q "Assertion \`!this->timeslots.empty()' failed" errors.txt
