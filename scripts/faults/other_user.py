#!/usr/bin/env python3
"""Runs the command in a folder where anyone may write, after another user has been there.

usage: scripts/faults/other_user.py QUILLBROOK        (as root)

The other user plants links, files, locks and folders under the names of outputs and under those that runs use
themselves. No file outside of the folder may change, nothing may be carried out that another one's journal says, and
the outputs are the old or the new set, whole.
"""
import fcntl, os, subprocess, sys
from bench import OWN_NAMES, Count, benches, can_be, options_of, untold

ME, OTHER = 65533, 65534
CAUSE = r"is a link in a folder where anyone may write|Operation not permitted|Permission denied|another run is writing"
VICTIM = "of great worth\n"


class SharedFolder:
    """The folder of a bench as a sticky one of root, and a file of mine beside it that nobody may change."""

    def __init__(self, bench):
        self.bench = bench
        bench.fill()
        for name in list(bench.old):
            os.remove(os.path.join(bench.out, name))
        os.chmod(bench.top, 0o755)
        os.chmod(bench.out, 0o1777)
        os.chmod(bench.tmp, 0o1777)
        self.victim = os.path.join(bench.top, "victim")
        self.put(self.victim, VICTIM, ME, 0o644)

    def put(self, path, text, owner, mode):
        with open(path, "w") as file:
            file.write(text)
        os.chown(path, owner, owner)
        os.chmod(path, mode)

    def at(self, name):
        return os.path.join(self.bench.out, name)

    def plant_link(self, name, to):
        os.symlink(to, self.at(name))
        os.lchown(self.at(name), OTHER, OTHER)

    def plant_folder(self, journal):
        """As a dead run of the other user would leave it."""
        folder = self.at(".quillbrook-abcdefghijkl")
        os.mkdir(folder, 0o755)
        for name, text in {"lock": "", "f0": "planted\n", "journal": journal}.items():
            self.put(os.path.join(folder, name), text, OTHER, 0o644)
        os.chown(folder, OTHER, OTHER)

    def run(self, environment={}):
        return self.bench.run(environment, user=ME, group=ME, extra_groups=[])

    def mine(self):
        """What isn't the other one's."""
        found = {}
        for name in os.listdir(self.bench.out):
            if os.lstat(self.at(name)).st_uid == OTHER:
                continue
            found[name] = b""
            if os.path.isfile(self.at(name)):
                with open(self.at(name), "rb") as file:
                    found[name] = file.read()
        return found

    def leftovers(self):
        return [n for n in self.mine() if n.startswith(OWN_NAMES)] + os.listdir(self.bench.tmp)

    def fault(self):
        with open(self.victim) as file:
            if file.read() != VICTIM:
                return "the file outside was changed"
        return "left over: %s" % self.leftovers() if self.leftovers() else ""


def refused(shared, result, cause=CAUSE):
    wrong = shared.fault() or ("" if result.returncode == 1 else "status %d" % result.returncode)
    return wrong or ("something was made: %s" % sorted(shared.mine()) if shared.mine() else "") or untold(result, cause)


def done(shared, result, new):
    made = {n: b for n, b in shared.bench.outputs().items() if not n.startswith(OWN_NAMES)}
    return shared.fault() or (result.stderr if result.returncode else "") or ("" if made == new else "another set")


def try_links(bench, new, count):
    for name in new:
        for to in ("victim", "nothing", "a folder"):
            shared = SharedFolder(bench)
            shared.plant_link(name, {"victim": shared.victim, "nothing": bench.top + "/none", "a folder": "."}[to])
            result = shared.run()
            cause = CAUSE + "|[Ii]s a directory"
            count.take("%s, %s a link to %s" % (bench.name, name, to), refused(shared, result, cause))


def try_files(bench, new, count):
    """Files of the other user: they can't be replaced in a sticky folder; whose mode lets anyone write gets the bytes."""
    for name in new:
        for mode in (0o600, 0o644):
            shared = SharedFolder(bench)
            shared.put(shared.at(name), "theirs\n", OTHER, mode)
            wrong = refused(shared, shared.run())
            with open(shared.at(name)) as file:
                wrong = wrong or ("" if file.read() == "theirs\n" else "their file was changed")
            count.take("%s, %s of another user, mode %o" % (bench.name, name, mode), wrong)
        shared = SharedFolder(bench)
        shared.put(shared.at(name), "theirs\n", OTHER, 0o666)
        wrong = done(shared, shared.run(), new)
        kept = os.stat(shared.at(name)).st_uid == OTHER
        count.take("%s, %s of another user for all to write" % (bench.name, name), wrong or ("" if kept else "not kept"))


def lock_names(bench, new):
    """Those that a run makes, as it goes by the names of its outputs alone."""
    import zlib
    return [".quillbrook-lock-%08x" % zlib.crc32(name.encode()) for name in new]


def try_locks(bench, new, count):
    for name in lock_names(bench, new):
        for how in ("held", "closed", "a link"):
            shared = SharedFolder(bench)
            if how == "a link":
                shared.plant_link(name, shared.victim)
            else:
                shared.put(shared.at(name), "4711\n", OTHER, 0o666 if how == "held" else 0o600)
            with open(shared.victim if how == "a link" else shared.at(name)) as file:
                if how == "held":
                    fcntl.flock(file, fcntl.LOCK_EX)
                result = shared.run({"QUILLBROOK_WAIT_FOR_OUTPUTS": "0"})
            count.take("%s, a lock that is %s" % (bench.name, how),
                       refused(shared, result, CAUSE + "|Too many levels of symbolic links"))


def try_journals(bench, new, count):
    for direction in "fb":
        shared = SharedFolder(bench)
        shared.plant_folder("\0".join(["quillbrook journal 1", direction, "p", "", "f0", "f0", "", "../victim", ""]))
        count.take("%s, a journal of another user" % bench.name, done(shared, shared.run(), new))


def try_private_names(bench, new, count):
    """While a run waits, nobody else can look into its folder."""
    shared = SharedFolder(bench)
    fifo = os.path.join(bench.top, "pipe")
    os.mkfifo(fifo)
    os.chown(fifo, ME, ME)
    line = [bench.tool] + ["log", "import", "pipe", "-o", "out/r.RDB", "--rate", "25"]
    run = subprocess.Popen(line, cwd=bench.top, env=bench.environment({}), user=ME, group=ME, extra_groups=[],
                           stderr=subprocess.PIPE)
    with open(fifo, "w") as pipe:
        pipe.write("Name,Start,End\n")
        pipe.flush()
        folders = [n for n in os.listdir(bench.out) if n.startswith(OWN_NAMES) and os.path.isdir(shared.at(n))]
        modes = [os.stat(shared.at(n)).st_mode & 0o777 for n in folders]
        pipe.write("1,0:0:0:0,0:0:0:9\n")
    told = run.communicate()[1]
    os.remove(fifo)
    count.take("%s, mode of the private folder" % bench.name,
               "" if modes == [0o700] and run.returncode == 0 else "%s %s" % (modes, told))


def main():
    options = options_of(__doc__)
    if not can_be(ME, options.tool):
        print("another user needs root, and a command that all may run")
        sys.exit(0)
    count = Count()
    for bench in benches(options.tool):
        if len(bench.folders()) > 1:
            continue
        with bench:
            new = bench.new_set()
            for attempt in (try_links, try_files, try_locks, try_journals):
                attempt(bench, new, count)
            if bench.name == "log import":
                try_private_names(bench, new, count)
    count.end("a folder that another user writes in")


main()
