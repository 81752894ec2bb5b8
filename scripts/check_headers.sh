#!/bin/bash
# Each header that is installed compiles alone, with both compilers, and without exceptions. No two headers of the film
# library give one name to two types: the linker takes one of them for both, and only a sanitizer notices.
set -euo pipefail
cd "$(dirname "$0")/.."
headers=$(ls include/quillbrook/*.h host/*.h embedded/{edit_builder,fraction,rates,services,warning}.h documents/document.h formats/edit_reading.h formats/otio/otio_reader.h)

alone() {
    echo "#include \"$2\"" | "$1" -std=c++20 $3 -fsyntax-only -Wall -Wextra -Wconversion -Wshadow -Werror -I. -Iinclude \
        -x c++ - || { echo "headers: $2 doesn't compile alone with $1 $3"; exit 1; }
}
export -f alone
for compiler in g++-12 clang++-14; do
    for flag in -fexceptions -fno-exceptions; do
        echo "$headers" | xargs -P "$(nproc)" -I{} bash -c "alone $compiler {} $flag"
    done
done
echo "headers: all compile alone"

doubled=$(grep -hoE '^(template <.*> )?(struct|class|union) (QUILLBROOK_API )?[A-Za-z_0-9]+ *(final *)?[:{]' \
    $(git ls-files -co --exclude-standard -- {include,host,base,cutlist,reports,changelist,logging}/'*.h') | sed -E 's/ *(final *)?[:{]$//; s/.* //' |
    sort | uniq -d)
[ -z "$doubled" ] || { echo "headers: names that two types have:"; echo "$doubled"; exit 1; }
echo "headers: each type has a name of its own"
