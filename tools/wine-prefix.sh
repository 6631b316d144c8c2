#!/usr/bin/env bash
# Prepares a fresh Wine prefix for one test run and leaves a persistent
# wineserver running for it, so each test program starts in milliseconds.
#   wine-prefix.sh start PREFIX   (re)create PREFIX, start its server
#   wine-prefix.sh resume PREFIX  start the server of an existing PREFIX
#   wine-prefix.sh stop PREFIX    stop its server
# Everything Wine starts here writes to PREFIX.log, never to our stdout:
# lingering Wine service processes would otherwise hold a caller's pipe open.
set -eu
action=$1
export WINEPREFIX=$(realpath -m "$2")
export WINEDEBUG=-all
export WINEARCH=win32
# No Mono or Gecko: nothing here needs them, and asking for them hangs.
export WINEDLLOVERRIDES="mscoree,mshtml="
log="$WINEPREFIX.log"

case "$action" in
start)
  wineserver -k >/dev/null 2>&1 || true
  rm -rf "$WINEPREFIX"
  {
    wineboot -i
    # The null display driver: windows, dialogs and message boxes work with no X server.
    wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f
    wineserver -w
    wineserver -p
    wine wineboot
  } >"$log" 2>&1 </dev/null
  sleep 2
  ;;
resume)
  { wineserver -p; wine wineboot; } >>"$log" 2>&1 </dev/null
  sleep 1
  ;;
stop)
  wineserver -k >/dev/null 2>&1 || true
  ;;
*)
  echo "usage: $0 start|resume|stop PREFIX" >&2
  exit 2
  ;;
esac
