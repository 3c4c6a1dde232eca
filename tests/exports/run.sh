#!/usr/bin/env bash
# Fails when a library exports a name that no public header declares, or when the core of Linux can be
# unloaded while its signal handlers are installed: run.sh LIBRARY HEADERS...
set -euo pipefail

library=$1
if [[ $library == *.dll ]]; then
  symbols=$(objdump --private-headers "$library" |
    sed -n '/^\[Ordinal.Name Pointer\] Table/,/^$/s/^\t\[.*\] //p' | c++filt)
else
  [[ $library == *-host.* ]] || readelf --dynamic --wide "$library" | grep 'FLAGS_1.* NODELETE' >/dev/null || {
    echo "$library can be unloaded" >&2
    exit 1
  }
  symbols=$(nm --dynamic --defined-only --demangle "$library" | cut -d' ' -f3-)
fi

# Without parameters, template arguments, and the result type of function templates.
names=$(sed -E ':a; s/<[^<>]*>//; ta; s/operator.*/operator/; s/\(.*//; s/\[abi:[a-z0-9]*\]//' \
  <<<"$symbols" | sed -E 's/^construction vtable for .*-in-//
    s/^(vtable|VTT|typeinfo|typeinfo name|guard variable) for //
    s/^(non-virtual|virtual) thunk to //; s/.* //' | sort -u)

foreign=$(grep -Ev '^(libvarrow|cppbind|utility)::' <<<"$names" |
  grep -Evx '(InitRootLogger|registerLogInitedHandler|unRegisterLogInitedHandler|boost::assertion_failed(_msg)?)' || true)
if [ -n "$foreign" ]; then
  printf 'Exported names outside the namespaces of the library:\n%s\n' "$foreign" >&2
  exit 1
fi

declared=$(grep -rohE '\w+' "${@:2}" | sort -u)
private=$(grep -oE '^(libvarrow|cppbind|utility)::\w+' <<<"$names" | sort -u | while read -r name; do
  grep -qx "${name##*::}" <<<"$declared" || echo "$name"
done)
if [ -n "$private" ]; then
  printf 'Exported names that no public header declares:\n%s\n' "$private" >&2
  exit 1
fi
echo "$(wc -l <<<"$symbols") symbols"
