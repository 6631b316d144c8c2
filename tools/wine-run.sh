#!/usr/bin/env bash
# Runs a Windows test program under Wine in the test run's prefix (the
# emulator ctest puts in front of every Windows test).
set -eu
here=$(cd "$(dirname "$0")" && pwd)
: "${QV_WINEPREFIX:?names the Wine prefix of the test run}"
export WINEPREFIX=$QV_WINEPREFIX
export WINEDEBUG=${WINEDEBUG:--all}
export WINEARCH=win32
export WINEDLLOVERRIDES=${WINEDLLOVERRIDES:-"mscoree,mshtml="}
exec wine "$@"
