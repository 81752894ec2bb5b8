#!/bin/bash
# Installs the build in $1 into a stage of its own and builds the outside program against that with the compiler
# $2: once by find_package, once by pkg-config. Both must make their lists.
set -euo pipefail
build=$1 compiler=$2
here=$(cd "$(dirname "$0")" && pwd)
stage=$build/stage
rm -rf "$stage"
mkdir -p "$stage/work/by-cmake" "$stage/work/by-pkg-config"
cmake --install "$build" --prefix "$stage/tree" >"$stage/work/install.log"

cmake -S "$here" -B "$stage/work/build" -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$stage/tree" >"$stage/work/cmake.log"
cmake --build "$stage/work/build" >>"$stage/work/cmake.log"
"$stage/work/build/outside_host" "$stage/work/by-cmake"

PKG_CONFIG_PATH=$(dirname "$(find "$stage/tree" -name quillbrook.pc)")
export PKG_CONFIG_PATH
# shellcheck disable=SC2046
"$compiler" -std=c++20 "$here/main.cpp" -o "$stage/work/outside_host" \
    $(pkg-config --cflags --libs quillbrook-embedded) -Wl,-rpath,"$(pkg-config --variable=libdir quillbrook)"
"$stage/work/outside_host" "$stage/work/by-pkg-config"

SOURCE_DATE_EPOCH=0 "$stage/tree/bin/quillbrook" --version
echo "the outside program made its lists both ways"
