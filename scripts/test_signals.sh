#!/usr/bin/env bash
# Ends runs of a host by signals at random moments, and kills others, and checks the files that they
# leave. The tests do so 20 times each.
#
#     test_signals.sh [SIGNALS [KILLS]]     default: 200 and 500
set -euo pipefail
cd "$(dirname "$0")/.."
if [ $# -gt 2 ] || ! [[ ${1:-200} =~ ^[0-9]+$ && ${2:-500} =~ ^[0-9]+$ ]]; then
  echo "usage: $0 [SIGNALS [KILLS]]" >&2
  exit 2
fi
scripts/install_packages.sh
cmake --preset release >/dev/null
cmake --build --preset release --target varrow_host_tests
HOST_SIGNALS=${1:-200} HOST_KILLS=${2:-500} build/release/tests/host/varrow_host_tests \
  --gtest_filter='HostProcess.ASignal*:HostProcess.AKill*'
