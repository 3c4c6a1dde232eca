#!/usr/bin/env bash
# Copies the sources of the guide's examples into its code blocks:
#
#     docs/guide/sync.sh [--check]
#
# The line before a block names its source, such as <!-- examples/guide/time/main.cpp: shift -->. The
# block becomes the lines between the comments "[shift]" and "[/shift]" of that file, of all such
# regions, or the whole file when no region is named. --check changes no file; it fails when a block
# differs from its source or names none.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

synced() {
  awk '
    function complain(text) {
      printf "%s:%d: %s\n", FILENAME, FNR, text >"/dev/stderr"
      failed = 1
    }
    # Prints a region of a file without the indentation that all its lines share.
    function copy(file, region,    line, name, inside, lines, count, indent, common, got, i) {
      common = -1
      inside = region == ""
      while ((got = (getline line <file)) > 0) {
        if (line ~ /^ *(\/\/|#) \[\/?[a-z-]+\]$/) {
          name = substr(line, index(line, "[") + 1)
          if (name == region "]" && count) lines[++count] = ""
          if (name == region "]" || name == "/" region "]") inside = name !~ /^\//
        } else if (inside) {
          lines[++count] = line
          indent = match(line, /[^ ]/) - 1
          if (indent >= 0 && (common < 0 || indent < common)) common = indent
        }
      }
      close(file)
      if (got < 0 || !count) complain("not found: " file (region == "" ? "" : ": " region))
      for (i = 1; i <= count; ++i) print substr(lines[i], common + 1)
    }
    inBlock { if ($0 !~ /^```/) next; inBlock = 0; source = ""; print; next }
    /^ *(```|~~~)/ {
      if (source == "") complain("this block names no source")
      print
      part = index(source, ": ")
      if (part) copy(substr(source, 1, part - 1), substr(source, part + 2))
      else copy(source, "")
      inBlock = 1
      next
    }
    source != "" { complain("no block follows the name of this source"); source = "" }
    /^<!-- .* -->$/ { source = substr($0, 6, length($0) - 9) }
    { print }
    END { if (inBlock || source != "") complain("the last block does not end"); exit failed }
  ' "$1"
}

text=$(mktemp)
trap 'rm -f "$text"' EXIT
status=0
for chapter in docs/guide/*.md; do
  if ! synced "$chapter" >"$text"; then
    status=1
  elif [ "${1:-}" = --check ]; then
    diff -u "$chapter" "$text" || status=1
  elif ! cmp -s "$chapter" "$text"; then
    cat "$text" >"$chapter"
    echo "$chapter"
  fi
done
exit $status
