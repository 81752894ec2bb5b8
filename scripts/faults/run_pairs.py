#!/usr/bin/env python3
"""Starts two runs of the command at once on names that they share: each must be right, or be refused.

usage: scripts/faults/run_pairs.py QUILLBROOK [--pairs N]
"""
import os, shutil, subprocess, sys, tempfile
from bench import EXAMPLES, OWN_NAMES, PLAIN, options_of

RECUT = os.path.join(EXAMPLES, "recut/expected")


def change(old, new, report):
    return ["changelist", "--old", os.path.join(RECUT, old), "--new", os.path.join(RECUT, new), "-o", report,
            "--lists-dir", "lists", "--overwrite", "--quiet"]


def cutlist(edit, report, overwrite=True):
    return ["cutlist", os.path.join(EXAMPLES, edit), "-o", report, "--quiet"] + ["--overwrite"] * overwrite


class Shape:
    """Two lines, their reports, and what becomes of files ahead of each pair."""

    def __init__(self, name, lines, reports, fresh=False):
        self.name, self.lines, self.reports, self.fresh = name, lines, reports, fresh


SHAPES = [
    Shape("changelists with one --lists-dir", [change("weir-old-r1.cdb", "weir-new-r1.cdb", "a.txt"),
                                               change("weir-old-r2.cdb", "weir-new-r2.cdb", "b.txt")], ["a.txt", "b.txt"]),
    Shape("cutlists whose tables share a name", [cutlist("25fps/market.otio", "r.txt"),
                                                 cutlist("3perf/harbour.otio", "r.lst")], ["r.txt", "r.lst"]),
    Shape("cutlists with one output", [cutlist("25fps/market.otio", "o.txt"), cutlist("3perf/harbour.otio", "o.txt")],
          ["o.txt", "o.txt"]),
    Shape("cutlists with one new output", [cutlist("25fps/market.otio", "n.txt", False),
                                           cutlist("3perf/harbour.otio", "n.txt", False)], ["n.txt", "n.txt"], fresh=True),
]


class Pairs:
    def __init__(self, tool):
        self.tool, self.top, self.refused = tool, tempfile.mkdtemp(prefix="pairs-"), 0
        os.mkdir(os.path.join(self.top, "lists"))

    def start(self, line):
        return subprocess.Popen([self.tool] + line, cwd=self.top, env=dict(PLAIN, TMPDIR=self.top),
                                stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)

    def files_of(self, report):
        found = []
        for name in (report, os.path.splitext(report)[0] + ".cdb"):
            path = os.path.join(self.top, name)
            found.append(open(path, "rb").read() if os.path.exists(path) else b"")
        return tuple(found)

    def clear(self, reports):
        for report in reports:
            for name in (report, os.path.splitext(report)[0] + ".cdb"):
                if os.path.exists(os.path.join(self.top, name)):
                    os.remove(os.path.join(self.top, name))

    def alone(self, shape):
        sets = []
        for line, report in zip(shape.lines, shape.reports):
            self.clear(shape.reports)
            told = self.start(line).communicate()[1]
            sets.append(self.files_of(report))
            assert sets[-1][0], told
        return sets

    def fault(self, shape, alone):
        """Of one pair; empty where all is well."""
        if shape.fresh:
            self.clear(shape.reports)
        runs = [self.start(line) for line in shape.lines]
        told = [run.communicate()[1] for run in runs]
        done = [run.returncode == 0 for run in runs]
        for run, text in zip(runs, told):
            if run.returncode != 0 and "another run" not in text and not (shape.fresh and "is there already" in text):
                return "status %d: %s" % (run.returncode, text)
        self.refused += done.count(False)
        if shape.fresh and done.count(True) != 1:
            return "%d of two made the new output" % done.count(True)
        if shape.reports[0] != shape.reports[1]:
            for is_done, report, files in zip(done, shape.reports, alone):
                if is_done and self.files_of(report)[0] != files[0]:
                    return "%s is another one" % report
            if self.files_of(shape.reports[0])[1] not in (alone[0][1], alone[1][1]):
                return "the table is none of the two"
        elif self.files_of(shape.reports[0]) not in ([a for a, d in zip(alone, done) if d] if shape.fresh else alone):
            return "report and table are of no run"
        left = [name for name in os.listdir(self.top) + os.listdir(os.path.join(self.top, "lists"))
                if name.startswith(OWN_NAMES)]
        return "left over: %s" % left if left else ""


def main():
    options = options_of(__doc__, ("--pairs", dict(type=int, default=1000)))
    pairs, faults = Pairs(options.tool), 0
    for shape in SHAPES:
        alone, wrong, refused = pairs.alone(shape), [], pairs.refused
        for _ in range(options.pairs):
            fault = pairs.fault(shape, alone)
            if fault:
                wrong.append(fault)
                print("%s: %s" % (shape.name, fault), flush=True)
        faults += len(wrong)
        print("%d pairs of %s: %d wrong, %d runs refused" % (options.pairs, shape.name, len(wrong),
                                                             pairs.refused - refused), flush=True)
    shutil.rmtree(pairs.top)
    sys.exit(1 if faults else 0)


main()
