#!/usr/bin/env bash
# Opens the pages of runs in a headless Chromium (290 MB) and tests their text, speed, size, contrast
# and keyboard: of the job shop, of a run with hostile texts, of one that was killed, and of one with
# 10,000 steps and 100,000 statistics. Screenshots are in build/pages. Usage: scripts/test_page.sh
set -euo pipefail
cd "$(dirname "$0")/.."
if [ $# -ne 0 ]; then
  echo "usage: $0" >&2
  exit 2
fi
scripts/install_packages.sh
scripts/install_packages.sh page
cmake --preset release >/dev/null
cmake --build --preset release --target jobshop jobshop_gantt --parallel "$(nproc)"

jobshop=build/release/examples/jobshop/jobshop
out=build/pages
rm -rf "$out"
mkdir -p "$out"
for name in pipeline pipeline_improve pipeline_late; do
  status=0
  "$jobshop" run "examples/jobshop/$name.json" --out "$out/$name" >/dev/null 2>&1 || status=$?
  [ "$status" -eq 0 ] || [ "$status" -eq 3 ]  # the last one breaks rules
done
python3 -B scripts/page/test_page.py "$jobshop" "$out" "$out"/pipeline*
