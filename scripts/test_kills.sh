#!/usr/bin/env bash
# Kills runs of a host at random moments, 500 or as many as the argument says, and checks the
# records that they leave. The tests do so 20 times.
#
#     test_kills.sh [TIMES]
set -euo pipefail
cd "$(dirname "$0")/.."
if [ $# -gt 1 ] || ! [[ ${1:-500} =~ ^[0-9]+$ ]]; then
  echo "usage: $0 [TIMES]" >&2
  exit 2
fi
scripts/install_packages.sh
cmake --preset release >/dev/null
cmake --build --preset release --target varrow_host_tests
HOST_KILLS=${1:-500} build/release/tests/host/varrow_host_tests \
  --gtest_filter='HostProcess.AKill*'
