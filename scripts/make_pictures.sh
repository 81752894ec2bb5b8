#!/bin/bash
# Draws the pictures of docs/pictures anew from the examples, with the command in $1 or else that of the release build.
# Those of pages need pdftoppm and Chromium.
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

picture_of_page() { # a list, and the command that makes its pages; page 1 becomes docs/pictures/page-LIST.png
    local list=$1
    shift
    echo "lists = $list" >"$made/profile"
    "$@" --profile "$made/profile" --pdf "$made/$list.pdf" --overwrite --quiet
    pdftoppm -r 80 -gray -png -singlefile "$made/$list.pdf" "docs/pictures/page-$list"
}
picture_of_page assembly "$quillbrook" print examples/reel/expected/reel.cdb -o "$made/cut.txt" \
    --edit examples/reel/reel.otio
picture_of_page opticals "$quillbrook" print examples/opticals/expected/lantern.cdb -o "$made/cut.txt"
picture_of_page bench "$quillbrook" changelist --old $weir-old-r1.cdb --new $weir-new-r1.cdb -o "$made/changes.txt" --feet

"$quillbrook" print examples/opticals/expected/lantern.cdb -o "$made/cut.txt" --html "$made/lantern.html" --for cutter \
    --overwrite --quiet
chromium --headless --no-sandbox --disable-gpu --hide-scrollbars --user-data-dir="$made/profile-of-browser" \
    --window-size=1080,1100 --screenshot="$PWD/docs/pictures/page-browser.png" "file://$made/lantern.html" 2>/dev/null
