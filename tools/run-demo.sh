#!/usr/bin/env bash
# Installs what is missing, builds the library and runs the sample program
# under Wine (headless: Wine's null display driver).  Arguments are passed on
# to the sample program.  The windows it shows are saved as PNG files in
# build/win/screenshots/.
set -eu
cd "$(dirname "$0")/.."
tools/install-deps.sh
tools/build.sh win qvdemo >/dev/null
tools/build.sh win xq1c30en >/dev/null
prefix=build/win/demoprefix
if [ ! -d "$prefix" ]; then
  tools/wine-prefix.sh start "$prefix"
else
  tools/wine-prefix.sh resume "$prefix"
fi
cd build/win/bin
status=0
rm -rf screenshots
QV_WINEPREFIX=$(realpath ../demoprefix) ../../../tools/wine-run.sh qvdemo.exe "$@" || status=$?
../../../tools/wine-prefix.sh stop ../demoprefix
mkdir -p ../screenshots
for shot in screenshots/*.bmp; do
  [ -e "$shot" ] || continue
  png=../screenshots/$(basename "$shot" .bmp).png
  python3 ../../../tools/bmp2png.py "$shot" "$png" && echo "screenshot: build/win/screenshots/${png##*/}"
done
exit $status
