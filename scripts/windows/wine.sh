#!/usr/bin/env bash
# Runs a Windows program under wine, without a display, in the Windows of a build directory.
#
#     wine.sh BUILD DEPENDENCIES PROGRAM [ARGUMENT...]
#     wine.sh BUILD DEPENDENCIES --console PROGRAM [ARGUMENT...]    with the caller's terminal
#     wine.sh BUILD DEPENDENCIES --start    starts its server, and installs it if it is missing
#     wine.sh BUILD DEPENDENCIES --stop     ends its programs and its server, and no others
set -euo pipefail

build=$(realpath -m "$1") dependencies=$(realpath -m "$2")
shift 2
wine=/usr/lib/wine/wine64
seconds=${WINE_SECONDS:-600}  # only a program that hangs meets this limit

# Prints folders as a Windows search path.
search_path() {
  local path=
  for folder in "$@"; do path+=${path:+;}Z:${folder//\//\\}; done
  echo "$path"
}

unset DISPLAY WAYLAND_DISPLAY
export WINEPREFIX=$build/wine WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe=' WINESERVER=/usr/lib/wine/wineserver64
export WINEPATH
WINEPATH=$(search_path "$build/src" "$build/src/host" "$build/examples/jobshop" "$dependencies/bin" "$dependencies/lib" \
  /usr/lib/gcc/x86_64-w64-mingw32/12-posix /usr/x86_64-w64-mingw32/lib)

case $1 in
  --start)
    if [ ! -f "$WINEPREFIX/system.reg" ]; then
      timeout 300 "$wine" wineboot --init < /dev/null || {
        timeout 60 "$WINESERVER" --kill || true  # else it would still write files
        rm -rf "$WINEPREFIX"
        echo "wine cannot be set up in $WINEPREFIX" >&2
        exit 1
      }
      timeout 60 "$WINESERVER" --wait || true  # it writes the registry at its end
    fi
    # Else the first program starts the server, under the limits of that program.
    timeout 60 "$WINESERVER" --persistent > /dev/null 2>&1 < /dev/null || true
    ;;
  --stop)
    timeout 60 "$WINESERVER" --kill || true
    ;;
  --console)
    exec "$wine" "${@:2}"  # timeout would pass on Ctrl+C a second time
    ;;
  *)
    # Output goes to files: the services of wine, which a program starts, would keep a pipe open.
    output=$(mktemp) errors=$(mktemp) status=0
    trap 'rm -f "$output" "$errors"' EXIT
    if [ /dev/fd/1 -ef /dev/fd/2 ]; then
      timeout --kill-after=10 "$seconds" "$wine" "$@" > "$output" 2>&1 < /dev/null || status=$?
    else
      timeout --kill-after=10 "$seconds" "$wine" "$@" > "$output" 2> "$errors" < /dev/null || status=$?
    fi
    cat "$output"
    cat "$errors" >&2
    exit "$status"
    ;;
esac
