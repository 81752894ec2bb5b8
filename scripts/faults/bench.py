"""A folder with inputs and old outputs for a run of the command, and what may become of it: what the scripts beside
this one share."""
import argparse, os, re, shutil, subprocess, sys, tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(os.path.dirname(HERE))
EXAMPLES = os.path.join(ROOT, "examples")
TABLE = os.path.join(EXAMPLES, "reel/expected/reel.cdb")
PLAIN = {"PATH": os.environ["PATH"], "LC_ALL": "C", "TZ": "UTC", "SOURCE_DATE_EPOCH": "0"}
OWN_NAMES = (".quillbrook", "quillbrook-")
# One of these stands in a message that names a file.
FILES = ("out/", "r.", "cut__.chg", "quillbrook-", "bench-", "market.", "weir-", "days.", "crossing.", "had.json")


def can_be(user, tool):
    """Whether the command can be run as another user: only by root, and where its folders are open to all."""
    if os.geteuid() != 0:
        return False
    try:
        run = subprocess.run([os.path.abspath(tool), "--version"], user=user, group=user, extra_groups=[], cwd="/",
                             stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
        return run.returncode == 0
    except (PermissionError, FileNotFoundError):
        return False


class Bench:
    """`arguments` is a line of the command that makes files in "out"; `old` are those that stand there before."""

    def __init__(self, tool, name, inputs, arguments, old):
        self.tool, self.name, self.inputs, self.arguments, self.old = tool, name, inputs, arguments, old
        # An edit that tells no date has that of its file.
        self.dated = name.startswith(("cutlist", "export"))
        self.top = tempfile.mkdtemp(prefix="bench-")
        self.out, self.tmp = os.path.join(self.top, "out"), os.path.join(self.top, "tmp")
        for path in inputs:
            shutil.copy2(path, self.top)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        shutil.rmtree(self.top)

    def fill(self):
        """The old outputs anew, and nothing else."""
        for folder in (self.out, self.tmp):
            os.makedirs(folder, exist_ok=True)
            for name in os.listdir(folder):
                path = os.path.join(folder, name)
                shutil.rmtree(path) if os.path.isdir(path) and not os.path.islink(path) else os.remove(path)
        for name, text in self.old.items():
            os.makedirs(os.path.dirname(os.path.join(self.out, name)), exist_ok=True)
            with open(os.path.join(self.out, name), "w") as file:
                file.write(text)

    def environment(self, more):
        return dict(PLAIN, TMPDIR=self.tmp, **more)

    def run(self, environment={}, **more):
        return self.run_line(self.arguments, environment, **more)

    def run_line(self, arguments, environment={}, **more):
        if "stdout" not in more:
            more.update(capture_output=True)
        return subprocess.run([self.tool] + arguments, cwd=self.top, env=self.environment(environment), text=True,
                              errors="replace", timeout=120, **more)

    def folders(self):
        """Of the outputs, each below "out"."""
        inner = {os.path.dirname(name) for name in self.old} - {""}
        return [self.out] + [os.path.join(self.out, name) for name in sorted(inner)]

    def look_into(self):
        """The next run in the folders: another command with an output of its own there, which then goes."""
        for folder in self.folders():
            next_output = os.path.join(folder, "next.txt")
            result = self.run_line(["print", TABLE, "-o", next_output, "--overwrite", "--quiet", "--lists", "rolls"])
            if result.returncode != 0:
                break
            os.remove(next_output)
        return result

    def outputs(self):
        found = {}
        for folder, _, names in os.walk(self.out):
            for name in names:
                path = os.path.join(folder, name)
                if os.path.isfile(path):
                    with open(path, "rb") as file:
                        found[os.path.relpath(path, self.out)] = file.read()
        return found

    def old_set(self):
        return {name: text.encode() for name, text in self.old.items()}

    def new_set(self):
        self.fill()
        result = self.run()
        assert result.returncode == 0, (self.name, result)
        return self.outputs()

    def leftovers(self):
        return [n for folder in self.folders() for n in os.listdir(folder) if n.startswith(OWN_NAMES)] + os.listdir(self.tmp)


def earlier_order(tool):
    """Of the recut's first version."""
    path = os.path.join(tempfile.mkdtemp(prefix="had-"), "had.json")
    subprocess.run([tool, "order", EXAMPLES + "/recut/weir-old-r1.otio", "-o", path + ".txt", "--json", path, "--quiet",
                    "--build-rolls", "400"], check=True)
    return path


def later_benches(tool):
    """Commands on edits of several formats, and with many outputs."""
    crossing, recut = EXAMPLES + "/formats/crossing", EXAMPLES + "/recut/weir-"
    pages = {"r.html": "old pages\n", "r.json": "old lists\n", "r.text": "old\n", "csv/assembly.csv": "old rows\n",
             "svg/reel.svg": "old drawing\n"}
    old = {"r.txt": "old report\n"}
    return [
        Bench(tool, "cutlist with pages", [crossing + ".aaf"],
              ["cutlist", "crossing.aaf", "-o", "out/r.txt", "--html", "out/r.html", "--csv", "out/csv", "--json",
               "out/r.json", "--text", "out/r.text", "--svg", "out/svg", "--overwrite", "--quiet"],
              dict(old, **{"r.cdb": "old table\n"}, **pages)),
        Bench(tool, "changelist of edits", [recut + "old-r1.otio", recut + "new-r1.otio"],
              ["changelist", "--old", "weir-old-r1.otio", "--new", "weir-new-r1.otio", "-o", "out/r.txt", "--html",
               "out/r.html", "--overwrite", "--quiet"], dict(old, **{"r.html": "old pages\n"})),
        Bench(tool, "order", [recut + "new-r1.otio", earlier_order(tool)],
              ["order", "weir-new-r1.otio", "--had", "had.json", "-o", "out/r.txt", "--json", "out/r.json",
               "--overwrite", "--quiet"], dict(old, **{"r.json": "old order\n"})),
        Bench(tool, "order for scanners", [recut + "old-r1.otio"],
              ["order", "weir-old-r1.otio", "-o", "out/r.txt", "--edl", "out/r.edl", "--ale", "out/r.ale", "--otio",
               "out/r.otio", "--cut-file", "out/r.cut", "--build-rolls", "100", "--overwrite", "--quiet"],
              dict(old, **{"r.edl": "old events\n", "r.cut": "old shots\n"})),
        Bench(tool, "conform", [recut + "old-r1.otio"],
              ["conform", "weir-old-r1.otio", "--cut", "weir-old-r1.otio", "-o", "out/r.txt", "--json", "out/r.json",
               "--overwrite", "--quiet"], dict(old, **{"r.json": "old conflicts\n"})),
        Bench(tool, "export of new rolls", [recut + "old-r1.otio", earlier_order(tool)],
              ["export", "weir-old-r1.otio", "--on-rolls", "had.json", "--as", "otio", "-o", "out/r.otio", "--overwrite",
               "--quiet"], {"r.otio": "old edit\n"}),
    ] + [Bench(tool, "export of " + kind, [crossing + kind],
               ["export", "crossing" + kind, "-o", "out/r.otio", "--as", "otio", "--overwrite", "--quiet"],
               {"r.otio": "old edit\n"}) for kind in (".xml", ".fcpxml", ".aaf")]


def benches(tool):
    """Commands that make files."""
    recut = [os.path.join(EXAMPLES, "recut/expected", n) for n in ("weir-old-r1.cdb", "weir-new-r1.cdb")]
    old = {"r.txt": "old report\n", "r.cdb": "old table\n"}
    return [
        Bench(tool, "cutlist", [EXAMPLES + "/25fps/market.otio"],
              ["cutlist", "market.otio", "-o", "out/r.txt", "--overwrite", "--quiet", "--set", "fsl_type3_file=1"],
              dict(old, **{"r.sl3": "old list\n"})),
        Bench(tool, "print", [EXAMPLES + "/25fps/expected/market.cdb"],
              ["print", "market.cdb", "-o", "out/r.txt", "--overwrite", "--quiet"], {"r.txt": "old report\n"}),
        Bench(tool, "changelist", recut,
              ["changelist", "--old", "weir-old-r1.cdb", "--new", "weir-new-r1.cdb", "-o", "out/r.txt", "--json",
               "out/r.json", "--lists-dir", "out", "--overwrite", "--quiet"],
              {"r.txt": "old report\n", "r.json": "old steps\n", "oldcut__.chg": "old\n", "newcut__.chg": "old\n"}),
        Bench(tool, "log import", [EXAMPLES + "/edl/days.ale"],
              ["log", "import", "days.ale", "-o", "out/r.RDB", "--overwrite", "--quiet"], {"r.RDB": "old table\n"}),
    ] + later_benches(tool)


def wrong_set(bench, old, new, result):
    """What is wrong with the files of a run that ended by itself; empty where nothing is."""
    found = bench.outputs()
    if result.returncode < 0:
        return "ended by signal %d" % -result.returncode
    if found not in (old, new):
        return "neither the old nor the new set: %s%s" % (sorted(found), result.stderr)
    if bench.leftovers():
        return "left over: %s" % bench.leftovers()
    if found != (new if result.returncode == 0 else old):
        return "status %d with the %s set" % (result.returncode, "old" if result.returncode == 0 else "new")
    return ""


def untold(result, cause, names=FILES):
    """What is missing in the message of a run that failed: the file, or the cause."""
    if result.returncode == 0:
        return ""
    if not re.search(cause, result.stderr):
        return "no cause told: %r" % result.stderr
    return "" if any(name in result.stderr for name in names) else "no file told: %r" % result.stderr


class Count:
    """Of the runs, and of those with a fault."""

    def __init__(self):
        self.runs = self.faults = 0

    def take(self, what, wrong):
        self.runs += 1
        if wrong:
            self.faults += 1
            print("%s: %s" % (what, wrong), flush=True)

    def end(self, what):
        print("%s: %d runs, %d faults" % (what, self.runs, self.faults), flush=True)
        sys.exit(1 if self.faults else 0)


def options_of(doc, *more):
    parser = argparse.ArgumentParser(description=doc.split("\n")[0])
    parser.add_argument("tool", type=os.path.abspath)
    for names, settings in more:
        parser.add_argument(names, **settings)
    return parser.parse_args()


def built(source, compiler, *flags):
    """A library to be preloaded into the command."""
    path = os.path.join(tempfile.mkdtemp(prefix="shim-"), "shim.so")
    subprocess.run([compiler, "-shared", "-fPIC", "-O1", "-o", path, os.path.join(HERE, source)] + list(flags), check=True)
    return path
