#!/usr/bin/env python3
"""Breaks runs of the command at every system call on files, and looks at what they leave.

usage: scripts/faults/run_faults.py QUILLBROOK [--step N] [--kinds EIO,KILL,...] [--pairs N]

Each command first runs once over old outputs, to learn the new ones and the number of its calls. Then the n-th call
of each kind fails, for every n (or every N-th with --step): with an error, in part, or by the death of the process.
After each run the outputs must be the old set or the new one, whole; after one that died, once the next run has looked
into the folder. A run that fails must name a file and a cause, one that succeeds must have made the new set, and the
folder and TMPDIR must then hold nothing else. Prints the counts, and exits with 1 at any fault.
"""
import argparse, os, re, shutil, subprocess, sys, tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(os.path.dirname(HERE))
CALLS = ["open", "read", "write", "fsync", "close", "rename", "link", "mkdir", "unlink", "chmod"]
ERRORS = ["EIO", "ENOSPC", "EACCES", "EINTR", "SHORT"]
CAUSE = re.compile(r": (Input/output error|No space left on device|Permission denied|Interrupted system call)"
                   r"|couldn't be|isn't a whole|Unable to|cut off|names no file|no such directory")


class Bench:
    """A folder with inputs and old outputs that is made anew before each run."""

    def __init__(self, name, inputs, arguments, old):
        self.name, self.inputs, self.arguments, self.old = name, inputs, arguments, old
        self.top = tempfile.mkdtemp(prefix="faults-")
        self.out, self.tmp = os.path.join(self.top, "out"), os.path.join(self.top, "tmp")
        self.counter = os.path.join(self.top, "count")

    def fill(self):
        for folder in (self.out, self.tmp):
            shutil.rmtree(folder, ignore_errors=True)
            os.mkdir(folder)
        for path in self.inputs:
            shutil.copy(path, self.top)
        for name, text in self.old.items():
            with open(os.path.join(self.out, name), "w") as file:
                file.write(text)

    def run(self, call="", at=0, kind=""):
        environment = {"PATH": os.environ["PATH"], "LC_ALL": "C", "TZ": "UTC", "SOURCE_DATE_EPOCH": "0",
                       "TMPDIR": self.tmp, "LD_PRELOAD": SHIM, "FAULT_UNDER": self.top, "FAULT_COUNT": self.counter}
        if call:
            environment.update(FAULT_CALL=call, FAULT_AT=str(at), FAULT_WITH=kind or "EIO")
        return subprocess.run([TOOL] + self.arguments, cwd=self.top, env=environment, capture_output=True, text=True)

    def calls(self, call):
        self.fill()
        self.run(call, 0)
        with open(self.counter) as file:
            return int(file.read())

    def outputs(self):
        found = {}
        for folder, _, names in os.walk(self.out):
            for name in names:
                with open(os.path.join(folder, name), "rb") as file:
                    found[os.path.relpath(os.path.join(folder, name), self.out)] = file.read()
        return found

    def new_set(self):
        self.fill()
        result = self.run()
        assert result.returncode == 0, (self.name, result)
        return self.outputs()

    def leftovers(self):
        beside = [n for n in os.listdir(self.out) if n.startswith(".quillbrook")]
        return beside + os.listdir(self.tmp)


def judge(bench, old, new, result, call, at, kind):
    """What is wrong with what a broken run left; nothing where all is well."""
    killed = result.returncode == -9
    # What can't be removed, or wasn't, goes with the next run.
    if killed or call in ("unlink", "open"):
        look = look_into(bench)
        if look.returncode != 0:
            return "the next run ended with %d: %s" % (look.returncode, look.stderr.strip())
    found = {n: b for n, b in bench.outputs().items() if n != "next.txt"}
    if found not in (old, new):
        return "neither the old nor the new set: %s" % sorted(found)
    if bench.leftovers():
        return "left over: %s" % bench.leftovers()
    if killed:
        return ""
    if result.returncode == 0 and found != new:
        return "status 0 with the old set"
    if result.returncode != 0 and found != old:
        return "status %d with the new set" % result.returncode
    if result.returncode < 0:
        return "ended by signal %d" % -result.returncode
    if result.returncode != 0 and not CAUSE.search(result.stderr):
        return "no cause told: %r" % result.stderr
    if result.returncode != 0 and kind in ("EINTR", "SHORT"):
        return "%s isn't survived: %r" % (kind, result.stderr)
    return ""


def look_into(bench):
    """The next run in the folder: another command with an output of its own there."""
    table = os.path.join(ROOT, "examples/reel/expected/reel.cdb")
    environment = {"PATH": os.environ["PATH"], "LC_ALL": "C", "TZ": "UTC", "SOURCE_DATE_EPOCH": "0", "TMPDIR": bench.tmp}
    return subprocess.run([TOOL, "print", table, "-o", "out/next.txt", "--overwrite", "--quiet", "--lists", "rolls"],
                          cwd=bench.top, env=environment, capture_output=True, text=True)


