#!/usr/bin/env bash
# Builds the Windows build and packs the kit a module programmer installs:
#   build/qviso32-<version>.zip        headers, DLLs, import libraries, .def,
#                                      CMake package, pkg-config file
#   build/qviso32-<version>-debug.zip  the debug information of qviso32.dll
# The version is the project's (CMakeLists.txt), read from the build.
set -eu
cd "$(dirname "$0")/.."
tools/install-deps.sh
tools/build.sh win >/dev/null
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' build/win/CMakeCache.txt)
name=qviso32-$version
stage=build/package
rm -rf "$stage" && mkdir -p "$stage"
cmake --install build/win --prefix "$stage/$name" --component Unspecified >/dev/null
cmake --install build/win --prefix "$stage/$name-debug" --component debug >/dev/null
for tree in "$name" "$name-debug"; do
  rm -f "build/$tree.zip"
  (cd "$stage" && cmake -E tar cf "../$tree.zip" --format=zip "$tree")
  echo "build/$tree.zip"
done
