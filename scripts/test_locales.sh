#!/usr/bin/env bash
# Runs the tests in other locales and time zones: test_locales.sh [PRESET], default release, as
# built by scripts/test.sh. Skips slow tests that depend on neither.
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
  [ "$(TZ=$2 date +%z)" != +0000 ]  # date uses UTC for an unknown zone
  VARROW_ADOPT_LOCALE=$build/ LD_PRELOAD=$adopt LC_ALL=$1 TZ=$2 ctest --test-dir "$build" \
    --output-on-failure --parallel "$(nproc)" -E '^(Consumer|Crash|Exports|Headers)'
}
run_in de_DE.UTF-8 America/New_York
run_in zh_CN.UTF-8 Asia/Shanghai
