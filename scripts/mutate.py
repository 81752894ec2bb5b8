#!/usr/bin/env python3
"""Makes single changes in the sources, one at a time, and tells which of them no test notices.

    cmake --build --preset release              # whose objects of library and tests are used
    scripts/mutate.py --sample 300 --seed 1     # goes on where an earlier campaign stopped
    scripts/mutate.py --survivors               # tries those again that survived, after tests were added
    scripts/mutate.py --list changelist/proof/proof.cpp

No source is edited: a changed copy is compiled in build/mutants/, and linked in front of the archive of all others,
or instead of its object, so a change costs one compilation and the test programs that notice it last. A program that runs three times as long
as it should, crashes or takes 2 GB has noticed too. Survivors are told again at the end, with their lines.
"""

import argparse
import collections
import functools
import json
import os
import pathlib
import random
import re
import resource
import shlex
import shutil
import signal
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent

# Folder of sources, then the test programs that look at it, the nearest first.
WATCHERS = {
    "base": "reports generator changelist logging single_layer tool",
    "cutlist": "generator shots single_layer cross_checks host_seam golden tool",
    "reports": "reports report_lists single_layer generator golden cross_checks changelist tool",
    "changelist": "changelist golden cross_checks host_seam tool",
    "logging": "logging shots logs host_seam golden tool",
    "formats/edl": "edl export golden tool",
    "formats/fcpxml": "fcpxml",
    "formats/fcp7xml": "fcp7xml",
    "formats/otio": "otio export golden tool",
    "formats/timeline": "otio fcp7xml golden",
    "formats/xml": "xml fcp7xml",
    "formats/logs": "logs export edl golden tool",
    "formats/scans": "scans orders",
    "formats/aaf": "aaf compound tool",
    "formats/compound": "compound aaf",
    "formats/bundle": "bundle otio tool",
    "formats": "file_kind json edl otio fcpxml aaf export logs scans orders tool",  # what lies in none of those
    "film": "film list_proof orders conform export documents fcpxml tool",
    "embedded": "edit_model services recdb film logging edl labels failures export generator otio golden changelist tool",
    "documents": "documents orders conform tool",
    "tool": "orders tool",
}
SLOW = "*TenThousand*"
NOT_TRIED = {"base/allocation.cpp"}  # linked into the shared library alone

Change = collections.namedtuple("Change", "file kind start end old new")


# ---- the changes that a source can have

@functools.cache
def text_of(file):
    """As it stood when it was first asked for: whoever goes on working doesn't disturb a campaign."""
    return (ROOT / file).read_text()


def blank_out(text):
    """The text with comments, literals and directives as blanks: what is left is code, in its old place."""
    pattern = re.compile(r'//[^\n]*|/\*.*?\*/|R"\(.*?\)"|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'|^[ \t]*#[^\n]*',
                         re.S | re.M)
    return pattern.sub(lambda m: re.sub(r"[^\n]", " ", m.group()), text)


OPERATORS = {
    "==": ["!="], "!=": ["=="], "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"],
    "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["/"], "&&": ["||"], "||": ["&&"], "&": ["|"], "|": ["&"],
    "<<": [">>"], ">>": ["<<"], "+=": ["-="], "-=": ["+="], "|=": ["&="], "&=": ["|="], "*=": ["/="],
}

# Words that stand for two sides of a thing, as whole names or as parts of them.
PAIRS = {a: b for pair in ("in out", "first second", "old new", "from to", "begin end", "front back", "min max",
                           "before behind", "lower upper", "true false", "start end", "left right")
         for a, b in (pair.split(), pair.split()[::-1])}


def operators(code):
    for m in re.finditer(r" (==|!=|<=|>=|&&|\|\||<<|>>|\+=|-=|\|=|&=|\*=|[-<>+*/%&|]) ", code):
        for new in OPERATORS[m[1]]:
            yield "operator", m.start(1), m.end(1), new
    for m in re.finditer(r"\+\+(?=[\w(*])|(?<=\w)\+\+|--(?=[\w(*])|(?<=\w)--", code):
        yield "operator", m.start(), m.end(), "--" if m[0] == "++" else "++"
    for m in re.finditer(r"(?<![\w)])!(?=[\w(*:])", code):
        yield "negation", m.start(), m.end(), ""


