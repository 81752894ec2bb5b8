#!/bin/bash
# The fences between the folders: who may include whom, what the library may not use, and words that don't
# belong into tracked files.
set -uo pipefail
cd "$(dirname "$0")/.."
failed=0

complain() { # what is wrong, then the lines
    echo "fence: $1"
    echo "$2" | sed 's/^/    /'
    failed=1
}

files_of() { git ls-files -co --exclude-standard -- "$@" | grep -E '\.(h|cpp)$' | while read -r f; do [ -f "$f" ] && echo "$f"; done; }

only_includes() {
    local folder=$1 allowed=$2 files lines
    files=$(files_of "$folder/")
    [ -n "$files" ] || return 0
    lines=$(grep -nE '^ *# *include "' $files /dev/null | grep -vE "include \"($allowed)")
    [ -z "$lines" ] || complain "$folder/ includes only $allowed" "$lines"
}

lacks() { # folder, pattern, what it is
    local files lines
    files=$(files_of "$1/")
    [ -n "$files" ] || return 0
    lines=$(grep -nE "$2" $files /dev/null)
    [ -z "$lines" ] || complain "$1/ uses no $3" "$lines"
}

# Who may include whom: a folder, then what its quoted includes may begin with. A subsystem of the film library is
# entered by its chief headers only, which stand here behind its name.
while read -r folder allowed; do
    [ -z "$folder" ] || only_includes "$folder" "$allowed"
done <<'WHO'
host        host/
include     quillbrook/|host/
base        base/|host/
cutlist     cutlist/|base/|quillbrook/|host/|reports/(cutdb|cut_s|report_driver)\.h|logging/log_shot_list\.h
reports     reports/|base/|quillbrook/|host/|cutlist/cutlist_options\.h
changelist  changelist/|base/|quillbrook/|host/|reports/(cutdb|cut_s|report)\.h|cutlist/cutlist_options\.h
logging     logging/|base/|quillbrook/|host/
embedded    embedded/|host/
formats     formats/|embedded/|host/|rapidjson/
film        film/|quillbrook/|embedded/|host/
documents   documents/|film/|quillbrook/|embedded/|host/
web/entry   tool/
web/server  web/server/
tool        tool/|web/server/page_server\.h|documents/|quillbrook/|film/|embedded/|formats/|host/|rapidjson/
WHO

for folder in base cutlist reports changelist logging; do
    lacks $folder 'std::(basic_)?(string|wstring|vector|map|set|unordered_map|list|deque|function)([^_a-z]|$)' \
        'container of the standard allocator'
    lacks $folder 'std::(cout|cerr|[io]?f?stream|[io]?stringstream)|# *include <(iostream|fstream|sstream)>' 'streams'
done

# Exceptions of a host pass through the library, which neither throws nor catches, but for the one guard of its entries.
exceptions='(^|[^_[:alnum:]])(try|catch|throw)([^_[:alnum:]]|$).*[{(;]'
lines=$(grep -nE "$exceptions" $(files_of base/ cutlist/ reports/ changelist/ logging/ include/ | grep -vx base/guard.cpp) /dev/null)
[ -z "$lines" ] || complain "the library knows of exceptions in base/guard.cpp only" "$lines"

# Libraries for browsers lack these for numbers with a fraction, and arrays without values.
lines=$(grep -nE 'chars_format|make_unique_for_overwrite' $(files_of '*.h' '*.cpp' | grep -vE '^(host/decimal_number\.h|tests/|fuzz/|bench/)') /dev/null)
[ -z "$lines" ] || complain "host/decimal_number.h alone turns numbers with a fraction into text" "$lines"

readers_of_the_line=$(grep -lE '# *include [<"]CLI/' $(files_of tool/ embedded/ formats/ host/ include/) /dev/null | wc -l)
[ "$readers_of_the_line" -le 1 ] || complain "one file of tool/ reads the command line" "$readers_of_the_line do"

# Other people's libraries stay behind one folder each.
while read -r header folder; do
    lines=$(grep -nE "# *include <$header" $(files_of '*.h' '*.cpp' | grep -vE "^($folder|tests/)") /dev/null)
    [ -z "$lines" ] || complain "only $folder knows <$header>" "$lines"
done <<'WHERE'
expat     formats/xml/
gsf/      \(formats\|tests\)/compound/
zlib      formats/bundle/
glib      \(formats\|tests\)/compound/
cairo     documents/pdf
pango     documents/pdf
httplib   web/server/
WHERE

# Put together from pieces, so that this file doesn't hold them.
p=Part s=spec m='\.md'
words="(^|[^[:alnum:]])$p [1-5]\.[0-9]|the ${s}ification|as ${s}ified|(^|[^-[:alnum:]])(${s}|h""ost|o""tio)$m"
lines=$(git grep -nIE --untracked "$words" -- . 2>/dev/null)
[ -z "$lines" ] || complain "words that belong to nobody who reads this" "$lines"

[ $failed -eq 0 ] && echo "fence: all folders keep to their side"
exit $failed
