#!/bin/bash
# Installs what the page for browsers is built with, and gets the sources of the two libraries that are compiled for it
# into build/web-sources/: Debian's, with Debian's patches. Only what is missing. Needs root, or sudo, for packages.
set -euo pipefail
cd "$(dirname "$0")/.."
packages=(emscripten dpkg-dev chromium)
# Any node will do, not only Debian's.
command -v node >/dev/null || packages+=(nodejs)
scripts/setup.sh "${packages[@]}"

# What drives a browser in the tests of the page. Without npm those tests say so.
modules=build/web-node
if [ ! -d $modules/node_modules/playwright-core ] && command -v npm >/dev/null; then
    mkdir -p $modules
    cp tests/web/package.json $modules/
    (cd $modules && npm install --no-package-lock --no-audit --no-fund --silent) >/dev/null 2>&1 ||
        echo "No playwright-core and axe-core: npm couldn't install them, so the page isn't tested in a browser"
fi

sources=build/web-sources
have() { compgen -G "$sources/$1" >/dev/null; }
if have 'expat-*/expat/lib/xmlparse.c' && have 'zlib-*/inflate.c'; then exit 0; fi

# apt knows packages of sources only where it is told to; it is told so here alone, beside the machine's own lists.
echo "Fetching the sources of Expat and zlib"
rm -rf "$sources"
mkdir -p "$sources"/apt/{lists/partial,cache/archives/partial,parts}
for list in /etc/apt/sources.list.d/debian.sources; do
    [ ! -f "$list" ] || sed 's/^Types: .*/Types: deb-src/' "$list" >"$sources/apt/parts/debian.sources"
done
[ ! -f /etc/apt/sources.list ] || sed -n 's/^deb /deb-src /p' /etc/apt/sources.list >"$sources/apt/parts/debian.list"
cd "$sources"
apt=(-qq -o Dir::Etc::sourcelist=/dev/null -o "Dir::Etc::sourceparts=$PWD/apt/parts" -o "Dir::State::lists=$PWD/apt/lists"
    -o "Dir::Cache=$PWD/apt/cache" -o "APT::Sandbox::User=$(id -un)")
apt-get "${apt[@]}" update
# Mirrors don't all keep the sources of security updates.
for name in expat zlib; do
    apt-get "${apt[@]}" source "$name" >/dev/null 2>&1 || apt-get "${apt[@]}" source "$name/bookworm" >/dev/null
done
rm -rf apt ./*.tar.* ./*.dsc
