#!/usr/bin/env bash
# Fails unless the check of the layers refuses an include of a higher layer in every form.
set -euo pipefail

check=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)/run.sh
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
mkdir -p "$tree"/{include/libvarrow,3pp,examples,tools,bench,tests,fuzz,src/base,src/log}
printf '%s\n' '```layers' 'base: src/base' 'log: src/log include/libvarrow > base' '```' \
  >"$tree/CONTRIBUTING.md"
touch "$tree/src/base/low.h" "$tree/include/libvarrow/log.h"
echo '#include "base/low.h"' >"$tree/src/log/high.h"
"$check" "$tree"

for include in '#include "log/high.h"' '#include "../log/high.h"' '#include "base/../log/high.h"' \
  '#include <libvarrow/log.h>' '  #  include "log/high.h"'; do
  echo "$include" >"$tree/src/base/low.h"
  printed=$("$check" "$tree") && { echo "accepted: $include" >&2; exit 1; }
  grep -q '^src/base/low.h (base) may not include ' <<<"$printed"
done
