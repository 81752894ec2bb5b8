#!/bin/bash
# Which lines the tests reach: builds the "coverage" preset, runs all tests, and prints how many lines of each folder they
# reach. build/coverage/unreached.txt lists the lines that they don't. Fails where a test fails, or where less is reached of a
# folder than the table below asks for.
# Usage: scripts/coverage.sh [--again]: with --again only the tables are made anew, of the tests that ran last.
set -euo pipefail
cd "$(dirname "$0")/.."

# What has to be reached, in percent.
declare -A least=([formats]=95 [embedded]=95 [film]=95 [documents]=95)

build=build/coverage
profiles=$build/profiles
jobs=$(nproc)

run_tests() {
    scripts/setup.sh llvm-14
    mkdir -p build
    if command -v ccache >/dev/null; then export CMAKE_CXX_COMPILER_LAUNCHER=ccache; fi
    cmake --preset coverage >build/coverage.log || { cat build/coverage.log; exit 1; }
    cmake --build --preset coverage -j "$jobs" | grep -vE '^\[[0-9]+/[0-9]+\] ' || [ "${PIPESTATUS[0]}" -eq 0 ]
    # The build runs tests too, to ask for their names.
    rm -rf "$profiles"
    TMPDIR=$(mktemp -d -p /dev/shm) && export TMPDIR
    trap 'rm -rf "$TMPDIR"' EXIT
    ctest --preset coverage -j "$jobs" --output-on-failure --no-tests=error >$build/tests.log || { cat $build/tests.log; exit 1; }
}

# All of our code is in these; the tests have the same functions once more, with the same counters.
libraries() {
    for name in quillbrook-embedded quillbrook-documents quillbrook-pdf quillbrook-web; do
        echo "-object $build/lib$name.so"
    done
    echo "-object $build/quillbrook"
}

# A line for each line of a source that can be reached: "FOLDER FILE LINE COUNT".
lines_of_sources() {
    # shellcheck disable=SC2046
    llvm-cov-14 export -format=lcov -instr-profile=$build/tests.profdata $build/libquillbrook.so $(libraries) |
        awk -F: -v root="$PWD/" '
            $1 == "SF" { file = index($2, root) == 1 ? substr($2, length(root) + 1) : ""
                         sub(/^build\/coverage\/\.\.\/\.\.\//, "", file) }
            $1 == "DA" && file != "" { split($2, part, ","); folder = file; sub(/\/.*/, "", folder)
                                       print folder, file, part[1], part[2] }'
}

[ "${1:-}" = --again ] || run_tests
llvm-profdata-14 merge -sparse "$profiles"/*.profraw -o $build/tests.profdata
lines_of_sources >$build/lines.txt
# With the text of each line.
awk '$4 == 0 { print $2, $3 }' $build/lines.txt | awk '
    { if ($1 != file) { close(file); file = $1; at = 0 }
      while (at < $2 && (getline text < file) > 0) at++
      print file ":" at ":" text }' >$build/unreached.txt

low=0
printf '%-12s %8s %8s %8s\n' folder lines reached percent
while read -r folder lines reached; do
    share=$((reached * 1000 / lines))
    printf '%-12s %8d %8d %6d.%d\n' "$folder" "$lines" "$reached" $((share / 10)) $((share % 10))
    if [ "$share" -lt $((${least[$folder]:-0} * 10)) ]; then
        echo "coverage: $folder/ needs ${least[$folder]} percent" >&2
        low=1
    fi
done < <(awk '{ lines[$1]++; reached[$1] += $4 > 0 } END { for (f in lines) print f, lines[f], reached[f] }' $build/lines.txt | sort)
exit $low
