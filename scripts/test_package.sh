#!/bin/bash
# Tests what scripts/package.sh has made in build/package, or in the folder that is named: that the packages hold the very files that cmake --install puts in place, then, in a
# fresh Debian, that they can be installed, make lists, and leave nothing when they go. The second half needs mmdebstrap, a
# network and root; the fresh Debian is kept in build/package/root.tar for the next time.
set -euo pipefail
cd "${1-$(dirname "$0")/../build/package}"
here=$PWD
work=$(mktemp -d)
trap 'rm -rf --one-file-system "$work"' EXIT
fail() { echo "packages: $1" >&2; exit 1; }
# Those of debug symbols come of themselves.
mapfile -t packages < <(find . -maxdepth 1 -name '*.deb' ! -name '*-dbgsym_*' | sort)

echo "== the files of cmake --install"
DESTDIR=$work/tree cmake --install quillbrook-*/obj-* >/dev/null
(cd "$work/tree" && find . ! -type d | sort) >"$work/installed"
for package in "${packages[@]}"; do
    dpkg-deb -c "$package" | awk '$1 !~ /^d/ { print $6 }'
done | sed 's/\.gz$//' | grep -vE '/share/doc/[^/]+/(copyright|changelog)$|^\./usr/share/lintian/' | sort >"$work/packed"
diff "$work/installed" "$work/packed" || fail "they aren't the same"
echo "packages: the same $(wc -l <"$work/packed") files"

# Hosts may leave out functions that their jobs don't come to, so the library must not ask for all of them when it is loaded.
if readelf -d "$work"/tree/usr/lib/*/libquillbrook.so.1 | grep -qE 'BIND_NOW|FLAGS.*NOW'; then
    fail "libquillbrook binds all of a host's functions at once"
fi

if ! command -v mmdebstrap >/dev/null || [ "$(id -u)" -ne 0 ]; then
    echo "packages: not installed, as that needs mmdebstrap and root"
    exit 0
fi
echo "== a fresh Debian"
[ -s root.tar ] || mmdebstrap --quiet --variant=apt --mode=root bookworm root.tar http://deb.debian.org/debian
root=$work/root
mkdir "$root"
tar -C "$root" -xf root.tar --exclude='./dev/*'
cp /etc/resolv.conf "$root/etc/"
mkdir -p "$root/dev"
for device in "null 3" "zero 5" "urandom 9"; do
    # shellcheck disable=SC2086
    set -- $device
    mknod -m 666 "$root/dev/$1" c 1 "$2"
done
inside() { env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive chroot "$root" "$@"; }
# What programs note down for themselves isn't the packages'.
files_of_root() { (cd "$root" && find . ! -type d ! -path './packages/*' ! -path './proc/*' ! -path './var/cache/*' ! -path './var/log/*' \
    ! -path './var/lib/apt/*' ! -path './var/lib/dpkg/*' ! -path './etc/ld.so.cache' | sort); }
inside apt-get -qq update
files_of_root >"$work/before"

mkdir "$root/packages" "$root/job"
cp "${packages[@]}" "$root/packages"
inside sh -c 'apt-get -qq -y --no-install-recommends install /packages/*.deb >/packages/install.log 2>&1' ||
    { tail -n 20 "$root/packages/install.log" >&2; fail "they can't be installed"; }

echo "== the main job"
cp "$here"/quillbrook-*/examples/reel/reel.otio "$here"/quillbrook-*/examples/16mm/heron.otio "$root/job"
cp -r "$here"/quillbrook-*/examples/edl "$root/job"
inside sh -ec 'cd /job; quillbrook --version
    quillbrook cutlist heron.otio -o heron.txt --prove --quiet >/dev/null
    quillbrook cutlist reel.otio -o reel.txt --quiet --html reel.html --pdf reel.pdf
    quillbrook log import edl/days.ale edl/night.flx -o show.RDB --quiet
    quillbrook cutlist edl/ferryman.edl --rate 25 --log show.RDB -o ferryman.txt --quiet
    for file in reel.txt reel.cdb reel.html reel.pdf ferryman.txt; do [ -s $file ]; done'
grep -q "5871+01" "$root/job/ferryman.cdb" || fail "a table lacks its key number"
for file in usr/share/man/man1/quillbrook-cutlist.1.gz usr/share/man/man5/quillbrook-formats.5.gz \
    usr/share/bash-completion/completions/quillbrook; do
    [ -s "$root/$file" ] || fail "$file is missing"
done

echo "== gone again"
inside sh -c 'apt-get -qq -y purge "*quillbrook*" >/dev/null && apt-get -qq -y autoremove --purge >/dev/null' 2>/dev/null
rm -rf "$root/job" "$root/packages"
files_of_root >"$work/after"
diff "$work/before" "$work/after" || fail "they leave something"
echo "packages: installed, used and gone without a trace"
