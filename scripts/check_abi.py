#!/usr/bin/env python3
"""Holds the binary interface of the film library against that of the last release, as abi/ has it.

    scripts/check_abi.py             tells what programs that are built already would trip over; status 1 where there is anything
    scripts/check_abi.py --update    writes abi/ anew, for a release or with an interface that is new on purpose

Types count as far as the public headers name them. Needs abidw and abidiff (Debian: abigail-tools); without them it says so
and is content. The library is built with what they read, in build/abi.
"""

import os
import pathlib
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / "build/abi"
BASELINE = ROOT / "abi/libquillbrook.abi"
PLAIN = ["--no-show-locs", "--no-comp-dir-path", "--no-corpus-path", "--no-elf-needed", "--exported-interfaces-only"]
PUBLIC = ["--drop-private-types", "--headers-dir", ROOT / "include", "--headers-dir", ROOT / "host"]


def run(*command, **more):
    return subprocess.run([str(word) for word in command], text=True, **more)


def build():
    """The file by its own name: "quillbrook" is also what the command is called."""
    if shutil.which("ccache"):
        os.environ.setdefault("CMAKE_CXX_COMPILER_LAUNCHER", "ccache")
    if not (BUILD / "build.ninja").exists():
        run("cmake", "-S", ROOT, "-B", BUILD, "-G", "Ninja", "-DCMAKE_CXX_COMPILER=g++-12", "-DCMAKE_BUILD_TYPE=Debug",
            "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -g", "-DQUILLBROOK_TESTS=OFF", check=True, stdout=subprocess.DEVNULL)
    run("cmake", "--build", BUILD, "--target", "libquillbrook.so", check=True, stdout=subprocess.DEVNULL)


def main():
    missing = [program for program in ("abidw", "abidiff") if not shutil.which(program)]
    if missing:
        print("abi: not looked at, as there is no " + " and no ".join(missing))
        return 0
    build()
    update = "--update" in sys.argv
    now = BASELINE if update else BUILD / BASELINE.name
    now.parent.mkdir(exist_ok=True)
    run("abidw", *PLAIN, *PUBLIC, "--out-file", now, BUILD / "libquillbrook.so", check=True)
    if update:
        return 0
    compared = run("abidiff", "--no-added-syms", BASELINE, now, stdout=subprocess.PIPE)
    if compared.returncode == 0:
        print("abi: programs that are built already can go on")
        return 0
    print(f"abi: programs that are built already would trip\n{compared.stdout}")
    return 1


if __name__ == "__main__":
    sys.exit(main())
