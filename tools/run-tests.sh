#!/usr/bin/env bash
# Installs what is missing, builds both builds and runs every test: the
# native engines under AddressSanitizer and UBSan (fuzz regressions
# included), then the real DLL under Wine.  Exits non-zero if any test fails.
set -eu
cd "$(dirname "$0")/.."
tools/install-deps.sh
tools/build.sh native
tools/build.sh win
status=0
echo "== native tests (32-bit, AddressSanitizer + UBSan)"
(cd build/native && ctest --output-on-failure) || status=1
echo "== Windows tests (qviso32.dll under Wine)"
(cd build/win && ctest --output-on-failure) || status=1
exit $status
