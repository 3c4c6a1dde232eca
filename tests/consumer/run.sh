#!/usr/bin/env bash
# Builds and runs the consumer with the library as a subproject, or from the Debian packages, by CMake
# and by pkg-config, or for Windows with an installed build:
#
#     run.sh subproject|package|installation WORK_FOLDER [CXX_FLAGS [EMULATOR...]]
#
# For Windows, EMULATOR... is the command that runs a program. An installation needs the build directory
# in the variable BUILD.
set -euo pipefail

way=$1 work=$2 flags=${3:-}
emulator=("${@:4}")
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
prefix=$work/prefix
rm -rf "$work"
mkdir -p "$work/plugins"
cd "$work"

configure() {
  cmake -S "$here" -B . -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS="$flags" "$@"
  cmake --build .
}

configure_installed() {
  configure "-DCMAKE_PREFIX_PATH=$prefix/usr"
  grep -q "^varrow_DIR:PATH=$prefix/usr/lib/" CMakeCache.txt
}

# With -DNDEBUG, as in Release.
compile() {
  local options PKG_CONFIG_PATH
  PKG_CONFIG_PATH=$(echo "$prefix"/usr/lib/*/pkgconfig)
  export PKG_CONFIG_PATH
  options=$(pkg-config --cflags --libs varrow)
  # shellcheck disable=SC2086
  "${CXX:-c++}" -std=c++17 -O1 -DNDEBUG $flags "$here/plugin.cpp" -shared -fPIC \
    -o plugins/shout.so $options
  # shellcheck disable=SC2086
  "${CXX:-c++}" -std=c++17 -O1 -DNDEBUG $flags "-DPIPELINE=\"$here/pipeline.json\"" \
    "$here/main.cpp" -o consumer $options \
    "-Wl,-rpath,$(pkg-config --variable=libdir varrow)"
  # shellcheck disable=SC2046,SC2086
  "${CXX:-c++}" -std=c++17 -O1 $flags "$here/host.cpp" -o steps \
    $(pkg-config --cflags --libs varrow-host) "-Wl,-rpath,$(pkg-config --variable=libdir varrow)"
}

# Builds the Debian packages and unpacks them below the prefix, which needs no root.
unpack_packages() {
  # With the flags of the subproject, so that ccache has the objects.
  cmake -S "$here/../.." --preset package -B built -DCMAKE_BUILD_TYPE=Release >configure.log
  cmake --build built
  cpack --config built/CPackConfig.cmake -B packages
  local package runtime=(packages/libvarrow[0-9]_*.deb) development=(packages/libvarrow-dev_*.deb)
  for package in packages/*.deb; do
    dpkg-deb -x "$package" prefix
  done
  depends "${runtime[0]}" libboost-filesystem1 libjsoncpp25 liblog4cplus libpocofoundation
  dpkg-deb -I "${runtime[0]}" shlibs | grep -q '^libvarrow 1 libvarrow1 (>= 1'
  depends "${development[0]}" 'libvarrow1 (= 1' libboost-filesystem-dev libboost-thread-dev \
    libjsoncpp-dev libpoco-dev
  depends packages/libvarrow-host[0-9]_*.deb 'libvarrow1 (= 1' libboost-filesystem1 libjsoncpp25
  depends packages/libvarrow-host-dev_*.deb 'libvarrow-host1 (= 1' 'libvarrow-dev (= 1'
  depends packages/varrow_*.deb 'libvarrow-host1 (= 1'
  LD_LIBRARY_PATH=$(echo "$prefix"/usr/lib/*-linux-gnu) "$prefix/usr/bin/varrow" --version |
    grep -q '^varrow, with libvarrow 1'
}

depends() {
  local package=$1 name have
  have=$(dpkg-deb -f "$package" Depends)
  for name in "${@:2}"; do
    [[ ", $have" == *", $name"* ]] || {
      echo "$package does not depend on $name but on $have" >&2
      exit 1
    }
  done
}

check() {
  local program=(./consumer) host=(./steps)
  if [ ${#emulator[@]} -gt 0 ]; then
    program=("${emulator[@]}" ./consumer.exe) host=("${emulator[@]}" ./steps.exe)
  fi
  "${host[@]}" run "$here/steps.json" --out steps_run | tr -d '\r' | grep '^run folder  .*/steps_run$' >/dev/null
  [ "$(tr -d '\r' <steps_run/log/output.txt | grep -c '^a step$')" -eq 2 ]
  rm -r steps_run
  "${program[@]}" | tr -d '\r' | tee output.txt
  grep -qx 'run/1_Shout/' output.txt
  grep -qx 'steps: 2' output.txt
  if "${program[@]}" break-a-check 2>errors.txt; then
    echo "a failed check did not end the process" >&2
    exit 1
  fi
  grep -q "Assertion \`!this->timeslots.empty()' failed" errors.txt
}

case $way in
  subproject) configure "-DVARROW_SOURCE=$here/../.." ;;
  package)
    unpack_packages
    configure_installed
    check
    compile
    ;;
  installation)
    cmake --install "$BUILD" --prefix "$prefix/usr" >install.log
    cp "$prefix"/usr/bin/varrow*.dll .
    configure_installed
    ;;
  *) exit 2 ;;
esac
check
