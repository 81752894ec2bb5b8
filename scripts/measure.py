#!/usr/bin/env python3
"""Makes docs/performance.md anew: fills the figures into bench/performance.md.in, where its words stand.

    cmake --preset release && cmake --build --preset release
    scripts/measure.py [BUILD] [--only NAME,...] [--keep FILE]

Takes a quarter of an hour on an idle machine; with --keep another run of the same build goes on where a stopped one was. With
--only it prints the table of those stages, or of those groups, and
writes nothing. In the template {{table GROUP}} stands for a table of measured_stages.py; {{STAGE SIZE FIGURE}} for one
figure: instructions, peak, seconds or written of so many pieces, or each, growth or peak-each, for which SIZE is "all".
{{machine}}, {{share}}, {{times_of_parse SIZE}}, {{steps SIZE LIST}}, {{nanoseconds PROGRAM NAME}}, {{proved NAME}} and
{{browser WHAT}} are what the functions of these names say.
"""
import argparse
import functools
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import threading

from measured_runs import RunFailed, Runs, growth, in_parallel, missing_tools
from measured_stages import GROUPS, STAGES

ROOT = pathlib.Path(__file__).resolve().parent.parent
TEMPLATE, DOCUMENT = ROOT / "bench/performance.md.in", ROOT / "docs/performance.md"


def instructions_text(count):
    return f"{count / 1e9:.2f} G" if count >= 1e9 else f"{count / 1e6:.{0 if count >= 1e7 else 1}f} M"


def each_text(count):
    return f"{count / 1000:,.{0 if count >= 10000 else 1}f} k"


class Figures:
    """Of the stages that are named: counted and timed when they are made."""

    def __init__(self, runs, stages, kept):
        """`kept`: a file that holds what an earlier run of the same build found out, and takes what this one does."""
        self.counts, self.peaks, self.times, self.written = {}, {}, {}, {}
        self.kept, self.lock = kept, threading.Lock()
        if kept and kept.exists():
            for line in kept.read_text(encoding="utf-8").splitlines():
                self.take(*json.loads(line))
        wanted = sorted(((stage, n) for stage in stages for n in stage.sizes), key=lambda one: -one[1])
        untimed = [(stage, n) for stage, n in wanted if (stage.name, n) not in self.peaks]
        uncounted = [(stage, n) for stage, n in wanted if (stage.name, n) not in self.counts]
        runs.prepare(untimed + uncounted)
        # One after the other, with nothing beside.
        for stage, n in untimed:
            peak, seconds = runs.peak_and_seconds(stage, n)
            self.found("timed", stage.name, n, peak, seconds, runs.written[stage.name, n])
        in_parallel(lambda one: self.found("counted", one[0].name, one[1], runs.instructions(*one)), uncounted)

    def take(self, kind, name, n, *figures):
        if kind == "timed":
            self.peaks[name, n], self.times[name, n], self.written[name, n] = figures
        else:
            self.counts[name, n] = figures[0]

    def found(self, *words):
        with self.lock:
            self.take(*words)
            if self.kept:
                with self.kept.open("a", encoding="utf-8") as file:
                    file.write(json.dumps(words) + "\n")

    def slope(self, figures, stage):
        _, half, full = stage.sizes
        return (figures[stage.name, full] - figures[stage.name, half]) / (full - half)

    def text(self, stage, size, what):
        if what == "each":
            return each_text(self.slope(self.counts, stage))
        if what == "growth":
            return f"{growth([(n, self.counts[stage.name, n]) for n in stage.sizes]):.2f}"
        if what == "peak-each":
            return f"{max(0, self.slope(self.peaks, stage)):.1f} KiB"
        at = stage.name, stage.sizes[-1] if size == "all" else int(size)
        texts = {"instructions": lambda: instructions_text(self.counts[at]), "seconds": lambda: f"{self.times[at]:.2f} s",
                 "peak": lambda: f"{self.peaks[at] / 1024:.0f} MiB", "written": lambda: f"{self.written[at] / 1e6:.1f} MB"}
        return texts[what]()

    def table(self, stages):
        """Rows of stages that have the same sizes."""
        sizes, piece = stages[0].sizes, stages[0].piece
        lines = [f"| | {' | '.join(f'{n:,} {piece}s' for n in sizes)} | one {piece} more | twice | peak |"
                 " memory of one more | seconds |", "|---" * (len(sizes) + 6) + "|"]
        for stage in stages:
            cells = [self.text(stage, n, "instructions") for n in sizes]
            cells += [self.text(stage, "all", what) for what in ("each", "growth", "peak", "peak-each", "seconds")]
            lines.append(f"| {stage.title} | {' | '.join(cells)} |")
        return "\n".join(lines)


