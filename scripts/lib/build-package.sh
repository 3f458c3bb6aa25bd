#!/usr/bin/env bash
# Configures a release build of Inkwarden without tests, builds it and makes its Debian packages with
# CPack, then prints the paths of the .deb files, one a line. Used by scripts/package.sh and by the
# package tests, which build into a folder of their own.
#
#   scripts/lib/build-package.sh SOURCE_DIR BUILD_DIR
set -euo pipefail
if [ "$#" -ne 2 ]; then
    echo "usage: $0 SOURCE_DIR BUILD_DIR" >&2
    exit 2
fi
source_dir=$(cd "$1" && pwd)
build_dir=$2
mkdir -p "$build_dir"
build_dir=$(cd "$build_dir" && pwd)

cmake -S "$source_dir" -B "$build_dir" -G Ninja \
    -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_CXX_COMPILER=g++ \
    -DINKWARDEN_WERROR=OFF \
    -DINKWARDEN_SANITIZE=OFF \
    -DINKWARDEN_BUILD_TESTS=OFF \
    -DINKWARDEN_BUILD_BENCHMARKS=OFF >&2
cmake --build "$build_dir" -j "${INKWARDEN_BUILD_JOBS:-2}" >&2

# Packages of an earlier version would otherwise be listed as if they were new.
rm -f "$build_dir"/*.deb
(cd "$build_dir" && cpack -G DEB --config CPackConfig.cmake >&2)
find "$build_dir" -maxdepth 1 -name '*.deb' | sort
