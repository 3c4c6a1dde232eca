# Prints the ratio of the medians of each pair in targets.txt and whether it keeps its limit:
#
#     awk -f ratios.awk targets.txt report.json
#
# Exit status: 0, 1 when a limit is broken, 2 when the report lacks a benchmark.

function valueOf(line) {
  sub(/^[^:]*: */, "", line)
  gsub(/[",]/, "", line)
  return line
}

# Threads sleep while others run: the wall clock counts for them, the processor's time for the rest.
function store() {
  if (aggregate == "" || run == "") return
  time = run ~ /\/real_time/ ? realTime : cpuTime
  sub(/\/real_time.*/, "", run)
  times[run, aggregate] = time
}

FNR == NR {
  if ($0 !~ /^#/ && NF == 3) {
    ours[++pairs] = $1
    peer[pairs] = $2
    limit[pairs] = $3
  }
  next
}

/"name":/ { aggregate = run = "" }
/"run_name":/ { run = valueOf($0) }
/"aggregate_name":/ { aggregate = valueOf($0) }
/"real_time":/ { realTime = valueOf($0) }
/"cpu_time":/ { cpuTime = valueOf($0) }
/"time_unit":/ { unit[run] = valueOf($0); store() }
/"allocs":/ { if (aggregate == "median") allocations[run] = valueOf($0) }

function toNanoseconds(name) {
  return times[name, "median"] * (unit[name] == "us" ? 1000 : 1)
}

function spread(name) {
  return sprintf("%.0f%%", 100 * times[name, "cv"])
}

function allocationsOf(name) {
  return name in allocations ? sprintf("%.3g", allocations[name]) : "-"
}

END {
  row = "%-33s %-39s %12s %12s %7s %7s %-7s %9s %11s\n"
  printf row, "benchmark", "peer", "ns", "peer ns", "ratio", "limit", "", "spread", "allocs"
  for (i = 1; i <= pairs; ++i) {
    if (!((ours[i], "median") in times) || !((peer[i], "median") in times)) {
      printf "%-33s %-39s not in the report\n", ours[i], peer[i]
      isMissing = 1
      continue
    }
    ratio = toNanoseconds(ours[i]) / toNanoseconds(peer[i])
    verdict = limit[i] == "-" ? "" : ratio <= limit[i] ? "holds" : "MISSED"
    if (verdict == "MISSED") isBroken = 1
    printf row, ours[i], peer[i], sprintf("%.1f", toNanoseconds(ours[i])),
           sprintf("%.1f", toNanoseconds(peer[i])), sprintf("%.3f", ratio), limit[i], verdict,
           spread(ours[i]) "/" spread(peer[i]),
           allocationsOf(ours[i]) "/" allocationsOf(peer[i])
  }
  exit isMissing ? 2 : isBroken ? 1 : 0
}
