#!/bin/bash
# Fuzzes one target after the other, each for so many minutes on a copy of its inputs, in memory, and tells what came of it:
# seconds, those of the processor, runs, code reached at first and at last, new inputs that reach more, findings. These lie in build/fuzz/campaign/TARGET: new/ holds
# inputs below 4 kB, as few as reach what was reached, for fuzz/corpus; found/ what crashed, hung or ate memory.
# Usage: scripts/fuzz_campaign.sh [MINUTES] [TARGET...], by default 20 minutes for each target. Needs a build of the
# "fuzz" preset. Ends in status 1 when anything was found.
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/fuzz/fuzz
minutes=20
case "${1:-}" in [0-9]*) minutes=$1; shift ;; esac
if [ $# -gt 0 ]; then targets=("$@"); else mapfile -t targets < <(for t in fuzz/fuzz_*.cpp; do basename "${t#fuzz/fuzz_}" .cpp; done); fi
results=$PWD/build/fuzz/campaign
place=$(mktemp -d -p /dev/shm)
trap 'rm -rf "$place"' EXIT
mkdir -p "$place/tmp"
export TMPDIR=$place/tmp
export LSAN_OPTIONS=suppressions=$PWD/scripts/leaks_of_others.txt:print_suppressions=0
export ASAN_OPTIONS=malloc_context_size=3 # a seventh of the time; whoever runs a finding again sees all of its stack
TIMEFORMAT='%U %S'
largest=4096 most_new=20 most_findings=5

# Where one input reaches tens of thousands of places, counting how rare each of them is costs more than the run itself.
declare -A options
for target in changes change_json command_line documents drawings order print run; do options[$target]=-entropic=0; done

dictionary_of() {
    case "$1" in
        ale | delimited | flex | keylog | keylog_names | log_table) echo fuzz/dictionaries/log.dict ;;
        edls | kind | run | file_kind) echo fuzz/dictionaries/edl.dict ;;
        bundle | export) echo fuzz/dictionaries/otio.dict ;;
        compound) echo fuzz/dictionaries/aaf.dict ;;
        change_json | findings_json | print | documents | drawings | table) echo fuzz/dictionaries/changes.dict ;;
        *) [ -e "fuzz/dictionaries/$1.dict" ] && echo "fuzz/dictionaries/$1.dict" ;;
    esac || true
}

# What the lines of the log say of reached code: once all inputs are read, or the last.
reached() { # log, line
    awk -v wanted="$2" '{ for (i = 1; i < NF; i++) if ($i == "cov:") { last = $(i + 1); if (first == "" && /INITED/) first = last } }
                        END { print (wanted == "first" ? first : last) + 0 }' "$1"
}

# What was found ends a run, and the next goes on with the rest of the time.
fuzz() { # target, seconds
    local target=$1 end=$((SECONDS + $2)) dictionary more=()
    dictionary=$(dictionary_of "$target")
    [ -z "$dictionary" ] || more=(-dict="$dictionary")
    while [ $SECONDS -lt $end ] && [ "$(find "$results/$target/found" -type f | wc -l)" -lt $most_findings ]; do
        # shellcheck disable=SC2086
        { time "$build/fuzz_$target" -max_total_time=$((end - SECONDS)) -timeout=30 -rss_limit_mb=3000 -print_final_stats=1 \
            "${more[@]}" ${options[$target]:-} -artifact_prefix="$results/$target/found/" "$place/$target" >>"$results/$target/log" 2>&1; } \
            2>>"$results/$target/seconds" || true
    done
}

# As few of the new small inputs as reach what all of them reach; of too many the larger ones, which reach most.
keep_new() { # target
    local target=$1
    mkdir -p "$place/small" "$place/merged"
    cp fuzz/corpus/"$target"/* "$place/merged"
    find "$place/$target" -type f -size -${largest}c -exec cp -t "$place/small" {} +
    # shellcheck disable=SC2086
    "$build/fuzz_$target" -set_cover_merge=1 -use_counters=0 -timeout=30 ${options[$target]:-} "$place/merged" "$place/small" >"$results/$target/merge.log" 2>&1 || true
    for file in "$place"/merged/*; do
        [ -e "fuzz/corpus/$target/$(basename "$file")" ] || echo "$file"
    done | xargs -r ls -S | sed -n "1,${most_new}p" | xargs -r cp -t "$results/$target/new"
    rm -rf "$place/small" "$place/merged"
}

runs_of() { grep -oE 'number_of_executed_units: +[0-9]+' "$1" | awk '{ sum += $2 } END { print sum + 0 }'; }

anything=0
printf '%-14s %8s %10s %10s %8s %8s %6s %9s\n' target seconds processor runs first last new findings
for target in "${targets[@]}"; do
    [ -x "$build/fuzz_$target" ] || { echo "fuzz_campaign: no $build/fuzz_$target; build the fuzz preset first" >&2; exit 2; }
    rm -rf "${results:?}/$target"
    mkdir -p "$results/$target/new" "$results/$target/found"
    cp -r "fuzz/corpus/$target" "$place/$target"
    began=$SECONDS
    fuzz "$target" $((minutes * 60))
    took=$((SECONDS - began))
    keep_new "$target"
    rm -rf "${place:?}/$target"
    log=$results/$target/log
    findings=$(find "$results/$target/found" -type f | wc -l)
    [ "$findings" -eq 0 ] || anything=1
    printf '%-14s %8d %10.0f %10d %8d %8d %6d %9d\n' "$target" $took "$(awk '{ sum += $1 + $2 } END { print sum + 0 }' "$results/$target/seconds")" "$(runs_of "$log")" "$(reached "$log" first)" "$(reached "$log" last)" \
        "$(find "$results/$target/new" -type f | wc -l)" "$findings"
done
exit $anything
