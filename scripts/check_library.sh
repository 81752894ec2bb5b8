#!/bin/bash
# What libquillbrook.so gives and takes: it exports what include/ declares and nothing else, and it takes no
# memory but through its host. Usage: scripts/check_library.sh BUILD (without sanitizers).
set -euo pipefail
library=$1/libquillbrook.so
cd "$(dirname "$0")/.."
failed=0

declared=$(sed '/^#define/d; s/class QUILLBROOK_API//' include/quillbrook/*.h | tr '\n' ' ' | grep -oE 'QUILLBROOK_API [^(;]*\(' | grep -oE '[A-Za-z_0-9]+\($' |
    tr -d '(' | sort -u)
classes=$(grep -ohE 'class QUILLBROOK_API [a-z_A-Z0-9]+' include/quillbrook/*.h | awk '{ print $3 }' | paste -sd'|')
of_classes="^(${classes:-none})::|(thunk to |for |-in-)(${classes:-none})(::|\$)"
exported=$(nm -DC --defined-only "$library" | awk '{ $1 = ""; $2 = ""; print }' | sed 's/^ *//; s/(.*//' |
    grep -vE "$of_classes" | sort -u)
extra=$(comm -13 <(echo "$declared") <(echo "$exported"))
missing=$(comm -23 <(echo "$declared") <(echo "$exported"))
[ -z "$extra" ] || { echo "library: exports what no public header declares:"; echo "$extra"; failed=1; }
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
