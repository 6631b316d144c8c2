#!/usr/bin/env bash
# Builds and runs every benchmark: the native ones directly, the Windows ones
# under Wine in their own prefix.  `run-bench.sh NAME` runs only that one.
#
# `run-bench.sh --check` is the guard against slowdowns: it runs the Windows
# benchmarks that print a ratio per row (qviso32's time over its anchor's,
# measured in the same run) and compares each row with the figure committed
# between the bench-check markers of docs/performance.md.  A row fails when
# its ratio is more than 1.5 times the committed one; rows committed below
# 0.25 (far ahead of their anchor, where a few milliseconds of noise move the
# ratio a lot) fail only above 0.375.  Exits 1 when a row fails.  Ratios, not
# times: the machines are shared.  Timings are noisy, so CI does not run it;
# run it before committing a change to a benchmarked engine.
set -eu
cd "$(dirname "$0")/.."
check=false
if [ "${1:-}" = --check ]; then
  check=true
  shift
fi
tools/install-deps.sh
tools/build.sh native >/dev/null
tools/build.sh win >/dev/null
only=${1:-}
if $check; then
  only=
  benches="format_sort_bench datetime_bench"
else
  benches=
  for exe in build/native/bench/*_bench; do
    [ -x "$exe" ] || continue
    [ -z "$only" ] || [ "$(basename "$exe")" = "$only" ] || continue
    echo "== $(basename "$exe") (native)"
    "$exe"
  done
  for exe in build/win/bin/*_bench.exe; do
    [ -f "$exe" ] || continue
    name=$(basename "$exe" .exe)
    [ -z "$only" ] || [ "$name" = "$only" ] || continue
    benches="$benches $name"
  done
fi
prefix=build/win/benchprefix
[ -d "$prefix" ] && tools/wine-prefix.sh resume "$prefix" || tools/wine-prefix.sh start "$prefix"
output=$(mktemp)
trap 'rm -f "$output"' EXIT
for name in $benches; do
  echo "== $name (Windows, under Wine)"
  (cd build/win/bin && QV_WINEPREFIX=$(realpath ../benchprefix) ../../../tools/wine-run.sh "$name.exe") | tee -a "$output"
done
tools/wine-prefix.sh stop "$prefix"
$check || exit 0

echo "== check against docs/performance.md"
# Table rows: the first cell names the row (it may hold "|" itself, but
# cells are parted by " | "), the last cell is its ratio.
awk '
  function trim(s) { gsub(/^[ \t]+|[ \t]+$/, "", s); return s }
  function ratio(line,   n, f) { n = split(line, f, "|"); return trim(f[n - 1]) }
  function name(line) { line = substr(line, 3); return trim(substr(line, 1, index(line, " | "))) }
  FNR == NR {
    if ($0 ~ /<!-- bench-check begin -->/) inside = 1
    else if ($0 ~ /<!-- bench-check end -->/) inside = 0
    else if (inside && $0 ~ /^\| / && ratio($0) ~ /^[0-9.]+$/) committed[name($0)] = ratio($0)
    next
  }
  $0 ~ /^\| / && (name($0) in committed) && ratio($0) ~ /^[0-9.]+$/ {
    label = name($0); was = committed[label] + 0; now = ratio($0) + 0
    limit = 1.5 * (was < 0.25 ? 0.25 : was)
    verdict = now > limit ? "WORSE" : "ok"
    printf "%-6s %-46s committed %6.2f  now %6.2f\n", verdict, label, was, now
    seen++
    if (now > limit) bad++
  }
  END {
    if (!seen) { print "no benchmarked row matched a committed figure"; exit 1 }
    printf "%d rows compared, %d more than 1.5 times worse\n", seen, bad
    exit bad ? 1 : 0
  }
' docs/performance.md "$output"
