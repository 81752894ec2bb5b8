#!/bin/bash
# Draws the pictures of docs/pictures anew from the examples, with the command in $1 or else that of the release build.
set -euo pipefail
cd "$(dirname "$0")/.."
quillbrook=$(realpath "${1:-build/release/quillbrook}")
made=$(mktemp -d)
trap 'rm -rf "$made"' EXIT
mkdir "$made/cut" "$made/recut"
export SOURCE_DATE_EPOCH=1790000000 TZ=UTC

"$quillbrook" print examples/opticals/expected/lantern.cdb -o "$made/cut.txt" --svg "$made/cut" --quiet
weir=examples/recut/expected/weir
"$quillbrook" changelist --old $weir-old-r1.cdb $weir-old-r2.cdb --new $weir-new-r1.cdb $weir-new-r2.cdb \
    -o "$made/changes.txt" --svg "$made/recut" --quiet
cp "$made/cut/reel.svg" "$made/cut/optical-1.svg" "$made/cut/optical-3-layer-2.svg" docs/pictures/
cp "$made/recut/changes-reel-1.svg" "$made/recut/step-6.svg" docs/pictures/
