#!/usr/bin/env bash
# Installs what building and testing the library needs on a Debian bookworm
# machine: the i686 mingw-w64 cross compilers, 32-bit Wine, Xvfb, CMake,
# GoogleTest's sources, native 32-bit compilers and clang's sanitizer and
# fuzzer runtimes, and llvm's dlltool and lld-link (the MSVC-format import
# library and the client test linked with it), the label font the gadgets
# ask for, and Python (the sample's screenshots become PNG files). Safe to
# run again: it does nothing when all is present.
set -eu

need=()
have() { dpkg-query -W -f='${Status}\n' "$1" 2>/dev/null | grep -q '^install ok installed'; }
for p in gcc-mingw-w64-i686 g++-mingw-w64-i686 binutils-mingw-w64-i686 wine wine32:i386 wine64 \
         xvfb xauth cmake googletest gcc-multilib g++-multilib clang libclang-rt-14-dev make \
         lld llvm fonts-wine python3; do
  have "$p" || need+=("$p")
done
[ ${#need[@]} -eq 0 ] && exit 0

if [ "$(id -u)" != 0 ]; then
  echo "install-deps: missing packages (${need[*]}); run as root to install them" >&2
  exit 1
fi

export DEBIAN_FRONTEND=noninteractive
if ! dpkg --print-foreign-architectures | grep -qx i386; then
  dpkg --add-architecture i386
fi
# The security index for i386 can trail the amd64 one, which leaves wine32's
# multiarch dependencies unsatisfiable; resolving both architectures from the
# main archive avoids that.
pin=/etc/apt/preferences.d/qviso32-security
if [ ! -f "$pin" ]; then
  printf 'Package: *\nPin: release l=Debian-Security\nPin-Priority: 90\n' > "$pin"
fi
apt-get update -q || true   # a lagging index makes update exit non-zero; the install below decides
apt-get install -y -q --no-install-recommends "${need[@]}"
