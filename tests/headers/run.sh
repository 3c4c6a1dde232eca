#!/usr/bin/env bash
# Compiles each installed header alone, then all together; fails on a warning:
#
#     run.sh COMPILER BUILD_TREE WORK_FOLDER
set -euo pipefail

compiler=$1 built=$2 work=$3
rm -rf "$work"
mkdir -p "$work"
cmake --install "$built" --prefix "$work" --component development >/dev/null
cmake --install "$built" --prefix "$work" --component host_development >/dev/null
# shellcheck disable=SC2207
flags=($(PKG_CONFIG_PATH=$(echo "$work"/lib*/pkgconfig) pkg-config --cflags varrow-host))
cd "$work/include"
export COMPILE="$compiler -std=c++17 -fsyntax-only -Wall -Wextra -Wpedantic -Wshadow -Wconversion
  -Werror ${flags[*]} -x c++"

headers=$(find . -name '*.h' | sed 's|^\./||' | sort)
# shellcheck disable=SC2016
xargs -P "$(nproc)" -I{} sh -c 'echo "#include <{}>" | $COMPILE - || { echo "in {} alone" >&2; exit 1; }' \
  <<<"$headers"

# In reverse order, which reveals a missing include, and with NDEBUG.
sort -r <<<"$headers" | sed 's|.*|#include <&>|' >../all.cpp
$COMPILE -DNDEBUG -MD -MF ../all.d ../all.cpp
if grep -oE '[^ ]*/(CLI|log4cplus|boost/locale|omp\.h)[^ ]*' ../all.d; then
  echo "the public headers include these private dependencies" >&2
  exit 1
fi
# A class whose fields would be lost does not compile, with a message that says why.
refused='#include <libvarrow/libvarrow.h>
struct Forgetful : libvarrow::ChainedModule {};
void add(cppbind::ClassRegister& classes) { classes.regClass<Forgetful>("Forgetful"); }'
if $COMPILE - <<<"$refused" 2>../refused.txt || ! grep -q "needs a public constructor" ../refused.txt; then
  echo "a module without the constructor of its record compiles" >&2
  exit 1
fi
echo "$(wc -l <<<"$headers") headers"
