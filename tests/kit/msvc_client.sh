#!/usr/bin/env bash
# Builds msvc_client.c as an MSVC-toolchain user would (clang for the i686
# MSVC target, lld-link, the kit's qviso32.lib, kernel32 from mingw) and runs
# it under Wine beside the installed DLLs.
#   msvc_client.sh CLANG LLD_LINK SOURCE   (QV_KIT_PREFIX, QV_KIT_WORK set)
set -eu
tools=$(cd "$(dirname "$0")/../../tools" && pwd)
clang=$1 lld_link=$2 source=$3
work=$QV_KIT_WORK/msvc-client
rm -rf "$work" && mkdir -p "$work"
"$clang" --target=i686-pc-windows-msvc -ffreestanding -nostdlib -O1 -Wall -Wextra -Werror \
  -c "$source" -o "$work/client.obj"
# mingw's import libraries carry no safe exception handler tables.
"$lld_link" /nologo /subsystem:console /safeseh:no /entry:client_main /out:"$work/client.exe" \
  "$work/client.obj" "$QV_KIT_PREFIX/lib/qviso32.lib" /usr/i686-w64-mingw32/lib/libkernel32.a
cp "$QV_KIT_PREFIX"/bin/*.dll "$QV_KIT_PREFIX"/bin/*.DLL "$work/"
cd "$work"
exec "$tools/wine-run.sh" ./client.exe
