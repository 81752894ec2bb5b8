#!/usr/bin/env python3
"""Changes each byte of sealed tables, and cuts them at each byte, and has the command read what is left.

usage: scripts/faults/spoil_tables.py QUILLBROOK [--step N]

Each such table must be refused by a line that names it, with no output.
"""
import os, shutil, subprocess, tempfile
from bench import EXAMPLES, PLAIN, Count, options_of

CHANGES = (0x01, 0x20, 0x80)


class Reader:
    """A command that reads one table."""

    def __init__(self, tool, table, line):
        self.tool, self.line = tool, line
        self.folder = tempfile.mkdtemp(prefix="spoilt-")
        self.spoilt = os.path.join(self.folder, "t" + os.path.splitext(table)[1])
        with open(table, "rb") as file:
            self.bytes = file.read()

    def read(self, bytes):
        with open(self.spoilt, "wb") as file:
            file.write(bytes)
        return subprocess.run([self.tool] + self.line, cwd=self.folder, env=PLAIN, capture_output=True, text=True,
                              errors="replace", timeout=60)

    def fault(self, bytes):
        result = self.read(bytes)
        made = sorted(set(os.listdir(self.folder)) - {os.path.basename(self.spoilt)})
        if result.returncode != 1 or made:
            return "status %d, made %s" % (result.returncode, made)
        return "" if os.path.basename(self.spoilt) in result.stderr else "not named: %r" % result.stderr


def made_log(tool, folder):
    path = os.path.join(folder, "days.RDB")
    subprocess.run([tool, "log", "import", EXAMPLES + "/edl/days.ale", "-o", path, "--quiet"], env=PLAIN, check=True)
    return path


def main():
    options = options_of(__doc__, ("--step", dict(type=int, default=1)))
    count, folder = Count(), tempfile.mkdtemp(prefix="tables-")
    readers = [Reader(options.tool, EXAMPLES + "/65mm/expected/desert.cdb", ["print", "t.cdb", "-o", "r.txt"]),
               Reader(options.tool, made_log(options.tool, folder), ["log", "merge", "t.RDB", "-o", "r.RDB"])]
    for reader in readers:
        assert reader.read(reader.bytes).returncode == 0, reader.line
        for name in os.listdir(reader.folder):
            os.remove(os.path.join(reader.folder, name))
        for at in range(0, len(reader.bytes), options.step):
            count.take("%s cut at %d" % (reader.line[0], at), reader.fault(reader.bytes[:at]))
            for change in CHANGES:
                changed = bytearray(reader.bytes)
                changed[at] ^= change
                count.take("%s, byte %d with %02x" % (reader.line[0], at, change), reader.fault(bytes(changed)))
        shutil.rmtree(reader.folder)
    shutil.rmtree(folder)
    count.end("spoilt tables")


main()
