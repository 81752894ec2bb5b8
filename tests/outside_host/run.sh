#!/bin/bash
# Installs the build in $1 into a stage of its own and builds the outside programs against that with the compiler
# $2: once by find_package, once by pkg-config. All must make their lists.
set -euo pipefail
build=$1 compiler=$2
here=$(cd "$(dirname "$0")" && pwd)
stage=$build/stage
rm -rf "$stage"
mkdir -p "$stage/work/by-cmake" "$stage/work/by-pkg-config"
cmake --install "$build" --prefix "$stage/tree" >"$stage/work/install.log"

cmake -S "$here" -B "$stage/work/build" -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$stage/tree" >"$stage/work/cmake.log"
cmake --build "$stage/work/build" >>"$stage/work/cmake.log"

# Short names, wherever the checkout stands: the option that names a logging table holds 63 bytes.
cd "$stage/work"
for program in outside_host own_services; do
    "build/$program" by-cmake
done
"$stage/work/build/changes_host"

PKG_CONFIG_PATH=$(dirname "$(find "$stage/tree" -name quillbrook.pc)")
export PKG_CONFIG_PATH
# shellcheck disable=SC2046
for program in main own_services; do
    "$compiler" "$here/$program.cpp" -o "$stage/work/$program" \
        $(pkg-config --cflags --libs quillbrook-embedded) -Wl,-rpath,"$(pkg-config --variable=libdir quillbrook)"
    "./$program" by-pkg-config
done
# shellcheck disable=SC2046
"$compiler" -I"$here" "$here"/changes_host/*.cpp -o "$stage/work/changes_host" $(pkg-config --cflags --libs quillbrook) \
    -Wl,-rpath,"$(pkg-config --variable=libdir quillbrook)" -Wl,-z,lazy -Wl,--unresolved-symbols=ignore-in-shared-libs
"$stage/work/changes_host"

SOURCE_DATE_EPOCH=0 "$stage/tree/bin/quillbrook" --version
[ -s "$stage/tree/share/quillbrook/changes.schema.json" ] && [ -s "$stage/tree/share/doc/quillbrook/hosting.md" ]
echo "the outside programs made their lists both ways"
