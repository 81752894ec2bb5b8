#!/usr/bin/env python3
"""Runs the command under each umask, in other locales, and with pipes for inputs and outputs.

usage: scripts/faults/surroundings.py QUILLBROOK

Under each umask, as root and as another user, the outputs are the new set, with the modes that the umask leaves of 0666,
or those of the files that they replace. In each locale they are the same bytes. Through named pipes they are those of
plain files; where nobody reads a pipe, a signal ends the run, with the old set. Nothing else stays.
"""
import os, shutil, signal, subprocess, tempfile, time
from bench import Count, benches, can_be, options_of, untold, wrong_set

UMASKS = (0o000, 0o022, 0o027, 0o077, 0o277, 0o577, 0o777)
SOURCES = {"tr_TR.UTF-8": ("tr_TR", "UTF-8"), "tr_TR.ISO-8859-9": ("tr_TR", "ISO-8859-9")}
USER = 65533


def try_umasks(bench, new, count):
    as_user = {"user": USER, "group": USER, "extra_groups": []} if can_be(USER, bench.tool) else {}
    os.chmod(bench.top, 0o755)
    for mask in UMASKS:
        for fresh in (True, False):
            for who in ({}, as_user):
                bench.fill()
                for name in bench.old:
                    path = os.path.join(bench.out, name)
                    os.remove(path) if fresh else os.chmod(path, 0o640)
                    if who and not fresh:
                        os.chown(path, USER, USER)
                for folder in bench.folders() + [bench.tmp]:
                    os.chmod(folder, 0o777)
                old = bench.outputs()
                result = bench.run(preexec_fn=lambda: None, umask=mask, **who)
                wrong = wrong_set(bench, old, new, result) or (result.stderr if result.returncode else "")
                modes = {n: os.stat(os.path.join(bench.out, n)).st_mode & 0o7777 for n in bench.outputs()}
                wanted = {n: 0o640 if not fresh and n in old else 0o666 & ~mask for n in new}
                count.take("%s, umask %03o%s" % (bench.name, mask, " as a user" if who else ""),
                           wrong or ("" if modes == wanted else "modes %s" % modes))


def made_locales():
    """Names for LC_ALL, and the folder that holds those that were made for this."""
    folder = tempfile.mkdtemp(prefix="locales-")
    made = []
    for name, (source, charset) in SOURCES.items():
        line = ["localedef", "-i", source, "-f", charset, os.path.join(folder, name)]
        if shutil.which("localedef") and subprocess.run(line, capture_output=True).returncode in (0, 1):
            made.append(name)
    return ["C", "POSIX", "C.UTF-8", "none_NONE"] + made, folder


def try_locales(bench, old, new, locales, folder, count):
    for locale in locales:
        bench.fill()
        result = bench.run({"LC_ALL": locale, "LANG": locale, "LOCPATH": folder})
        wrong = wrong_set(bench, old, new, result) or result.stderr
        count.take("%s, locale %s" % (bench.name, locale), wrong)
        bench.fill()
        os.remove(os.path.join(bench.top, os.path.basename(bench.inputs[0])))
        result = bench.run({"LC_ALL": locale, "LANG": locale, "LOCPATH": folder})
        shutil.copy2(bench.inputs[0], bench.top)
        count.take("%s, locale %s, without its input" % (bench.name, locale),
                   wrong_set(bench, old, new, result) or untold(result, "No such file or directory|couldn't be read",
                                                                [os.path.basename(bench.inputs[0])]))


class Pipe:
    """A named pipe in place of a file of the bench."""

    def __init__(self, path):
        self.path = path
        if os.path.exists(path):
            os.remove(path)
        os.mkfifo(path)

    def feed(self, source):
        return subprocess.Popen(["cp", source, self.path])

    def drain(self, target):
        return subprocess.Popen("cat '%s' > '%s'" % (self.path, target), shell=True)

    def end(self):
        os.remove(self.path)


def try_inputs(bench, old, new, count):
    for source in bench.inputs:
        pipe = Pipe(os.path.join(bench.top, os.path.basename(source)))
        bench.fill()
        feeder = pipe.feed(source)
        result = bench.run()
        feeder.wait()
        made = bench.outputs()
        same = made.keys() == new.keys() and (made == new or bench.dated)  # a pipe has no date
        count.take("%s, %s is a pipe" % (bench.name, os.path.basename(source)),
                   ("" if result.returncode == 0 and same else "another set: %s" % result.stderr) or
                   "".join(bench.leftovers()))
        pipe.end()
        shutil.copy2(source, bench.top)


def report_of(bench):
    return os.path.basename(bench.arguments[bench.arguments.index("-o") + 1])


def without_lists_beside(bench):
    return [word for word in bench.arguments if word not in ("--set", "fsl_type3_file=1")]


def try_output(bench, new, count):
    name = report_of(bench)
    bench.fill()
    pipe = Pipe(os.path.join(bench.out, name))
    read = os.path.join(bench.top, "read")
    reader = pipe.drain(read)
    result = bench.run_line(without_lists_beside(bench))
    reader.wait()
    with open(read, "rb") as file:
        same = file.read() == new[name]
    count.take("%s, %s is a pipe" % (bench.name, name),
               ("" if result.returncode == 0 and same else "other bytes: %s" % result.stderr) or "".join(bench.leftovers()))
    os.remove(read)
    pipe.end()


def try_unread(bench, count):
    """Nobody opens the pipe, so the run waits until it is ended."""
    for ending in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP, signal.SIGKILL):
        bench.fill()
        pipe = Pipe(os.path.join(bench.out, report_of(bench)))
        before = bench.outputs()
        run = subprocess.Popen([bench.tool] + without_lists_beside(bench), cwd=bench.top, env=bench.environment({}),
                               stderr=subprocess.DEVNULL)
        time.sleep(0.1)
        waited = run.poll() is None
        run.send_signal(ending)
        run.wait()
        if ending == signal.SIGKILL and bench.look_into().returncode != 0:
            waited = False
        count.take("%s, nobody reads, signal %d" % (bench.name, ending),
                   ("" if waited and run.returncode == -ending else "status %d" % run.returncode) or
                   ("" if bench.outputs() == before else "files are changed") or "".join(bench.leftovers()))
        pipe.end()


def main():
    options = options_of(__doc__)
    count = Count()
    locales, folder = made_locales()
    print("locales: " + " ".join(locales))
    for bench in benches(options.tool):
        with bench:
            old, new = bench.old_set(), bench.new_set()
            try_umasks(bench, new, count)
            try_locales(bench, old, new, locales, folder, count)
            try_inputs(bench, old, new, count)
            try_output(bench, new, count)
            try_unread(bench, count)
    shutil.rmtree(folder)
    count.end("umasks, locales and pipes")


main()
