"""Counts what runs of the command cost: instructions by valgrind, peak memory and processor time by time(1)."""
import concurrent.futures
import glob
import itertools
import os
import pathlib
import re
import shlex
import shutil
import subprocess

NEEDED = ("valgrind", "/usr/bin/time")


class RunFailed(Exception):
    """A run that didn't do what it should."""


def counting(told, within=""):
    """The words that have valgrind count instructions into a file: all, or those of a function and what it calls."""
    tool = ["--tool=cachegrind", "--cache-sim=no", "--cachegrind-out-file=/dev/null"]
    if within:
        tool = ["--tool=callgrind", "--callgrind-out-file=/dev/null", f"--toggle-collect={within}"]
    return ["valgrind", f"--log-file={told}", *tool]


def counted(told, name):
    found = re.search(r"(?:I\s+refs:|Collected :)\s+([\d,]+)", told.read_text())
    count = int(found.group(1).replace(",", "")) if found else 0
    if count == 0:
        raise RunFailed(f"{name}: valgrind counted nothing")
    return count


class Runs:
    """Makes inputs and runs stages in a scratch folder."""

    def __init__(self, build, work):
        self.build, self.work = pathlib.Path(build).resolve(), pathlib.Path(work)
        self.made, self.numbers = {}, itertools.count()
        self.written = {}  # bytes of the file that came of a stage
        self.environment = {**os.environ, "SOURCE_DATE_EPOCH": "0", "TZ": "UTC", "LC_ALL": "C", "TMPDIR": str(self.work)}
        self.environment.pop("XDG_CONFIG_HOME", None)

    def words(self, line, folder, n, inputs=""):
        """Of a line: the program, its words, and the file that takes what it prints."""
        words = shlex.split(line.replace("{n20}", str(n // 20)).replace("{n}", str(n)).replace("{in}", str(inputs)))
        output = None
        if ">" in words:
            output = folder / words.pop()
            words.remove(">")
        found = []
        for word in words:
            found += sorted(glob.glob(word, root_dir=folder)) if "*" in word else [word]
        return found, output

    def program(self, name):
        return self.build / name if name == "quillbrook" else self.build / "bench" / name

    def prepare(self, wanted):
        """Makes the inputs of all (stage, n), each once, side by side."""
        keys = dict.fromkeys((stage.make, n) for stage, n in wanted)
        missing = {key: self.work / f"in{next(self.numbers)}" for key in keys if key not in self.made}
        in_parallel(lambda one: self.make(one[0][0], one[0][1], one[1]), missing.items())
        self.made.update(missing)

    def make(self, lines, n, folder):
        folder.mkdir()
        for line in lines:
            words, output = self.words(line, folder, n)
            if words[0] == "folder":
                (folder / words[1]).mkdir()
                continue
            with open(output or os.devnull, "wb") as out:
                done = subprocess.run([self.program(words[0]), *words[1:]], cwd=folder, env=self.environment,
                                      stdout=out, stderr=subprocess.PIPE, check=False)
            if done.returncode != 0:
                raise RunFailed(f"{line}: {done.stderr.decode()[-500:]}")

    def run(self, stage, n, around, mark):
        """Runs the stage under the words of `around`."""
        inputs = self.made[stage.make, n]
        folder = self.work / f"{stage.name}-{n}-{mark}"
        folder.mkdir()
        words, _ = self.words(stage.run, folder, n, inputs)
        done = subprocess.run([*around, self.program("quillbrook"), *words], cwd=folder, env=self.environment, check=False,
                              capture_output=True)
        made = folder / stage.makes
        there = made.exists() if stage.makes else done.stdout.strip() or done.stderr.strip()
        self.written[stage.name, n] = made.stat().st_size if stage.makes and there else 0
        shutil.rmtree(folder)
        if done.returncode not in stage.statuses or not there:
            raise RunFailed(f"{stage.name}, {n} pieces: status {done.returncode}: {done.stderr.decode()[-500:]}")

    def instructions(self, stage, n):
        told = self.work / f"{stage.name}-{n}.told"
        self.run(stage, n, counting(told, stage.within), "counted")
        return counted(told, stage.name)

    def instructions_of_parser(self, stage, n):
        """What another parser makes of the edit that the stage reads."""
        told = self.work / f"{stage.name}-{n}.parser"
        edit = next(self.made[stage.make, n].iterdir())
        subprocess.run([*counting(told, "own_parse*"), self.program("parse_json"), edit], check=True)
        return counted(told, "parse_json")

    def share_of_looks(self, stage, n):
        """What is found, the list of doubts and the proof, as a share of reading the edit and making its lists."""
        told = self.work / "calls"
        self.run(stage, n, ["valgrind", "-q", "--tool=callgrind", f"--callgrind-out-file={told}"], "shared")
        names = (("tool::open_edit", "make_cutlist_from_edit"),
                 ("tool::check_film", "tool::film_of_edit", "tool::prove_lists", "tool::add_doubts"))
        lines = subprocess.run(["callgrind_annotate", "--inclusive=yes", "--threshold=100", told], capture_output=True,
                               text=True, check=True).stdout.splitlines()
        sums = []
        for group in names:
            pattern = re.compile(r"\s*([\d,]+) .*?:(" + "|".join(group) + r")\(")
            found = dict((match.group(2), int(match.group(1).replace(",", ""))) for match in map(pattern.match, reversed(lines))
                         if match)
            sums.append(sum(found.values()))
        if not all(sums):
            raise RunFailed(f"{stage.name}: callgrind saw none of {names}")
        return sums[1] / sums[0]

    def peak_and_seconds(self, stage, n):
        """KiB, and seconds of the processor."""
        told = self.work / f"{stage.name}-{n}.time"
        self.run(stage, n, ["/usr/bin/time", "-q", "-f", "%M %U %S", "-o", told], "timed")
        peak, user, system = told.read_text().split()[-3:]
        return int(peak), float(user) + float(system)


def growth(counts):
    """Times for twice as much, of (pieces, instructions) of three runs, had the least one cost nothing."""
    (least, at_least), (half, at_half), (full, at_full) = counts
    first = (at_half - at_least) / (half - least)
    second = (at_full - at_half) / (full - half)
    return 1 + second / first


def in_parallel(work, items):
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        return list(pool.map(work, items))


def missing_tools():
    return [name for name in NEEDED if not shutil.which(name)]
