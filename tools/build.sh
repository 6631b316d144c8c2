#!/usr/bin/env bash
# Configures and builds one of the two builds: `build.sh win` (the DLL, the
# resource library, the sample program and the Windows tests, in build/win)
# or `build.sh native` (the engines under sanitizers, in build/native).
set -eu
cd "$(dirname "$0")/.."
jobs=${QV_JOBS:-2}
case "$1" in
win)
  [ -f build/win/CMakeCache.txt ] ||
    cmake -S . -B build/win -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-i686.cmake >/dev/null
  cmake --build build/win -j"$jobs" ${2:+--target "$2"}
  ;;
native)
  [ -f build/native/CMakeCache.txt ] || CC=clang CXX=clang++ cmake -S . -B build/native >/dev/null
  cmake --build build/native -j"$jobs" ${2:+--target "$2"}
  ;;
*)
  echo "usage: $0 win|native [target]" >&2
  exit 2
  ;;
esac
