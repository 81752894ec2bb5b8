#!/usr/bin/env python3
"""Runs the command on disks that are full: with room for few pages, for few names, and for short files alone.

usage: scripts/faults/full_disk.py QUILLBROOK

The folder of the outputs, then TMPDIR, is a tmpfs of as many pages, or of as many inodes, as the old outputs need, and
of one more each time until the run succeeds. As root; otherwise only the limit on the length of files is tried. Each
run leaves the old set whole and names file and cause, or makes the new one; nothing else stays.
"""
import os, resource, subprocess
from bench import Count, benches, options_of, untold, wrong_set

PAGE = 4096
CAUSE = r"No space left on device|Disk quota exceeded|File too large|out of memory"


def mounted(folder, size):
    return subprocess.run(["mount", "-t", "tmpfs", "-o", size, "tmpfs", folder], capture_output=True).returncode == 0


def unmount(folder):
    subprocess.run(["umount", folder], check=True)


def try_sizes(bench, folder, option, old, new, count):
    """Larger and larger disks, until the run has room on two of them."""
    good = 0
    for size in range(1, 200):
        os.makedirs(folder, exist_ok=True)
        if not mounted(folder, option % size):
            continue
        try:
            bench.fill()
        except OSError:
            unmount(folder)
            continue
        result = bench.run()
        wrong = wrong_set(bench, old, new, result) or untold(result, CAUSE)
        count.take("%s, %s of %s" % (bench.name, option % size, os.path.basename(folder)), wrong)
        unmount(folder)
        good += 1 if result.returncode == 0 else 0
        if good == 2:
            return
    count.take("%s, %s" % (bench.name, option), "no disk is large enough")


def try_lengths(bench, old, new, count):
    longest = max(len(bytes) for bytes in new.values())
    for length in list(range(0, longest, max(1, longest // 40))) + [longest + PAGE]:
        bench.fill()
        limit = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (length, length))
        result = bench.run(preexec_fn=limit)
        count.take("%s, files of %d bytes at most" % (bench.name, length),
                   wrong_set(bench, old, new, result) or untold(result, CAUSE))


def main():
    options = options_of(__doc__)
    count = Count()
    for bench in benches(options.tool):
        with bench:
            old, new = bench.old_set(), bench.new_set()
            try_lengths(bench, old, new, count)
            bench.fill()
            if not mounted(bench.out, "size=1m"):
                print("no tmpfs can be mounted here")
                continue
            unmount(bench.out)
            for folder in (bench.out, bench.tmp):
                for option in ("nr_blocks=%d", "nr_inodes=%d"):
                    try_sizes(bench, folder, option, old, new, count)
    count.end("full disks")


main()