class Fillings:
    """What else stands in the document, each looked at once."""

    def __init__(self, build, runs):
        self.build, self.runs = pathlib.Path(build).resolve(), runs

    def machine(self):
        """Processor, compiler and valgrind."""
        cpu = re.search(r"model name\s*: (.*)", pathlib.Path("/proc/cpuinfo").read_text()).group(1)
        compiler = subprocess.run(["g++-12", "-dumpfullversion"], capture_output=True, text=True, check=True).stdout.strip()
        valgrind = subprocess.run(["valgrind", "--version"], capture_output=True, text=True, check=True).stdout.strip()
        return f"{os.cpu_count()} cores of an {cpu}, g++ {compiler}, {valgrind.replace('-', ' ')}"

    def share(self):
        stage = STAGES["prove"]
        self.runs.prepare([(stage, 9999)])
        return f"{1 + self.runs.share_of_looks(stage, 9999):.1f}"

    def times_of_parse(self, size):
        """Reading an OpenTimelineIO edit of so many clips, in times of what RapidJSON alone takes for its text."""
        stage, n = STAGES["read-otio"], int(size)
        self.runs.prepare([(stage, n)])
        return f"{self.runs.instructions(stage, n) / self.runs.instructions_of_parser(stage, n):.2f}"

    @functools.lru_cache(None)
    def steps_of(self, size):
        stage = STAGES["reused-bench"]
        self.runs.prepare([(stage, size)])
        inputs, made = self.runs.made[stage.make, size], self.runs.work / "steps.json"
        subprocess.run([self.runs.program("quillbrook"), "changelist", "--old", inputs / "old.cdb", "--new", inputs / "new.cdb",
                        "-o", self.runs.work / "steps.txt", "--json", made, "--quiet", "--overwrite", "--lists",
                        "changes,bench"], check=True, env=self.runs.environment, capture_output=True)
        return json.loads(made.read_text())["lists"]

    def steps(self, size, name):
        """Steps of the detailed or the bench list of a recut of takes used 35 times."""
        return f"{len(self.steps_of(int(size))[name]):,}"

    @functools.lru_cache(None)
    def benchmarks(self, program, name):
        """What a benchmark program tells of the one of that name."""
        done = subprocess.run([self.build / "bench" / program, f"--benchmark_filter=^{name}(/iterations:1)?$",
                               "--benchmark_format=json"], capture_output=True, text=True, check=True)
        found = json.loads(done.stdout)["benchmarks"]
        if not found:
            raise RunFailed(f"{program} has no {name}")
        return found[0]

    def nanoseconds(self, program, name):
        return f"{self.benchmarks(program, name)['cpu_time']:.0f} ns"

    def proved(self, name):
        """The share of random recuts whose detailed list can be carried out."""
        return f"{100 * self.benchmarks('bench_changes', 'proved_share/' + name)['detailed_proved']:.1f} %"

    @functools.lru_cache(None)
    def tasks(self):
        done = subprocess.run([ROOT / "tests/browser/check_pages.py", self.build / "quillbrook"], capture_output=True,
                              text=True, check=False)
        found = dict(re.findall(r"([a-z][\w %]*?) (\d+)(?: \([^)]*\))?(?:,|$)", done.stdout.partition(" in ms: ")[2].strip()))
        if not found:
            print("measure: the page wasn't opened: " + done.stdout, file=sys.stderr)
        return found

    def browser(self, *what):
        """The longest task of the page's thread, in a browser; where there is none, that it wasn't looked at."""
        found = self.tasks().get(" ".join(what))
        return f"{found} ms" if found else "not measured"


def fill(template, figures, fillings):
    def filled(found):
        words = found.group(1).split()
        if words[0] == "table":
            return figures.table(GROUPS[" ".join(words[1:])])
        if words[0] in STAGES:
            return figures.text(STAGES[words[0]], *words[1:])
        return getattr(fillings, words[0])(*words[1:])
    return re.sub(r"\{\{(.*?)\}\}", filled, template)


def stages_of(template):
    """All that the template asks for."""
    names = dict.fromkeys(STAGES[words[0]] for words in map(str.split, re.findall(r"\{\{(.*?)\}\}", template))
                          if words[0] in STAGES)
    for group in re.findall(r"\{\{table (.*?)\}\}", template):
        names.update(dict.fromkeys(GROUPS[group]))
    return list(names)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("build", nargs="?", default="build/release")
    parser.add_argument("--only", default="", metavar="NAME,...")
    parser.add_argument("--keep", type=pathlib.Path, metavar="FILE")
    options = parser.parse_args()
    if missing_tools():
        raise SystemExit("measure: missing: " + " ".join(missing_tools()) + "; scripts/setup.sh installs them")
    template = TEMPLATE.read_text(encoding="utf-8")
    with tempfile.TemporaryDirectory(prefix="measure-") as work:
        runs = Runs(options.build, work)
        try:
            if options.only:
                for name in options.only.split(","):
                    group = GROUPS.get(name) or [STAGES[name]]
                    print(Figures(runs, group, options.keep).table(group), flush=True)
                return 0
            text = fill(template, Figures(runs, stages_of(template), options.keep), Fillings(options.build, runs))
        except RunFailed as failure:
            raise SystemExit(f"measure: {failure}") from None
    DOCUMENT.write_text(text, encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main())
