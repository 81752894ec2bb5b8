#!/usr/bin/env python3
"""Runs each command on small files, once for each of its allocations, with that one failing, and again with all from
that one on.

usage: scripts/faults/fail_allocations.py QUILLBROOK [--step N] [--first N]

A run ends by itself: as usual, or with status 1 and a line that says why; every output stands whole or not at all, and
nothing else stays. --step tries every N-th allocation alone. Prints counts, and exits with 1 at any breach.
"""
import os, shutil, subprocess, sys, tempfile
from bench import EXAMPLES, PLAIN, built, options_of

SHOT = """{"OTIO_SCHEMA":"Clip.1","name":"%s","source_range":%s,"media_reference":{"OTIO_SCHEMA":"ExternalReference.1",
"target_url":"%s.mov","available_range":%s,"metadata":{"quillbrook":{"reel":"%s","cam_reel":"%s","keycode":"%s"}}}}"""
EVENT_LIST = ("TITLE: SMALL\nFCM: NON-DROP FRAME\n"
              "001  V001 V C        01:00:00:00 01:00:02:00 10:00:00:00 10:00:02:00\n"
              "002  V001 V C        01:00:04:00 01:00:04:00 10:00:02:00 10:00:02:00\n"
              "002  V001 V D    012 01:00:05:00 01:00:06:00 10:00:02:00 10:00:03:00\n")


def span(start, length):
    frames = '{"OTIO_SCHEMA":"RationalTime.1","rate":24,"value":%d}'
    return '{"OTIO_SCHEMA":"TimeRange.1","start_time":%s,"duration":%s}' % (frames % start, frames % length)


def shot(name, key, start, length):
    return SHOT % (name, span(start, length), name, span(0, 400), name, name, key)


