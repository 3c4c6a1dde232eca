#!/usr/bin/env bash
# Builds everything and runs all tests. Usage: scripts/test.sh [PRESET], default release; "asan"
# runs them under AddressSanitizer and UBSan, "tsan" the multi-threaded ones under ThreadSanitizer.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
preset=${1:-release}

"$here/install_packages.sh"
cd "$here/.."
cmake --preset "$preset"
cmake --build --preset "$preset" --parallel "$(nproc)"
ctest --preset "$preset" --parallel "$(nproc)"
