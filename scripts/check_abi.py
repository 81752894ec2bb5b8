#!/usr/bin/env python3
"""Holds the binary interface of the libraries against that of the last release, as abi/ has it.

    scripts/check_abi.py [BUILD]             tells what programs that are built already would trip over; status 1 where there
                                             is anything, but before the first release
    scripts/check_abi.py [BUILD] --update    writes abi/ anew, for a release or with an interface that is new on purpose

Of the film library all counts that it exports, and types as far as the public headers name them. Needs abidw and abidiff
(Debian: abigail-tools); without them it says so and is content. It is built with what they read, in build/abi. Of the other
libraries what the installed headers name counts; they are looked at in BUILD, by default build/release.
"""

import os
import pathlib
import shutil
import subprocess
import sys

import abi_of_headers

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / "build/abi"
BASELINE = ROOT / "abi/libquillbrook.abi"
HEADERS = ROOT / "abi/headers.txt"
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


def breaks_of_film_library(update):
    """What abidiff tells; empty where nothing is broken."""
    missing = [program for program in ("abidw", "abidiff") if not shutil.which(program)]
    if missing:
        print("abi: libquillbrook wasn't looked at, as there is no " + " and no ".join(missing))
        return ""
    build()
    now = BASELINE if update else BUILD / BASELINE.name
    now.parent.mkdir(exist_ok=True)
    run("abidw", *PLAIN, *PUBLIC, "--out-file", now, BUILD / "libquillbrook.so", check=True)
    if update:
        return ""
    compared = run("abidiff", "--no-added-syms", BASELINE, now, stdout=subprocess.PIPE)
    return compared.stdout if compared.returncode != 0 else ""


def breaks_of_headers(build_folder, update):
    """A line for each function and type of the installed headers that is gone or another."""
    now = abi_of_headers.interface(build_folder)
    if update:
        HEADERS.write_text(abi_of_headers.written(now), encoding="utf-8")
        return ""
    return "".join(line + "\n" for line in abi_of_headers.breaks(abi_of_headers.read(HEADERS.read_text(encoding="utf-8")), now))


def nothing_is_released():
    heads = [line for line in (ROOT / "CHANGELOG.md").read_text(encoding="utf-8").splitlines() if line.startswith("## ")]
    return len(heads) == 1 and heads[0].endswith("not yet released")


def main():
    words = [word for word in sys.argv[1:] if word != "--update"]
    update = "--update" in sys.argv
    told = breaks_of_film_library(update) + breaks_of_headers(pathlib.Path(words[0] if words else ROOT / "build/release"), update)
    if update:
        return 0
    if not told:
        print("abi: programs that are built already can go on")
        return 0
    print(f"abi: programs that are built already would trip\n{told}", end="")
    if nothing_is_released():
        print("abi: nothing has been released so far, so there are none; --update takes it as it is now")
        return 0
    return 1


if __name__ == "__main__":
    sys.exit(main())
