#!/usr/bin/env bash
# Installs missing Debian packages that the build needs; asks for root only then. An argument adds a
# group: "clang" for the fuzzers and the coverage, "reference" for Doxygen, "abi" for abidiff,
# "lint" for the checks of style, "page" for a browser, "windows" for mingw-w64 and wine, "count"
# for callgrind.
set -euo pipefail

packages=(
  g++ cmake ninja-build ccache pkg-config
  libboost-date-time-dev libboost-filesystem-dev libboost-locale-dev libboost-stacktrace-dev
  libboost-thread-dev libcli11-dev libjsoncpp-dev liblog4cplus-dev libpoco-dev
  libgtest-dev libbenchmark-dev libfmt-dev libabsl-dev python3-jsonschema
  dpkg-dev file locales tzdata
)
case ${1:-} in
  clang) packages+=(clang libclang-rt-dev libomp-dev llvm) ;;
  reference) packages+=(doxygen) ;;
  abi) packages+=(abigail-tools) ;;
  lint) packages+=(clang-format clang-tidy shellcheck) ;;
  count) packages+=(valgrind) ;;
  page) packages+=(chromium chromium-driver) ;;
  windows) packages+=(g++-mingw-w64-x86-64-posix wine64 libboost-tools-dev googletest bzip2 xz-utils) ;;
esac

missing=()
for package in "${packages[@]}"; do
  status=$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$status" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || {
    echo "These packages are missing, install them as root: ${missing[*]}" >&2
    exit 1
  }
  as_root=(sudo)
fi
echo "Installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -q
"${as_root[@]}" apt-get install -q -y --no-install-recommends "${missing[@]}"
