# Prints the medians of a report that targets.txt compares, and whether they keep their limits:
#
#     awk [-v isPart=1] [-v missedRows=FILE] -f ratios.awk targets.txt report.json
#
# The two benchmarks of each row that exceeds its limit are written to FILE.
#
# Exit status: 0; 1 when a limit is broken; 2 when a benchmark failed, or is missing
# from a report that is not just a part (isPart).

function valueOf(line) {
  sub(/^[^:]*: */, "", line)
  gsub(/[",]/, "", line)
  return line
}

# Threads sleep while others run: for them the wall-clock time counts, else the processor time.
function store() {
  if (aggregate == "" || run == "") return
  time = run ~ /\/real_time/ ? realTime : cpuTime
  sub(/\/(real_time|min_time:).*/, "", run)
  times[run, aggregate] = time
}

FNR == NR {
  if ($1 == "growth") {
    figures[++figureCount] = $0
  } else if ($0 !~ /^#/ && NF == 3) {
    ours[++pairs] = $1
    peer[pairs] = $2
    limit[pairs] = $3
  }
  next
}

/"error_occurred": true/ { hasFailed = 1 }
/"error_message":/ { print run ": " valueOf($0) }
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

function isMeasured(name) {
  return (name, "median") in times
}

# Returns the verdict on a value of two benchmarks and records it.
function judge(value, most, one, other) {
  ++measured
  if (most == "-") return ""
  if (value <= most) return "holds"
  isBroken = 1
  if (missedRows != "") print one, other >missedRows
  return "MISSED"
}

# Prints the exponent of n between two arguments of a benchmark.
function printGrowth(name, from, to, most,    fromName, toName, exponent) {
  fromName = name "/" from
  toName = name "/" to
  if (!isMeasured(fromName) || !isMeasured(toName)) return
  exponent = log(toNanoseconds(toName) / toNanoseconds(fromName)) / log(to / from)
  printf "%-38s %-39s %33.3f %7s %s\n", name, "exponent from " from " to " to, exponent, most,
         judge(exponent, most, fromName, toName)
}

END {
  row = "%-38s %-39s %12s %12s %7s %7s %-7s %9s %11s\n"
  printf row, "benchmark", "peer", "ns", "peer ns", "ratio", "limit", "", "spread", "allocs"
  for (i = 1; i <= pairs; ++i) {
    if (!isMeasured(ours[i]) || !isMeasured(peer[i])) continue
    ratio = toNanoseconds(ours[i]) / toNanoseconds(peer[i])
    printf row, ours[i], peer[i], sprintf("%.1f", toNanoseconds(ours[i])),
           sprintf("%.1f", toNanoseconds(peer[i])), sprintf("%.3f", ratio), limit[i],
           judge(ratio, limit[i], ours[i], peer[i]), spread(ours[i]) "/" spread(peer[i]),
           allocationsOf(ours[i]) "/" allocationsOf(peer[i])
  }
  for (i = 1; i <= figureCount; ++i) {
    split(figures[i], field)
    printGrowth(field[2], field[3], field[4], field[5])
  }
  missing = pairs + figureCount - measured
  if (missing > 0) print missing " lines not measured"
  exit hasFailed || (missing > 0 && !isPart) ? 2 : isBroken
}
