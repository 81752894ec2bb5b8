#!/usr/bin/env python3
"""Breaks runs of the command at every system call on files, and looks at what they leave.

usage: scripts/faults/run_faults.py QUILLBROOK [--step N] [--kinds EIO,KILL,...]

Each command first runs once over old outputs, to learn the new ones and the number of its calls. Then the n-th call
of each kind fails, for every n (or every N-th with --step): with an error, in part, or by the death of the process.
After each run the outputs must be the old set or the new one, whole; after one that died, once the next run has looked
into the folder. A run that fails must name a file and a cause, one that succeeds must have made the new set, and the
folder and TMPDIR must then hold nothing else. Prints the counts, and exits with 1 at any fault.
"""
import os, sys
from bench import Count, benches, built, options_of, untold, wrong_set

CALLS = ["open", "read", "write", "fsync", "close", "rename", "link", "mkdir", "unlink", "chmod"]
ERRORS = ["EIO", "ENOSPC", "EACCES", "EINTR", "SHORT"]
CAUSE = (r": (Input/output error|No space left on device|Permission denied|Interrupted system call)"
         r"|couldn't be|isn't a whole|Unable to|cut off|names no file|no such directory")


class Breaker:
    """Runs of a bench with one call that fails."""

    def __init__(self, bench, shim):
        self.bench, self.shim = bench, shim
        self.counter = os.path.join(bench.top, "count")

    def run(self, call, at, kind):
        self.bench.fill()
        return self.bench.run({"LD_PRELOAD": self.shim, "FAULT_UNDER": self.bench.top, "FAULT_COUNT": self.counter,
                               "FAULT_CALL": call, "FAULT_AT": str(at), "FAULT_WITH": kind})

    def calls(self, call):
        self.run(call, 0, "EIO")
        with open(self.counter) as file:
            return int(file.read())


def judge(bench, old, new, result, call, kind):
    """What is wrong with what a broken run left; empty where all is well."""
    killed = result.returncode == -9
    # What can't be removed, or wasn't, goes with the next run.
    if killed or call in ("unlink", "open"):
        look = bench.look_into()
        if look.returncode != 0:
            return "the next run ended with %d: %s" % (look.returncode, look.stderr.strip())
    if killed:
        result.returncode = 0 if bench.outputs() == new else 1
        return wrong_set(bench, old, new, result)
    wrong = wrong_set(bench, old, new, result) or untold(result, CAUSE)
    if not wrong and result.returncode != 0 and kind in ("EINTR", "SHORT"):
        return "%s isn't survived: %r" % (kind, result.stderr)
    return wrong


def main():
    options = options_of(__doc__, ("--step", dict(type=int, default=1)),
                         ("--kinds", dict(default=",".join(ERRORS + ["KILL"]))))
    shim = built("fault_shim.c", "cc", "-ldl")
    count = Count()
    for bench in benches(options.tool):
        with bench:
            old, new, breaker = bench.old_set(), bench.new_set(), Breaker(bench, shim)
            for call in CALLS:
                calls = breaker.calls(call)
                for kind in options.kinds.split(","):
                    if kind == "SHORT" and call not in ("read", "write"):
                        continue
                    for at in range(1, calls + 1, options.step):
                        result = breaker.run(call, at, kind)
                        count.take("%s: %s of %s %d/%d" % (bench.name, kind, call, at, calls),
                                   judge(bench, old, new, result, call, kind))
    count.end("calls that fail")


if __name__ == "__main__":
    main()
