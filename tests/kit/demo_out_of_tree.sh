#!/usr/bin/env bash
# Configures demo/ as a project of its own against the installed kit
# (find_package(qviso32)), builds it and runs it under Wine from its own
# build folder, where the package's runtime DLLs were copied.
#   demo_out_of_tree.sh SOURCE TOOLCHAIN   (QV_KIT_PREFIX, QV_KIT_WORK set)
set -eu
tools=$1/tools
work=$QV_KIT_WORK/demo
rm -rf "$work"
cmake -S "$1/demo" -B "$work" -DCMAKE_TOOLCHAIN_FILE="$2" -DCMAKE_PREFIX_PATH="$QV_KIT_PREFIX" >/dev/null
cmake --build "$work" >/dev/null
cd "$work"
for dll in qviso32.dll XQ1C30EN.DLL; do
  cmp -s "$dll" "$QV_KIT_PREFIX/bin/$dll" || { echo "$dll not copied from the kit" >&2; exit 1; }
done
out=$("$tools/wine-run.sh" ./qvdemo.exe "25 Dec 99 14:00" </dev/null)
echo "$out"
grep -q "application name" <<<"$out"
grep -q "zodiac" <<<"$out"
grep -q "error text without a box: The file .*missing.cal could not be found" <<<"$out"
