#!/usr/bin/env python3
"""Puts the page for browsers together: its files, the module, the examples, and the service worker with the list of them.

    assemble.py SOURCES MODULE_FOLDER TARGET VERSION
"""
import gzip
import hashlib
import json
import pathlib
import shutil
import sys

EXAMPLES = ["reel/reel.otio", "edl/ferryman.edl", "edl/days.ale", "edl/night.flx", "recut/weir-old-r1.otio",
            "recut/weir-old-r2.otio", "recut/weir-new-r1.otio", "recut/weir-new-r2.otio"]
MODULE = ["quillbrook.js", "quillbrook.wasm"]


def copy_all(sources, module, target):
    if target.exists():
        shutil.rmtree(target)
    shutil.copytree(sources / "web/page", target)
    for name in MODULE:
        shutil.copyfile(module / name, target / name)
    (target / "examples").mkdir()
    for name in EXAMPLES:
        shutil.copyfile(sources / "examples" / name, target / "examples" / pathlib.Path(name).name)


def main():
    sources, module, target = (pathlib.Path(name) for name in sys.argv[1:4])
    copy_all(sources, module, target)
    names = sorted(str(path.relative_to(target)) for path in target.rglob("*") if path.is_file() and path.name != "sw.js")
    digest = hashlib.sha256()
    for name in names:
        digest.update(name.encode() + b"\0" + (target / name).read_bytes())
    worker = target / "sw.js"
    text = worker.read_text(encoding="utf-8")
    text = text.replace("@VERSION@", f"quillbrook {sys.argv[4]} {digest.hexdigest()[:12]}")
    worker.write_text(text.replace("/*@FILES@*/", ", ".join(json.dumps(name) for name in ["./", *names])), encoding="utf-8")
    packed = sum(len(gzip.compress((target / name).read_bytes(), 9)) for name in names if not name.startswith("examples/"))
    print(f"web: {len(names) + 1} files in {target}, first load {packed / 1e6:.2f} MB compressed")


if __name__ == "__main__":
    main()
