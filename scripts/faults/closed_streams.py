#!/usr/bin/env python3
"""Runs the command with standard input, output and error closed in each combination, or full, or with nobody at the
other end.

usage: scripts/faults/closed_streams.py QUILLBROOK

What the command prints then goes nowhere, never into a file of the run; what it makes is the new set, whole, or, where
standard output was to hold it, the old one. Nothing else stays.
"""
import itertools, os, signal, subprocess
from bench import EXAMPLES, Bench, Count, benches, options_of, untold, wrong_set

TALKING = {"edit show": ["edit", "show", "market.otio"], "log show": ["log", "show", "days.ale"],
           "check": ["check", "market.otio"], "help": ["--help"], "version": ["--version"]}


def close(streams):
    def closing():
        for stream in streams:
            os.close(stream)
    return closing


def combinations():
    return [c for n in (0, 1, 2, 3) for c in itertools.combinations((0, 1, 2), n)]


def try_files(bench, old, new, count):
    for streams in combinations():
        for quiet in (True, False):
            bench.fill()
            line = [word for word in bench.arguments if quiet or word != "--quiet"] + ["--max-name", "60000"]
            result = bench.run_line(line, preexec_fn=close(streams))
            wrong = wrong_set(bench, old, new, result) or ("" if result.returncode == 0 else "it fails")
            count.take("%s without %s" % (bench.name, streams), wrong)


def try_dash(bench, old, count):
    """The report to standard output, which is closed, full, or a pipe that nobody reads."""
    line = ["-" if before == "-o" else word for before, word in zip([""] + bench.arguments, bench.arguments)]
    line = [word for word in line if word != "fsl_type3_file=1" and word != "--set"]
    def judge(what, result, cause):
        wrong = "" if bench.outputs() == old else "files are changed"
        wrong = wrong or ("left over: %s" % bench.leftovers() if bench.leftovers() else "")
        count.take("%s to %s" % (bench.name, what),
                   wrong or ("status 0" if result.returncode == 0 else "") or
                   (untold(result, cause, ("standard output", "-")) if result.returncode > 0 else ""))

    bench.fill()
    judge("a closed stream", bench.run_line(line, preexec_fn=close([1])), "Bad file descriptor")
    bench.fill()
    with open("/dev/full", "w") as full:
        judge("a full device", bench.run_line(line, stdout=full, stderr=subprocess.PIPE), "No space left")
    bench.fill()
    read, write = os.pipe()
    os.close(read)
    result = bench.run_line(line, stdout=write, stderr=subprocess.PIPE,
                            preexec_fn=lambda: signal.signal(signal.SIGPIPE, signal.SIG_DFL))
    os.close(write)
    judge("a pipe without a reader", result, "Broken pipe")


def try_talk(bench, count):
    """Commands that only print: closed output is an error, closed input and error aren't."""
    for name, line in TALKING.items():
        bench.fill()
        usual = bench.run_line(line).returncode
        for streams in combinations():
            result = bench.run_line(line, preexec_fn=close(streams))
            wanted = 1 if 1 in streams else usual
            wrong = "" if result.returncode == wanted else "status %d" % result.returncode
            if 1 in streams and 2 not in streams:
                wrong = wrong or untold(result, "Bad file descriptor", ("standard output",))
            count.take("%s without %s" % (name, streams), wrong)
        with open("/dev/full", "w") as full:
            result = bench.run_line(line, stdout=full, stderr=subprocess.PIPE)
        count.take("%s to a full device" % name,
                   ("" if result.returncode == 1 else "status %d" % result.returncode) or
                   untold(result, "No space left", ("standard output",)))


def main():
    options = options_of(__doc__)
    count = Count()
    for bench in benches(options.tool):
        with bench:
            old, new = bench.old_set(), bench.new_set()
            try_files(bench, old, new, count)
            try_dash(bench, old, count)
    with Bench(options.tool, "talk", [EXAMPLES + "/25fps/market.otio", EXAMPLES + "/edl/days.ale"], [], {}) as bench:
        try_talk(bench, count)
    count.end("closed, full and unread streams")


main()
