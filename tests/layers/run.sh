#!/usr/bin/env bash
# Fails when a file includes a header of a layer that its own layer may not include. The table of the
# layers is the block "layers" of CONTRIBUTING.md.
#
#     run.sh SOURCE_TREE
set -euo pipefail
cd "$1"

find include src 3pp examples tools bench tests fuzz -name '*.h' -o -name '*.cpp' | sort |
  xargs grep -HoE '^[[:blank:]]*#[[:blank:]]*include[[:blank:]]*["<][^">]+\.[a-z]+[">]' |
  sed -E 's/^([^:]+):[^"<]*["<]([^">]+)[">]$/\1 \2/' |
  awk '
    # Reads "LAYER: PLACE... > LAYER..." lines.
    function readLayers(    line, parts, places, layers, i, count) {
      while ((getline line <"CONTRIBUTING.md") > 0) {
        if (line == "```") isTable = 0
        if (isTable) {
          split(line, parts, / *[:>] */)
          names[++layerCount] = parts[1]
          count = split(parts[2], places, " ")
          for (i = 1; i <= count; ++i) placeOf[places[i]] = parts[1]
          count = split(parts[3], layers, " ")
          allowed[parts[1], parts[1]] = 1
          for (i = 1; i <= count; ++i) allowed[parts[1], layers[i]] = 1
        }
        if (line == "```layers") isTable = 1
      }
    }
    # Returns the layer of the longest place that begins the path.
    function layerOf(path,    place, longest, layer) {
      for (place in placeOf) {
        if (index(path, place) == 1 && length(place) > longest) {
          longest = length(place)
          layer = placeOf[place]
        }
      }
      return layer
    }
    # Returns the path without "." and "..", so that it begins with its place.
    function normalized(path,    parts, count, kept, i, result) {
      count = split(path, parts, "/")
      for (i = 1; i <= count; ++i) {
        if (parts[i] == "." || parts[i] == "") continue
        if (parts[i] == ".." && kept > 0) --kept
        else parts[++kept] = parts[i]
      }
      for (i = 1; i <= kept; ++i) result = result (i > 1 ? "/" : "") parts[i]
      return result
    }
    # Returns the path of an included header in the tree, or nothing for one of another library.
    function find(from, header,    roots, count, i, path) {
      count = split("include/ 3pp/cppbind/include/ src/ examples/jobshop/ tests/ fuzz/ bench/", roots, " ")
      sub(/[^\/]*$/, "", from)
      if ((getline line <(from header)) >= 0) { close(from header); return normalized(from header) }
      for (i = 1; i <= count; ++i) {
        path = roots[i] header
        if ((getline line <path) >= 0) { close(path); return normalized(path) }
      }
      return ""
    }
    BEGIN { readLayers() }
    {
      target = find($1, $2)
      if (target == "") next
      from = layerOf($1)
      to = layerOf(target)
      ++arrows
      if (from == "" || to == "") {
        printf "%s or %s is in no layer of CONTRIBUTING.md\n", $1, target
        failed = 1
      } else if (!((from, to) in allowed)) {
        printf "%s (%s) may not include %s (%s)\n", $1, from, $2, to
        failed = 1
      }
    }
    END {
      if (layerCount == 0 || arrows == 0) { print "no layers or no includes found"; exit 1 }
      if (!failed) printf "%d includes in %d layers\n", arrows, layerCount
      exit failed
    }'