def benches():
    examples = os.path.join(ROOT, "examples")
    recut = [os.path.join(examples, "recut/expected", n) for n in ("weir-old-r1.cdb", "weir-new-r1.cdb")]
    old = {"r.txt": "old report\n", "r.cdb": "old table\n"}
    return [
        Bench("cutlist", [examples + "/25fps/market.otio"],
              ["cutlist", "market.otio", "-o", "out/r.txt", "--overwrite", "--quiet", "--set", "fsl_type3_file=1"],
              dict(old, **{"r.sl3": "old list\n"})),
        Bench("print", [examples + "/25fps/expected/market.cdb"],
              ["print", "market.cdb", "-o", "out/r.txt", "--overwrite", "--quiet"], {"r.txt": "old report\n"}),
        Bench("changelist", recut,
              ["changelist", "--old", "weir-old-r1.cdb", "--new", "weir-new-r1.cdb", "-o", "out/r.txt", "--json",
               "out/r.json", "--lists-dir", "out", "--overwrite", "--quiet"],
              {"r.txt": "old report\n", "r.json": "old steps\n", "oldcut__.chg": "old\n", "newcut__.chg": "old\n"}),
        Bench("log import", [examples + "/edl/days.ale"],
              ["log", "import", "days.ale", "-o", "out/r.RDB", "--overwrite", "--quiet"], {"r.RDB": "old table\n"}),
    ]


def break_calls(step, kinds):
    runs = faults = 0
    for bench in benches():
        new = bench.new_set()
        old = {n: t.encode() for n, t in bench.old.items()}
        for call in CALLS:
            count = bench.calls(call)
            for kind in kinds:
                if kind == "SHORT" and call not in ("read", "write"):
                    continue
                for at in range(1, count + 1, step):
                    bench.fill()
                    result = bench.run(call, at, kind)
                    runs += 1
                    wrong = judge(bench, old, new, result, call, at, kind)
                    if wrong:
                        faults += 1
                        print("%s: %s of %s %d/%d: %s" % (bench.name, kind, call, at, count, wrong))
        print("%s: done" % bench.name, flush=True)
        shutil.rmtree(bench.top)
    print("%d broken runs, %d faults" % (runs, faults))
    return faults


def pairs(count):
    """Two runs at once on shared names: each must be right or refused."""
    faults = refused = 0
    recut = os.path.join(ROOT, "examples/recut/expected")
    table = lambda name: os.path.join(recut, name)
    top = tempfile.mkdtemp(prefix="pairs-")
    shutil.copy(os.path.join(ROOT, "examples/25fps/market.otio"), top)
    shutil.copy(os.path.join(ROOT, "examples/3perf/harbour.otio"), top)

    def change(old, new, report):
        return ["changelist", "--old", table(old), "--new", table(new), "-o", report, "--lists-dir", "lists",
                "--overwrite", "--quiet"]

    shapes = {
        "changelists with one --lists-dir": ([change("weir-old-r1.cdb", "weir-new-r1.cdb", "a.txt"),
                                              change("weir-old-r2.cdb", "weir-new-r2.cdb", "b.txt")],
                                             ["a.txt", "b.txt"]),
        "cutlists whose tables share a name": ([["cutlist", "market.otio", "-o", "r.txt", "--overwrite", "--quiet"],
                                                ["cutlist", "harbour.otio", "-o", "r.lst", "--overwrite", "--quiet"]],
                                               ["r.txt", "r.lst"]),
        "one output": ([["cutlist", "market.otio", "-o", "o.txt", "--overwrite", "--quiet"],
                        ["cutlist", "harbour.otio", "-o", "o.txt", "--overwrite", "--quiet"]], ["o.txt", "o.txt"]),
    }
    environment = {"PATH": os.environ["PATH"], "LC_ALL": "C", "TZ": "UTC", "SOURCE_DATE_EPOCH": "0", "TMPDIR": top}

    def read(name):
        with open(os.path.join(top, name), "rb") as file:
            return file.read()

    for shape, (commands, reports) in shapes.items():
        os.makedirs(os.path.join(top, "lists"), exist_ok=True)
        alone = []
        for command, report in zip(commands, reports):
            subprocess.run([TOOL] + command, cwd=top, env=environment, check=True)
            stem = os.path.splitext(report)[0] + ".cdb"
            alone.append((read(report), read(stem) if command[0] == "cutlist" else b""))
        wrong = 0
        for _ in range(count):
            running = [subprocess.Popen([TOOL] + c, cwd=top, env=environment, stdout=subprocess.DEVNULL,
                                        stderr=subprocess.PIPE, text=True) for c in commands]
            told = [(p.communicate()[1], p.returncode) for p in running]
            refused += sum(1 for text, status in told if status == 1 and "another run" in text)
            good = all(status == 0 or "another run" in text for text, status in told)
            if reports[0] != reports[1]:
                good = good and all(status != 0 or read(r) == a[0] for (_, status), r, a in zip(told, reports, alone))
            else:
                good = good and (read(reports[0]), read("o.cdb")) in alone
            if shape.startswith("cutlists"):
                good = good and read("r.cdb") in (alone[0][1], alone[1][1])
            good = good and not [n for n in os.listdir(top) if n.startswith((".quillbrook", "quillbrook-"))]
            wrong += 0 if good else 1
        print("%d pairs of %s: %d wrong" % (count, shape, wrong), flush=True)
        faults += wrong
    print("%d runs refused as another had the output" % refused)
    shutil.rmtree(top)
    return faults


def build_shim():
    path = os.path.join(tempfile.mkdtemp(prefix="shim-"), "fault_shim.so")
    subprocess.run(["cc", "-shared", "-fPIC", "-O1", "-o", path, os.path.join(HERE, "fault_shim.c"), "-ldl"], check=True)
    return path


parser = argparse.ArgumentParser()
parser.add_argument("tool")
parser.add_argument("--step", type=int, default=1)
parser.add_argument("--kinds", default=",".join(ERRORS + ["KILL"]))
parser.add_argument("--pairs", type=int, default=0)
options = parser.parse_args()
TOOL = os.path.abspath(options.tool)
SHIM = build_shim()
faults = break_calls(options.step, options.kinds.split(",")) if options.step else 0
faults += pairs(options.pairs) if options.pairs else 0
sys.exit(1 if faults else 0)
