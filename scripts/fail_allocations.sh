#!/bin/bash
# Runs each command on small files, once for each of its allocations, with that one failing, and again with all from
# that one on. A run ends by itself: well, or with status 1 and one line that says why; every output stands whole or not
# at all, and nothing else stays. Usage: scripts/fail_allocations.sh BUILD [STRIDE]; prints counts, fails on any breach.
set -uo pipefail
build=$(realpath "$1") stride=${2:-1}
cd "$(dirname "$0")/.."
tool=$build/quillbrook
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
${CXX:-g++-12} -std=c++20 -O1 -fPIC -shared -o "$work/failing.so" scripts/failing_malloc.cpp || exit 1
export SOURCE_DATE_EPOCH=0 TZ=UTC LC_ALL=C TMPDIR=$work/tmp
in=$work/in out=$work/out whole=$work/whole
mkdir -p "$TMPDIR" "$in" "$out"

cp examples/reel/reel.otio examples/edl/ferryman.edl examples/edl/days.ale examples/edl/night.flx "$in"
"$tool" cutlist examples/recut/weir-old-r1.otio -o "$in/old.txt" --quiet &&
    "$tool" cutlist examples/recut/weir-new-r1.otio -o "$in/new.txt" --quiet &&
    "$tool" log import "$in/days.ale" -o "$in/days.RDB" --quiet || exit 1

commands=(
    "cutlist $in/reel.otio -o $out/a.txt --single-layer 1,2,3,4"
    "cutlist $in/ferryman.edl --rate 25 --log $in/days.RDB -o $out/b.txt --neg-cut"
    "print $in/old.cdb -o $out/c.txt"
    "changelist --old $in/old.cdb --new $in/new.cdb -o $out/d.txt --json $out/d.json --prove --lists summary,changes,bench"
    "edit show $in/reel.otio"
    "log import $in/days.ale -o $out/e.RDB"
    "log merge $in/days.RDB $in/days.RDB -o $out/f.RDB"
    "log show $in/days.ale"
    "log check $in/days.ale $in/night.flx"
    "cutlist"
)

breaches=0 runs=0 failed=0
breach() { # what, command, environment
    breaches=$((breaches + 1))
    [ $breaches -gt 20 ] || { echo "breach: $1: quillbrook $2 [$3]"; head -3 "$work/err"; }
}

try() { # command, number, "" or 1 for all from there on
    rm -f "$out"/* "$work/err"
    local setting="FAIL_ALLOCATION=$2 FAIL_ALL_BEHIND=$3" status=0 file
    env LD_PRELOAD="$work/failing.so" FAIL_ALLOCATION="$2" FAIL_ALL_BEHIND="$3" timeout 60 "$tool" $1 \
        >/dev/null 2>"$work/err" || status=$?
    runs=$((runs + 1))
    if [ $status -ge 124 ]; then breach "status $status" "$1" "$setting"; fi
    if [ $status -ne "$good" ]; then
        failed=$((failed + 1))
        [ $status -eq 1 ] || [ $status -eq 127 ] || breach "status $status" "$1" "$setting"
        [ -s "$work/err" ] || breach "nothing said" "$1" "$setting"
    fi
    for file in "$out"/* "$out"/.[!.]*; do
        [ -e "$file" ] || continue
        cmp -s "$file" "$whole/$(basename "$file")" || breach "$(basename "$file") isn't whole" "$1" "$setting"
    done
    if [ -n "$(ls -A "$TMPDIR")" ]; then
        breach "$(ls -A "$TMPDIR") stays" "$1" "$setting"
        rm -rf "${TMPDIR:?}"/*
    fi
}

for command in "${commands[@]}"; do
    rm -rf "$out"/* "$whole"
    good=0
    LD_PRELOAD="$work/failing.so" COUNT_ALLOCATIONS="$work/count" "$tool" $command >/dev/null 2>&1 || good=$?
    cp -a "$out" "$whole"
    count=$(cat "$work/count")
    before=$runs
    for ((n = 1; n <= count; n += stride)); do
        try "$command" $n ""
        try "$command" $n 1
    done
    echo "$((runs - before)) runs of \"${command%% *}\", $count allocations"
done
echo "$runs runs, $failed of them failed, $breaches breaches"
[ $breaches -eq 0 ]
