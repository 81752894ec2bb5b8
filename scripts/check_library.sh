#!/bin/bash
# What libquillbrook.so gives and takes: it exports what include/ declares and nothing else, and it takes no
# memory but through its host. Usage: scripts/check_library.sh BUILD (without sanitizers).
set -euo pipefail
library=$1/libquillbrook.so
cd "$(dirname "$0")/.."
failed=0

# Functions and classes by name, and all that the headers declare of them by the names that linkers know, which hold the
# types. Constructors and destructors have several of those.
functions=$(sed '/^#define/d; s/class QUILLBROOK_API//' include/quillbrook/*.h | tr '\n' ' ' |
    grep -oE 'QUILLBROOK_API [^(;]*\(' | grep -oE '[A-Za-z_0-9]+\($' | tr -d '(' | sort -u)
classes=$(grep -ohE 'class QUILLBROOK_API [a-z_A-Z0-9]+' include/quillbrook/*.h | awk '{ print $3 }')
of_classes="(thunk to |for |-in-)($(echo "$classes" | paste -sd'|'))(::|\$)"
same_for_all() { sed -E 's/(C|D)[0-9](E|v)/\1x\2/' | sort -u; }

linked() {
    printf '#include "%s"\n' include/quillbrook/*.h |
        clang++-14 -std=c++20 -I. -Iinclude -fsyntax-only -x c++ - -Xclang -ast-dump=json -Xclang "-ast-dump-filter=$1" |
        grep -oE '"mangledName": "[^"]*"' | cut -d'"' -f4
}
declared=$(for name in $functions $classes; do linked "$name"; done | same_for_all)
declared_functions=$(for name in $functions; do linked "$name" | grep "^_Z${#name}$name"; done | same_for_all)
versions='^QUILLBROOK_[0-9]+$'
exported=$(nm -D --defined-only "$library" | awk '{ print $3 }' | sed 's/@.*//' | grep -vE "^_ZT|$versions" | same_for_all)
tables=$(nm -DC --defined-only "$library" | awk '{ $1 = ""; $2 = ""; print }' | sed 's/@.*//' | grep -E ' (thunk|vtable|typeinfo|VTT|construction|virtual|non-virtual) ' |
    grep -vE "$of_classes" || true)
extra=$(comm -13 <(echo "$declared") <(echo "$exported") | c++filt)
extra+=$tables
missing=$(comm -23 <(echo "$declared_functions") <(echo "$exported") | c++filt)
[ -z "$extra" ] || { echo "library: exports what no public header declares so:"; echo "$extra"; failed=1; }
[ -z "$missing" ] || { echo "library: declared, but not exported:"; echo "$missing"; failed=1; }

taken=$(nm -D --undefined-only "$library" | awk '{ print $2 }' | sed 's/@.*//' |
    grep -E '^(malloc|calloc|realloc|free|aligned_alloc|posix_memalign|_Zn[wa].*|_Zd[la].*|_ZNK?S[sa].*|_ZNK?St7__cxx1112basic_string.*)$' || true)
[ -z "$taken" ] || { echo "library: memory not from the host:"; echo "$taken" | c++filt; failed=1; }

# The services of a host may be gone behind main: nothing of the library is torn down then.
late=$(nm -D --undefined-only "$library" | awk '{ print $2 }' | sed 's/@.*//' |
    grep -E '^(__cxa_(atexit|at_quick_exit|thread_atexit(_impl)?)|at_quick_exit|atexit|on_exit)$' || true)
[ -z "$late" ] || { echo "library: has something run behind main:"; echo "$late"; failed=1; }

[ $failed -eq 0 ] && echo "library: exports and imports are as they should be"
exit $failed
