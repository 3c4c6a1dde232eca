#!/usr/bin/env bash
# Builds the libraries that varrow links for Windows, from Debian's source packages, into a folder.
# Usage: dependencies.sh PREFIX SCRATCH. Does nothing if PREFIX was built by this same file.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
prefix=$(realpath -m "$1")
scratch=$(realpath -m "$2")
toolchain=$here/../../cmake/mingw-w64.cmake
jobs=$(nproc)
mark=.made-by-dependencies.sh

key=$(cat "${BASH_SOURCE[0]}" "$toolchain" | sha256sum)
[ -f "$prefix/key" ] && [ "$(cat "$prefix/key")" = "$key" ] && exit 0

# Makes an empty folder. Deletes one only that this file made before: it has a mark, or the key of an
# earlier version, which made no mark.
make_empty() {
  if [ -n "$(ls -A "$1" 2> /dev/null)" ] && [ ! -e "$1/$mark" ] &&
    ! grep -qsxE '[0-9a-f]{64}  -' "$1/key"; then
    echo "$1 is not empty, and this script did not make it: choose another folder" >&2
    exit 1
  fi
  rm -rf "$1"
  mkdir -p "$1"
  touch "$1/$mark"
}

# Runs a command with its output in a file, of which the end is shown if the command fails.
quietly() {
  local log=$scratch/$1.log
  shift
  "$@" > "$log" 2>&1 < /dev/null || {
    tail -n 40 "$log" >&2
    echo "failed: $*" >&2
    exit 1
  }
}

# Downloads and unpacks source packages. The machine's own apt sources are not changed: their
# source counterparts are in a private list.
fetch() {
  local apt=$scratch/apt
  mkdir -p "$apt/lists/partial" "$scratch/src"
  # shellcheck disable=SC2016  # apt expands the names
  apt-get indextargets 'Identifier: Packages' 'Origin: Debian' \
    --format 'deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] $(REPO_URI) $(RELEASE) $(COMPONENT)' |
    sort -u > "$apt/sources.list"
  [ -s "$apt/sources.list" ] || { echo "apt knows no Debian packages; run apt-get update" >&2; exit 1; }
  local options=(-q -o "Dir::Etc::SourceList=$apt/sources.list" -o Dir::Etc::SourceParts=/dev/null
                 -o "Dir::State::Lists=$apt/lists" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=)
  [ "$(id -u)" -ne 0 ] || options+=(-o APT::Sandbox::User=root)
  quietly apt-update timeout 300 apt-get "${options[@]}" update
  cd "$scratch/src"
  quietly apt-source timeout 900 apt-get "${options[@]}" source "$@"
}

# Returns the folder of an unpacked source package.
source_of() {
  find "$scratch/src" -maxdepth 1 -type d -name "$1-*"
}

build_boost() {
  cd "$(source_of boost1.74)"
  echo 'using gcc : mingw : x86_64-w64-mingw32-g++-posix ;' > "$scratch/user-config.jam"
  local options=(-j "$jobs" "--user-config=$scratch/user-config.jam" --ignore-site-config)
  quietly boost-headers timeout 3600 b2 "${options[@]}" headers
  quietly boost timeout 3600 b2 "${options[@]}" "--stagedir=$prefix" "--build-dir=$scratch/boost" \
    --layout=system --with-atomic --with-chrono --with-date_time --with-filesystem --with-locale --with-system \
    --with-thread toolset=gcc-mingw target-os=windows threadapi=win32 abi=ms binary-format=pe \
    architecture=x86 address-model=64 variant=release link=shared runtime-link=shared \
    threading=multi cxxstd=17 boost.locale.iconv=off boost.locale.icu=off stage
  rm -r "$prefix"/lib/cmake/[Bb]oost*  # these files name the folder of the sources
  # The headers are the same on all systems. /usr/include itself must not be searched.
  mkdir -p "$prefix/include"
  ln -sfn /usr/include/boost "$prefix/include/boost"
}

# build NAME SOURCE [CMAKE_ARGUMENT...]
build() {
  local name=$1 source=$2
  shift 2
  local launcher=()
  command -v ccache > /dev/null && launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  quietly "$name-configure" timeout 600 cmake -G Ninja -S "$source" -B "$scratch/$name" \
    -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_PREFIX_PATH="$prefix" \
    -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=ON "${launcher[@]}" "$@"
  quietly "$name-build" timeout 3600 cmake --build "$scratch/$name" --parallel "$jobs"
  quietly "$name-install" timeout 600 cmake --install "$scratch/$name" --strip
}

build_jsoncpp() {
  build jsoncpp "$(source_of libjsoncpp)" -DJSONCPP_WITH_TESTS=OFF -DBUILD_STATIC_LIBS=OFF \
    -DBUILD_OBJECT_LIBS=OFF -DJSONCPP_WITH_PKGCONFIG_SUPPORT=OFF
}

# With its thread pool a process hangs at its exit.
build_log4cplus() {
  build log4cplus "$(source_of log4cplus)" -DUNICODE=OFF -DLOG4CPLUS_BUILD_TESTING=OFF \
    -DLOG4CPLUS_ENABLE_DECORATED_LIBRARY_NAME=OFF -DLOG4CPLUS_ENABLE_THREAD_POOL=OFF \
    -DLOG4CPLUS_BUILD_LOGGINGSERVER=OFF -DLOG4CPLUS_WORKING_LOCALE=ON -DWITH_UNIT_TESTS=OFF
}

build_poco() {
  # Headers whose names differ in case only from those of mingw-w64. Poco's own headers, which hosts
  # include, need them, too.
  echo '#include <winsock2.h>' > "$prefix/include/Winsock2.h"
  echo '#include <iphlpapi.h>' > "$prefix/include/Iphlpapi.h"
  local off=()
  for part in ACTIVERECORD ACTIVERECORD_COMPILER APACHECONNECTOR CPPPARSER CRYPTO DATA DATA_MYSQL \
    DATA_ODBC DATA_POSTGRESQL DATA_SQLITE ENCODINGS ENCODINGS_COMPILER JSON JWT MONGODB NET NETSSL \
    NETSSL_WIN PAGECOMPILER PAGECOMPILER_FILE2PAGE PDF POCODOC PROMETHEUS REDIS SEVENZIP TESTS UTIL \
    XML ZIP; do
    off+=("-DENABLE_$part=OFF")
  done
  build poco "$(source_of poco)" "${off[@]}" -DCMAKE_CXX_FLAGS="-isystem $prefix/include"
}

build_googletest() {
  build googletest /usr/src/googletest -DBUILD_SHARED_LIBS=OFF -DBUILD_GMOCK=OFF
}

make_empty "$prefix"
make_empty "$scratch"
echo "Building the dependencies for Windows into $prefix"
fetch boost1.74 libjsoncpp log4cplus poco
for name in boost jsoncpp log4cplus poco googletest; do
  echo "  $name"
  "build_$name"
done
echo "$key" > "$prefix/key"
rm -rf "$scratch"
