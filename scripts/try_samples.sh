#!/bin/bash
# Feeds every file of a folder to the command, as an edit and as a log, and tells what must not come of any file:
# crashes, reports of sanitizers, runs that take too long, exit statuses other than 0 and 1, refusals that don't name
# their file. Usage: scripts/try_samples.sh FOLDER [COMMAND]. Ends in status 1 when anything was told.
set -uo pipefail
[ $# -ge 1 ] && [ -d "$1" ] || { echo "usage: scripts/try_samples.sh FOLDER [COMMAND]" >&2; exit 2; }
folder=$(realpath "$1")
cd "$(dirname "$0")/.."
command=$(realpath "${2:-build/release/quillbrook}")
[ -x "$command" ] || { echo "try_samples: no command $command; build it first" >&2; exit 2; }
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
export UBSAN_OPTIONS=print_stacktrace=1
tried=0 refused=0 bad=0

complain() { # what is wrong
    bad=$((bad + 1))
    echo "$file: $1 ($words)"
    tail -n 12 "$place/err" | sed 's/^/    /'
}

try() { # the words of the command; the file stands behind them
    words=$*
    tried=$((tried + 1))
    (cd "$place" && ulimit -c 0 && exec timeout -k 5 60 "$command" "$@") >"$place/out" 2>"$place/err"
    local status=$?
    [ $status -eq 1 ] && refused=$((refused + 1))
    if grep -qE 'AddressSanitizer|LeakSanitizer|runtime error:' "$place/err"; then
        complain "a sanitizer reports"
    elif [ $status -eq 124 ] || [ $status -eq 137 ]; then
        complain "takes over a minute"
    elif [ $status -ge 128 ]; then
        complain "crashes with signal $((status - 128))"
    elif [ $status -gt 1 ]; then
        complain "ends in status $status"
    elif [ $status -eq 1 ] && ! grep -qF "$(basename "$file")" "$place/err" "$place/out"; then
        complain "is refused without its name"
    fi
}

while IFS= read -r -d '' file; do
    for rate in 24 25 29.97; do
        try edit show "$file" --rate "$rate"
        try cutlist "$file" --rate "$rate" -o "$place/list.txt" --overwrite --quiet
    done
    try edit show "$file"
    try log show "$file" --rate 25
    try log check "$file"
done < <(find "$folder" -type f -print0)

echo "$tried runs, $refused refused their file, $bad went wrong"
[ $bad -eq 0 ]