def constants(code):
    for m in re.finditer(r"(?<![\w.'])(\d+)(U|L|UL|LL)?(?![\w.'])", code):
        if re.search(r"\b(char|wchar_t) \w+\[$", code[:m.start()][-60:]):
            continue  # room that nothing fills
        value, suffix = int(m[1]), m[2] or ""
        yield "constant", m.start(), m.end(), f"{value + 1}{suffix}"
        yield "constant", m.start(), m.end(), f"{value - 1}{suffix}" if value or not suffix else f"~0{suffix}"


def closing(code, at):
    """Where the bracket at `at` is closed."""
    depth = 0
    for i in range(at, len(code)):
        depth += code[i] in "([{"
        depth -= code[i] in ")]}"
        if depth == 0:
            return i
    return len(code) - 1


def conditions(code, text):
    for m in re.finditer(r"\bif \(", code):
        end = closing(code, m.end() - 1)
        if ";" in code[m.end():end]:
            continue
        yield "condition", m.end(), end, f"!({{}})"
        leaves = re.compile(r"\)\s*(return[^;]*|continue|break);").match(code, end)
        if leaves and not re.match(r"\s*else\b", code[leaves.end():]):
            yield "early leave", m.start(), leaves.end(), ";"
    for m in re.finditer(r" \? ([^?:;]+?) : ([^?:;,()]+(?:\([^()]*\))?)(?=[;,)])", code):
        yield "sides", m.start(1), m.end(2), f"{text[slice(*m.span(2))]} : {text[slice(*m.span(1))]}"


def statements(code):
    word = r"[A-Za-z_][\w:]*"
    plain = re.compile(rf"[ \t]+((?:\*|\+\+|--)?(?!return\b|delete\b){word}(?:\.|->|\(|\[|\+\+|--| [-+|&*]?= )[^;{{}}]*;)\n")
    for m in re.finditer(r"(?<=[;{})])[ \t]*\n(?=[ \t])", code):
        statement = plain.match(code, m.end())
        if statement and statement[1].count("(") == statement[1].count(")"):
            yield "statement", statement.start(1), statement.end(1), ";"
    for m in re.finditer(r"\) ((?!return|continue|break)" + word + r"[^;{}()]*(?:\([^;{}]*\))?;)\n", code):
        yield "statement", m.start(1), m.end(1), ";"


def arguments(code, text):
    for m in re.finditer(r"(?<=\w)\(([^(){};,]+), ([^(){};,]+)(?=[,)])", code):
        if m[1] != m[2] and not re.match(r"(const\b|int |double |char |unsigned |[\w:<>]+[&*]? \w+$)", m[1]):
            yield "arguments", m.start(1), m.end(2), f"{text[slice(*m.span(2))]}, {text[slice(*m.span(1))]}"


def sibling_names():
    """Each enumerator, and each field of a struct behind a dot, with the next of its kind."""
    siblings = {}
    for folder in ("host", "include", *WATCHERS):
        for header in sorted((ROOT / folder).rglob("*.h")):
            code = blank_out(header.read_text())
            for m in re.finditer(r"\benum[^{;]*\{([^}]*)\}", code):
                link(siblings, re.findall(r"(?:^|,)\s*(\w+)", m[1]))
            for m in re.finditer(r"\bstruct \w+[^;{(]*\{", code):
                of_type = collections.defaultdict(list)
                body = code[m.end():closing(code, m.end() - 1)]
                for field in re.finditer(r"^\s+([\w:<>*]+(?: [\w:<>*]+)?) (\w+(?:, \w+)*)(?: = [^;()]*|\[\w+\])?;", body, re.M):
                    of_type[field[1]] += field[2].split(", ")
                for fields in of_type.values():
                    link(siblings, ["." + field for field in fields])
    return siblings


def link(siblings, names):
    for name, after in zip(names, names[1:] + names[:1]):
        if name != after:
            siblings[name] = after


