#!/bin/bash
# How the cost of a whole run grows: instructions (callgrind) and peak memory of the command on edits of 2,500,
# 5,000 and 9,999 events. Fails where twice the events cost more than 2.2 times the instructions; with opticals,
# re-use and the single-layer lists the limit is 2.3, as it is of what is found wrong or doubtful of such an edit, and of the
# lists with their proof and the list of doubts. Then the same of the changelist of a recut, and of one of film used 35
# times, at each cost of the bench list. At 9,999 events what is found and the proof together may cost no more than reading
# the edit and making its lists. Last the order of 20 reels with as many events together, against 30 earlier orders.
# Usage: scripts/bench_growth.sh [BUILD], by default build/release.
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build/release}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export SOURCE_DATE_EPOCH=0

# What is measured: a cutlist of "plain" cuts or of ones with "opticals", or the "changes" of a recut, of film used
# again for "reused".
cost=
run() { # events, then what runs the command
    local events=$1 lists=()
    shift
    if [ "$kind" = changes ] || [ "$kind" = reused ]; then
        "$@" "$build/quillbrook" changelist --old "$work/$events-old.cdb" --new "$work/$events-new.cdb" \
            -o "$work/changes.txt" --overwrite --quiet --lists summary,new,changes,transitions,bench ${cost:+--cost "$cost"}
        return
    fi
    if [ "$kind" = orders ]; then
        "$@" "$build/quillbrook" order "$work/film-$events"/r*.otio --had "$work/film-$events"/had*.json -o "$work/order.txt" \
            --json "$work/order.json" --handles 8 --prove --overwrite --quiet
        return
    fi
    if [ "$kind" = findings ]; then
        "$@" "$build/quillbrook" check "$work/$events-findings.otio"
        return
    fi
    if [ "$kind" = proof ]; then
        "$@" "$build/quillbrook" cutlist "$work/$events-proof.otio" -o "$work/$events-proof.txt" --overwrite --quiet \
            --lists rolls,pull,assembly,opticals,doubts --prove
        return
    fi
    [ "$kind" = plain ] || lists=(--single-layer 1,2,3,4)
    "$@" "$build/quillbrook" cutlist "$work/$events-$kind.otio" -o "$work/$events-$kind.txt" --overwrite --quiet \
        "${lists[@]}"
}

instructions() {
    run "$1" valgrind --tool=callgrind --callgrind-out-file=/dev/null 2>&1 | sed -n 's/.*Collected : //p'
}

peak_memory() {
    [ -x /usr/bin/time ] || return 0
    run "$1" /usr/bin/time -f '%M' 2>&1 | tail -1
}

# Version 31 of a film of 20 reels, and the orders of all versions before it.
make_film() { # events
    local folder=$work/film-$1 had=()
    mkdir "$folder"
    for version in $(seq -w 1 31); do
        "$build/bench/make_film" $(($1 / 20)) 20 $((10#$version)) "$folder"
        [ "$version" = 31 ] && return
        "$build/quillbrook" order "$folder"/r*.otio "${had[@]}" -o "$work/order.txt" --json "$folder/had$version.json" \
            --handles 8 --overwrite --quiet
        had=(--had "$folder"/had*.json)
    done
}

measure() { # kind of edit, limit
    local kind=$1 limit=$2 before= count ratio
    echo "$kind"
    printf '%8s %18s %10s %12s\n' events instructions ratio 'peak KiB'
    for events in 2500 5000 9999; do
        case $kind in
        plain) "$build/bench/make_edit" "$events" >"$work/$events-plain.otio" ;;
        opticals) "$build/bench/make_edit" "$events" opticals >"$work/$events-opticals.otio" ;;
        findings | proof) "$build/bench/make_edit" "$events" opticals >"$work/$events-$kind.otio" ;;
        orders) make_film "$events" ;;
        changes) "$build/bench/make_recut" "$events" "$work/$events-old.cdb" "$work/$events-new.cdb" ;;
        reused) "$build/bench/make_recut" "$events" "$work/$events-old.cdb" "$work/$events-new.cdb" reused ;;
        esac
        count=$(instructions "$events")
        ratio=-
        [ -z "$before" ] || ratio=$(awk -v a="$before" -v b="$count" 'BEGIN { printf "%.3f", b / a }')
        printf '%8s %18s %10s %12s\n' "$events" "$count" "$ratio" "$(peak_memory "$events")"
        if [ "$ratio" != - ] && awk -v r="$ratio" -v l="$limit" 'BEGIN { exit !(r > l) }'; then
            echo "twice the events cost $ratio times the instructions, above $limit" >&2
            exit 1
        fi
        before=$count
    done
}

# Instructions of the functions of one run, with all that they call.
of_functions() { # names, as one expression
    callgrind_annotate --inclusive=yes --threshold=100 "$work/calls" 2>/dev/null |
        awk -v names="$1" '$0 ~ names && !seen[$NF $(NF-1)]++ { gsub(",", "", $1); sum += $1 } END { print sum + 0 }'
}

measure_share() {
    local kind=proof lists looks
    run 9999 valgrind --tool=callgrind --callgrind-out-file="$work/calls" >/dev/null 2>&1
    lists=$(of_functions ':(tool::open_edit|make_cutlist_from_edit)\\(')
    looks=$(of_functions ':(tool::check_film|tool::film_of_edit|tool::prove_lists|tool::add_doubts)\\(')
    echo "lists $lists, findings and proof $looks"
    if awk -v a="$lists" -v b="$looks" 'BEGIN { exit !(a == 0 || b == 0 || b > a) }'; then
        echo "what is found and the proof cost more than the lists" >&2
        exit 1
    fi
}

measure plain 2.2
measure opticals 2.3
measure findings 2.3
measure proof 2.3
measure_share
measure changes 2.2
measure reused 2.2
for cost in moves splices frames; do
    measure reused 2.2
done
cost=
measure orders 2.2
