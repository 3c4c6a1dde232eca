#!/usr/bin/env bash
# Builds everything and runs every test. Usage: scripts/test.sh [PRESET], default release; "asan" runs
# the tests under AddressSanitizer and UBSan, "tsan" those of what threads share.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
preset=${1:-release}

"$here/install_packages.sh"
cd "$here/.."
cmake --preset "$preset"
cmake --build --preset "$preset" --parallel "$(nproc)"
ctest --preset "$preset" --parallel "$(nproc)"
