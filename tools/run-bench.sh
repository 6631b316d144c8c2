#!/usr/bin/env bash
# Builds and runs every benchmark: the native ones directly, the Windows ones
# under Wine in their own prefix.  `run-bench.sh NAME` runs only that one.
set -eu
cd "$(dirname "$0")/.."
tools/install-deps.sh
tools/build.sh native >/dev/null
tools/build.sh win >/dev/null
only=${1:-}
for exe in build/native/bench/*_bench; do
  [ -x "$exe" ] || continue
  [ -z "$only" ] || [ "$(basename "$exe")" = "$only" ] || continue
  echo "== $(basename "$exe") (native)"
  "$exe"
done
prefix=build/win/benchprefix
[ -d "$prefix" ] && tools/wine-prefix.sh resume "$prefix" || tools/wine-prefix.sh start "$prefix"
for exe in build/win/bin/*_bench.exe; do
  [ -f "$exe" ] || continue
  name=$(basename "$exe" .exe)
  [ -z "$only" ] || [ "$name" = "$only" ] || continue
  echo "== $name (Windows, under Wine)"
  (cd build/win/bin && QV_WINEPREFIX=$(realpath ../benchprefix) ../../../tools/wine-run.sh "$name.exe")
done
tools/wine-prefix.sh stop "$prefix"