def names(code, siblings):
    for m in re.finditer(r"\b[A-Za-z_]\w*\b", code):
        dot = "." if re.search(r"(\.|->)$", code[max(0, m.start() - 2):m.start()]) else ""
        if dot + m[0] in siblings:
            yield "name", m.start(), m.end(), siblings[dot + m[0]].lstrip(".")
        parts = m[0].split("_")
        swapped = "_".join(PAIRS.get(part, part) for part in parts)
        if swapped != m[0]:
            yield "name", m.start(), m.end(), swapped


def changes_of(file, siblings):
    text = text_of(file)
    code = blank_out(text)
    found = [*operators(code), *constants(code), *conditions(code, text), *statements(code),
             *arguments(code, text),
             *names(code, siblings)]
    for kind, start, end, new in found:
        old = text[start:end]
        yield Change(file, kind, start, end, old, new.replace("{}", old))


def all_changes(folders):
    siblings = sibling_names()
    files = dict.fromkeys(NOT_TRIED)
    for folder in folders:
        place = ROOT / folder
        sources = [place] if place.is_file() else sorted(place.rglob("*.cpp"))
        for file in (str(source.relative_to(ROOT)) for source in sources):
            if file not in files:
                yield from changes_of(file, siblings)
            files[file] = None


# ---- objects of a build, and programs made of them with one source changed

class Workshop:
    """A copy of a build's objects, so that a later build doesn't disturb a campaign."""

    def __init__(self, build, place):
        self.build, self.place = build, place
        shutil.rmtree(place / "now", ignore_errors=True)
        (place / "now").mkdir(parents=True)
        entries = json.loads((build / "compile_commands.json").read_text())
        self.commands = {os.path.relpath(entry["file"], ROOT): entry for entry in entries}
        self.seconds, self.kept, self.replaced = {}, set(), None
        self.linker = ["-fuse-ld=" + next(n for n in ("lld", "gold", "bfd") if shutil.which("ld." + n))]
        everything = self.keep(build / "libquillbrook_everything.a")
        self.parts = {name: self.parts_of("tests/test_" + name) for name in set(" ".join(WATCHERS.values()).split())}
        objects, _ = self.parts_of("quillbrook")  # of objects alone; what it loads itself lies in the build
        self.command = objects, [everything, *self.parts["tool"][1], f"-Wl,-rpath,{build}"]

    def parts_of(self, program):
        """What a program is linked of: objects, then archives and libraries."""
        commands = run(["ninja", "-C", str(self.build), "-t", "commands", program], ROOT, 60).stdout.decode()
        words = shlex.split(commands.splitlines()[-1].split(" && ")[1])[1:]
        ours = [self.keep(self.build / w) for w in words if w.endswith((".o", ".a")) and not w.startswith("/")]
        others = [w for w in words if w.startswith("/") and w.endswith((".a", ".so"))]
        return ([w for w in ours if w.endswith(".o")], [w for w in ours if w.endswith(".a")] + others)

    def keep(self, file):
        target = self.place / "objects" / file.relative_to(self.build)
        if target not in self.kept:
            self.kept.add(target)
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(file, target)
        return str(target)

    def compile(self, file, text, optimise="-O0"):
        """The object of a source with that text; None where it doesn't compile."""
        source, target = self.place / "now" / "changed.cpp", self.place / "now" / "changed.o"
        source.write_text(text)
        entry = self.commands[file]
        words = [w for w in shlex.split(entry["command"]) if w != "ccache"]
        output = words.index("-o") + 1
        self.replaced = str(self.place / "objects" / words[output])
        words[output] = str(target)
        words = [str(source) if w == entry["file"] else w for w in words if w not in ("-Werror", "-O2", "-g")]
        return target if run([*words, optimise, "-w"], entry["directory"], 120).returncode == 0 else None

    def link(self, name, parts, front):
        target = self.place / "now" / name
        objects, libraries = parts
        if front:
            objects = [o for o in objects if o != self.replaced]
        words = ["g++-12", *self.linker, "-Wl,--as-needed", "-o", target, *front, *objects, "-Wl,--start-group",
                 *libraries, "-Wl,--end-group"]
        done = run([str(w) for w in words], ROOT, 120)
        if done.returncode != 0:
            raise SystemExit(f"mutate: {name} doesn't link\n{done.stderr.decode()[:2000]}")
        return target

    def fails(self, name, changed, runs=25, timed=True):
        """Whether a test program notices the change: "" if not, else how. `runs` are those of a property."""
        if timed and name not in self.seconds:
            self.base_time(name)
        with tempfile.TemporaryDirectory(prefix="m") as folder:  # a short name, as paths stand in messages
            return self.how_it_fails(name, [changed] if changed else [], runs, folder)

    def how_it_fails(self, name, front, runs, folder):
        environment = dict(os.environ, RC_PARAMS=f"seed=1 noshrink=1 max_success={runs}", TMPDIR=folder)
        if name == "tool":
            environment["QUILLBROOK_TOOL"] = str(self.link("quillbrook", self.command, front))
        program = self.link("test_" + name, self.parts[name], front)
        words = [str(program), "--gtest_fail_fast", "--gtest_brief=1", "--gtest_filter=-" + SLOW]
        done = run(words, self.place / "now", 300, environment, self.seconds.get(name, 300))
        if done.returncode == 0:
            return ""
        test = re.search(rb"\[  FAILED  \] ([\w./]+)", done.stdout)
        return test[1].decode() if test else f"ended with {done.returncode}"

    def base_time(self, name):
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        how = self.fails(name, None, runs=100, timed=False)
        if how:
            raise SystemExit(f"mutate: test_{name} fails without a change ({how}); build first")
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        self.seconds[name] = int(3 * (after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime)) + 3