def dissolve(length):
    half = '{"OTIO_SCHEMA":"RationalTime.1","rate":24,"value":%d}' % (length // 2)
    return ('{"OTIO_SCHEMA":"Transition.1","name":"d","transition_type":"SMPTE_Dissolve","in_offset":%s,"out_offset":%s}'
            % (half, half))


def edit(children):
    return ('{"OTIO_SCHEMA":"Timeline.1","name":"small","tracks":{"OTIO_SCHEMA":"Stack.1","children":[{"OTIO_SCHEMA":'
            '"Track.1","kind":"Video","children":[%s]}]}}' % ",".join(children))


def small_files(tool, folder):
    """What the commands read, under short names."""
    first, second = shot("one", "KJ1234560100+00", 10, 48), shot("two", "KJ6543210200+00", 20, 36)
    texts = {"a.otio": edit([first, dissolve(12), second]), "b.otio": edit([second, first]), "a.edl": EVENT_LIST}
    for kind in (".xml", ".fcpxml", ".aaf"):
        shutil.copy(EXAMPLES + "/formats/crossing" + kind, os.path.join(folder, "c" + kind))
    for name, text in texts.items():
        with open(os.path.join(folder, name), "w") as file:
            file.write(text)
    shutil.copy(EXAMPLES + "/edl/days.ale", folder)
    for line in (["cutlist", "a.otio", "-o", "a.txt"], ["cutlist", "b.otio", "-o", "b.txt"],
                 ["log", "import", "days.ale", "-o", "a.RDB"],
                 ["order", "a.otio", "-o", "a.order", "--json", "a.json", "--build-rolls", "50"]):
        subprocess.run([tool] + line + ["--quiet"], cwd=folder, env=PLAIN, check=True)


LINES = [line.split() for line in (
    "cutlist a.otio -o out/a.txt --single-layer 1,2,3,4 --prove",
    "cutlist a.edl --rate 25 --log a.RDB -o out/b.txt --neg-cut",
    "print a.cdb -o out/c.txt --prove",
    "changelist --old a.cdb --new b.cdb -o out/d.txt --json out/d.json --prove --lists summary,changes,bench",
    "check a.otio --json out/e.json",
    "explain a.otio --event 1",
    "edit show a.otio",
    "log import days.ale -o out/f.RDB",
    "log merge a.RDB a.RDB -o out/g.RDB",
    "log show days.ale",
    "log check days.ale",
    "edit show c.xml",
    "edit show c.fcpxml",
    "edit show c.aaf",
    "export a.otio -o out/h.otio",
    "export c.aaf -o out/h.edl",
    "export c.fcpxml -o out/h.ale",
    "order a.otio b.cdb -o out/i.txt --json out/i.json --prove --handles 8",
    "order a.otio b.otio -o out/j.txt --had a.json --prove",
    "order a.otio -o out/m.txt --edl out/m.edl --ale out/m.ale --otio out/m.otio --cut-file out/m.cut --build-rolls 50",
    "conform a.otio --cut a.otio -o out/n.txt --json out/n.json",
    "export a.otio --on-rolls a.json -o out/o.edl",
    "describe a.otio c.aaf days.ale",
    "print a.cdb -o out/k.txt --html out/k.html --csv out --json out/k.json --text out/k.text --svg out",
    "changelist --old a.otio --new b.otio -o out/l.txt --html out/l.html",
    "help cutlist",
    "cutlist",
)]


class Trial:
    """One line with what it makes when memory doesn't end."""

    def __init__(self, tool, shim, folder, line):
        self.tool, self.folder, self.line = tool, folder, line
        self.out, self.tmp = os.path.join(folder, "out"), os.path.join(folder, "tmp")
        self.environment = dict(PLAIN, TMPDIR=self.tmp, LD_PRELOAD=shim)
        self.clear()
        counter = os.path.join(folder, "count")
        self.usual = self.run(COUNT_ALLOCATIONS=counter).returncode
        with open(counter) as file:
            self.allocations = int(file.read())
        self.whole = self.outputs()

    def run(self, **more):
        return subprocess.run([self.tool] + self.line, cwd=self.folder, env=dict(self.environment, **more),
                              stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, timeout=60)

    def clear(self):
        for folder in (self.out, self.tmp):
            shutil.rmtree(folder, ignore_errors=True)
            os.mkdir(folder)

    def outputs(self):
        found = {}
        for name in os.listdir(self.out):
            path = os.path.join(self.out, name)
            found[name] = b""
            if os.path.isfile(path):
                with open(path, "rb") as file:
                    found[name] = file.read()
        return found

    def breach(self, number, all_behind):
        """What is wrong with one run, and whether it ended otherwise than usual."""
        result = self.run(FAIL_ALLOCATION=str(number), FAIL_ALL_BEHIND="1" if all_behind else "0")
        failed = result.returncode != self.usual
        wrong = ""
        if result.returncode not in (self.usual, 1, 127):  # 127: the loader itself had no memory
            wrong = "status %d" % result.returncode
        elif failed and not result.stderr:
            wrong = "nothing said"
        left = self.outputs()
        for name, bytes in left.items():
            if self.whole.get(name) != bytes:
                wrong = wrong or "%s isn't whole: %r" % (name, bytes)
        if result.returncode == self.usual and left != self.whole:
            wrong = wrong or "outputs are missing"
        wrong = wrong or ("left over: %s" % os.listdir(self.tmp) if os.listdir(self.tmp) else "")
        if left or wrong:
            self.clear()
        return wrong, failed


def main():
    options = options_of(__doc__, ("--step", dict(type=int, default=1)), ("--first", dict(type=int, default=1)))
    folder, shim = tempfile.mkdtemp(prefix="memory-"), built("failing_malloc.cpp", "g++-12", "-std=c++20")
    small_files(options.tool, folder)
    runs = failures = breaches = 0
    for line in LINES:
        trial, before = Trial(options.tool, shim, folder, line), runs
        for number in range(options.first, trial.allocations + 1, options.step):
            for all_behind in (False, True):
                wrong, failed = trial.breach(number, all_behind)
                runs, failures, breaches = runs + 1, failures + failed, breaches + (wrong != "")
                if wrong:
                    print("%s [%d%s]: %s" % (" ".join(line), number, " and all behind" * all_behind, wrong), flush=True)
        print("%d runs of \"%s\", %d allocations" % (runs - before, " ".join(line[:2]), trial.allocations), flush=True)
    shutil.rmtree(folder)
    print("allocations that fail: %d runs, %d of them failed, %d breaches" % (runs, failures, breaches))
    sys.exit(1 if breaches else 0)


main()
