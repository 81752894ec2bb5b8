#!/bin/bash
# Makes the source tarball and the Debian packages of what is checked out, with changes that aren't committed, in
# build/package, and has lintian look at them. Needs debhelper and lintian, which scripts/setup.sh leaves out: with
# --install-tools they are installed first, as root.
set -euo pipefail
cd "$(dirname "$0")/.."
tools=(debhelper lintian dpkg-dev fakeroot)
if [ "${1-}" = --install-tools ]; then
    DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${tools[@]}" >/dev/null
fi
for program in dh dpkg-buildpackage lintian; do
    command -v $program >/dev/null || { echo "package: $program is missing; see --install-tools" >&2; exit 1; }
done

version=$(sed -nE 's/^project\(quillbrook VERSION ([0-9.]+) .*/\1/p' CMakeLists.txt)
[ "$(dpkg-parsechangelog -S Version)" = "$version" ] || { echo "package: debian/changelog isn't of $version" >&2; exit 1; }
name=quillbrook-$version
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
export SOURCE_DATE_EPOCH
mkdir -p build/package
here=$PWD
cd build/package
rm -rf "$name" ./*.tar.gz ./*.deb ./*.ddeb ./*.buildinfo ./*.changes ./*.dsc ./*.tar.xz

# What git knows of, without what has been deleted; the same bytes whoever makes it.
(cd "$here" && git ls-files -co --exclude-standard -z | while IFS= read -r -d '' file; do
    if [ -e "$file" ]; then printf '%s\0' "$file"; fi
done) | tar -C "$here" --null -T - --sort=name --owner=0 --group=0 --numeric-owner --mtime="@$SOURCE_DATE_EPOCH" \
    --transform "s|^|$name/|" -cf - | gzip -n9 >"$name.tar.gz"
tar -xzf "$name.tar.gz"

if command -v ccache >/dev/null; then
    # The build of a package has a home of its own, where ccache would begin anew.
    CCACHE_DIR=$(ccache --get-config cache_dir)
    export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_DIR
fi
export DEB_BUILD_OPTIONS="nocheck parallel=$(nproc)${DEB_BUILD_OPTIONS+ $DEB_BUILD_OPTIONS}"
(cd "$name" && dpkg-buildpackage -us -uc -b >../build.log 2>&1) || { tail -n 40 build.log >&2; exit 1; }
lintian --fail-on error,warning --allow-root --tag-display-limit 0 ./*.changes
echo "package: $(ls "$name.tar.gz" ./*.deb | wc -l) files in build/package"
