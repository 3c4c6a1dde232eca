#!/usr/bin/env bash
# Runs a session of the guide again, in a fresh directory, and compares the output:
#
#     replay.sh SESSION PROGRAM_FOLDER
#
# Each "$ COMMAND" is run in a directory with copies of the session's *.json and *.conf files. The
# lines after it are the expected output. "..." matches any text; a line of only "..." matches any
# lines. "[1]" is the expected exit status, by default 0. Lines such as "# [errors]" are marks for
# docs/guide/sync.sh.
set -euo pipefail

session=$(realpath "$1")
PATH=$(realpath "$2"):$PATH
work=$(mktemp -d)
printed=$work.printed
trap 'rm -rf "$work" "$printed"' EXIT
find "$(dirname "$session")" -maxdepth 1 \( -name '*.json' -o -name '*.conf' \) -exec cp {} "$work" \;
cd "$work"
ulimit -c 0

command='' expected=()

# Succeeds when the printed lines match the expected ones.
matches() {
  local at=0 any=no line pattern lines
  mapfile -t lines < <(tr -d '\r' <"$printed")
  for line in "${expected[@]}"; do
    if [ "$line" = ... ]; then any=yes && continue; fi
    pattern=$(sed 's/[][*?\\]/\\&/g; s/\.\.\./*/g' <<<"$line")
    # shellcheck disable=SC2053
    while [[ $any = yes && $at -lt ${#lines[@]} && ${lines[at]} != $pattern ]]; do ((++at)); done
    # shellcheck disable=SC2053
    [[ $at -lt ${#lines[@]} && ${lines[at]} == $pattern ]] || return 1
    ((++at))
    any=no
  done
  [ "$any" = yes ] || [ "$at" -eq ${#lines[@]} ]
}

runCommand() {
  [ -n "$command" ] || return 0
  local status=0
  { bash -c "$command" >"$printed" 2>&1 </dev/null || status=$?; } 2>/dev/null
  [ -z "$(tail -c 1 "$printed")" ] || echo >>"$printed"  # the last line lacks its line feed
  [ "$status" -eq 0 ] || echo "[$status]" >>"$printed"
  matches && return
  echo "\$ $command"
  printf '%s\n' "${expected[@]}" | diff -u --label expected --label printed - "$printed" || true
  exit 1
}

while IFS= read -r line; do
  case $line in
    '# ['*) ;;
    '$ '*)
      runCommand
      command=${line#\$ } expected=()
      ;;
    *) expected+=("$line") ;;
  esac
done <"$session"
runCommand
