#!/usr/bin/env bash
# Ends runs of a host by signals at random moments, 200 or as many as the argument says, and checks
# the files that they leave. The tests do so 20 times.
#
#     test_signals.sh [TIMES]
set -euo pipefail
cd "$(dirname "$0")/.."
if [ $# -gt 1 ] || ! [[ ${1:-200} =~ ^[0-9]+$ ]]; then
  echo "usage: $0 [TIMES]" >&2
  exit 2
fi
scripts/install_packages.sh
cmake --preset release >/dev/null
cmake --build --preset release --target varrow_host_tests
HOST_SIGNALS=${1:-200} build/release/tests/host/varrow_host_tests \
  --gtest_filter='HostProcess.ASignal*'
