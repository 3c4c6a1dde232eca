#!/usr/bin/env bash
# Writes the reference of the public headers as HTML; fails when a public name is undocumented.
set -euo pipefail

if [ $# -ne 0 ]; then
  echo "usage: scripts/reference.sh" >&2
  exit 2
fi
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install_packages.sh reference
cmake --preset release
cmake --build --preset release --target reference
echo "Reference: build/release/reference/html/index.html"
