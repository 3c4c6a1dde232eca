#!/usr/bin/env bash
# Types a session of the guide again, in a fresh directory, and compares what it shows:
#
#     replay.sh SESSION PROGRAM_FOLDER
#
# "$ COMMAND" is run, with the files beside the session at hand. The lines behind it are what it
# prints: "..." stands for anything, on a line of its own for any lines. "[1]" is its exit status, 0
# unless it is there. Lines such as "# [errors]" are the guide's.
set -euo pipefail

session=$(realpath "$1")
PATH=$(realpath "$2"):$PATH
work=$(mktemp -d)
printed=$work.printed
trap 'rm -rf "$work" "$printed"' EXIT
find "$(dirname "$session")" -maxdepth 1 \( -name '*.json' -o -name '*.conf' \) -exec cp {} "$work" \;
cd "$work"
ulimit -c 0

command='' wanted=()

# Whether what was printed is what was wanted.
matches() {
  local at=0 any=no line pattern lines
  mapfile -t lines <"$printed"
  for line in "${wanted[@]}"; do
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
  [ -z "$(tail -c 1 "$printed")" ] || echo >>"$printed"  # a last line without its end
  [ "$status" -eq 0 ] || echo "[$status]" >>"$printed"
  matches && return
  echo "\$ $command"
  printf '%s\n' "${wanted[@]}" | diff -u --label wanted --label printed - "$printed" || true
  exit 1
}

while IFS= read -r line; do
  case $line in
    '# ['*) ;;
    '$ '*)
      runCommand
      command=${line#\$ } wanted=()
      ;;
    *) wanted+=("$line") ;;
  esac
done <"$session"
runCommand
