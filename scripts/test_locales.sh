#!/usr/bin/env bash
# Runs the tests again in other countries: test_locales.sh [PRESET], default release, which
# scripts/test.sh has built. What cannot depend on a locale or a time zone and is slow is left out.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
preset=${1:-release}

scripts/install_packages.sh
build=${VARROW_TEST_BUILD:-$PWD/build/$preset}
adopt=$build/tests/libvarrow_adopt_locale.so
test -e "$adopt"
export LOCPATH=$build/locales
mkdir -p "$LOCPATH"
for name in de_DE zh_CN ps_AF; do
  [ -d "$LOCPATH/$name.UTF-8" ] || localedef -i $name -f UTF-8 "$LOCPATH/$name.UTF-8"
done

run_in() {
  echo "Locale $1, time zone $2"
  [ "$(TZ=$2 date +%z)" != +0000 ]  # a zone that is not known is UTC
  VARROW_ADOPT_LOCALE=$build/ LD_PRELOAD=$adopt LC_ALL=$1 TZ=$2 ctest --test-dir "$build" \
    --output-on-failure --parallel "$(nproc)" -E '^(Consumer|Crash|Exports|Headers)'
}
run_in de_DE.UTF-8 America/New_York
run_in zh_CN.UTF-8 Asia/Shanghai