def run(words, folder, wall, environment=None, cpu=None):
    def limit():
        resource.setrlimit(resource.RLIMIT_AS, (2 << 30, 2 << 30))
        resource.setrlimit(resource.RLIMIT_FSIZE, (200 << 20, 200 << 20))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        if cpu:
            resource.setrlimit(resource.RLIMIT_CPU, (cpu, cpu + 1))

    with subprocess.Popen(words, cwd=folder, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, start_new_session=True, preexec_fn=limit) as process:
        try:
            out, err = process.communicate(timeout=wall)
        except BaseException as trouble:  # whatever ends us ends what we started
            os.killpg(process.pid, signal.SIGKILL)
            if not isinstance(trouble, subprocess.TimeoutExpired):
                raise
            out, err = process.communicate()
    return subprocess.CompletedProcess(words, process.returncode, out, err)


# ---- a campaign

class Campaign:
    """What is known of each change, kept in a file as one line of JSON each, the last one of a change holds."""

    def __init__(self, workshop, file, without):
        self.workshop, self.file, self.without, self.results = workshop, file, without, {}
        self.sections = {}
        self.killers = collections.Counter()
        if file.exists():
            for line in file.read_text().splitlines():
                self.remember(json.loads(line))

    def remember(self, result):
        self.results[result["key"]] = result
        if result["state"] == "killed":
            self.killers[result["file"], result["by"].split(":")[0]] += 1

    @staticmethod
    def key(change):
        """Holds while the line stays as it is and where it is among its equals."""
        text = text_of(change.file)
        line, before, column = line_of(text, change.start)
        return f"{change.file}|{line}|{before}|{column}|{change.old}|{change.new}"

    def note(self, change, state, by=""):
        text = text_of(change.file)
        result = {"key": self.key(change), "file": change.file, "line": text.count("\n", 0, change.start) + 1,
                  "kind": change.kind, "state": state, "by": by, "diff": diff(text, change)}
        self.remember(result)
        with self.file.open("a") as out:
            out.write(json.dumps(result) + "\n")
        return result

    def try_change(self, change):
        text = text_of(change.file)
        changed = text[:change.start] + change.new + text[change.end:]
        built = self.workshop.compile(change.file, changed)
        if not built:
            return self.note(change, "no code")
        folder = next(f for f in WATCHERS if change.file.startswith(f + "/"))
        order = [name for name in WATCHERS[folder].split() if name not in self.without]
        order.sort(key=lambda name: -self.killers[change.file, name])
        for name in order:
            how = self.workshop.fails(name, built)
            if how:
                return self.note(change, "killed", f"{name}: {how}")
        if self.same_code(change.file, text, changed):
            return self.note(change, "same code")
        nearest = WATCHERS[folder].split()[0]
        how = self.workshop.fails(nearest, self.workshop.compile(change.file, changed), runs=100)
        return self.note(change, "killed", f"{nearest}: {how}") if how else self.note(change, "survived")

    def same_code(self, file, text, changed):
        """Whether the optimiser makes the same of both."""
        if file not in self.sections:
            self.sections[file] = self.section(file, text)
        return self.sections[file] == self.section(file, changed)

    def section(self, file, text):
        built = self.workshop.compile(file, text, "-O2")
        return run(["objdump", "-dr", "--no-show-raw-insn", "-s", str(built)], ROOT, 60).stdout

    def counts(self, keys):
        return collections.Counter(self.results[key]["state"] for key in keys if key in self.results)


def line_of(text, at):
    """The line at a position, how many equal lines stand before it, and the column."""
    begin = text.rfind("\n", 0, at) + 1
    line = text[begin:text.find("\n", at)]
    return line.strip(), text[:begin].splitlines().count(line), at - begin - (len(line) - len(line.lstrip()))


def diff(text, change):
    begin = text.rfind("\n", 0, change.start) + 1
    end = text.find("\n", change.end)
    before = text[begin:end]
    after = text[begin:change.start] + change.new + text[change.end:end]
    return "".join(f"-{line}\n" for line in before.split("\n")) + "".join(f"+{line}\n" for line in after.split("\n"))


def tell(result):
    print(f"{result['file']}:{result['line']}: {result['kind']} {result['state']}\n{result['diff']}", flush=True)


def chosen(options, campaign):
    changes = list(all_changes(options.folders))
    if options.survivors:
        alive = {key for key, result in campaign.results.items() if result["state"] == "survived"}
        return [change for change in changes if campaign.key(change) in alive]
    return in_random_order(changes, random.Random(options.seed))


def in_random_order(changes, dice):
    """Names make half of all changes, most of which don't compile: they come as often as constants do."""
    kinds = collections.Counter(change.kind for change in changes)
    share = min(1.0, kinds["constant"] / max(kinds["name"], 1))
    changes = [change for change in changes if change.kind != "name" or dice.random() < share]
    dice.shuffle(changes)
    return changes


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folders", nargs="*", default=list(WATCHERS), help="folders or sources (all)")
    parser.add_argument("--sample", type=int, default=60, help="how many changes that compile (60)")
    parser.add_argument("--seed", type=int, default=1, help="of the random order (1)")
    parser.add_argument("--survivors", action="store_true", help="only those that survived before")
    parser.add_argument("--without", nargs="*", default=[], help="tests that aren't asked, slow ones for --survivors say")
    parser.add_argument("--list", action="store_true", help="tell the changes, try none")
    parser.add_argument("--build", type=pathlib.Path, default=ROOT / "build/release", help="whose objects to link")
    parser.add_argument("--work", type=pathlib.Path, default=ROOT / "build/mutants", help="where to work")
    options = parser.parse_args()
    if options.list:
        for change in all_changes(options.folders):
            print(f"{change.file} {change.kind}\n{diff(text_of(change.file), change)}")
        return

    options.work.mkdir(parents=True, exist_ok=True)
    run(["ninja", "-C", str(options.build), "libquillbrook_everything.a"], ROOT, 3600)
    campaign = Campaign(Workshop(options.build.resolve(), options.work.resolve()), options.work / "results.jsonl",
                        options.without)
    done, began, tried = [], time.time(), 0
    for change in chosen(options, campaign):
        if not options.survivors and sum(campaign.results[k]["state"] != "no code" for k in done) >= options.sample:
            break
        key = campaign.key(change)
        if options.survivors or key not in campaign.results:
            tried += 1
            result = campaign.try_change(change)
            if result["state"] not in ("no code", "killed"):
                tell(result)
        done.append(key)

    alive = [campaign.results[key] for key in done if campaign.results[key]["state"] == "survived"]
    print("---- survivors")
    for result in alive:
        tell(result)
    counts = campaign.counts(done)
    made = sum(counts.values()) - counts["no code"]
    print(f"{made} changes: {counts['killed']} noticed, {counts['same code']} compile to the same code, "
          f"{len(alive)} survived; {counts['no code']} more don't compile. {tried} tried now, "
          f"{(time.time() - began) / max(tried, 1):.1f} s each")


if __name__ == "__main__":
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    main()
