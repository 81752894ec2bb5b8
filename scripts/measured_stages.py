"""The runs of the command whose cost is measured.

A stage is one run over inputs of any size. `make` are the lines that make its inputs, in a folder of their own, by the
programs of bench/ and by the command itself; `run` is what is measured, in another folder, where {in} is that of the
inputs. {n} is the number of pieces, {n20} a twentieth of it; names with * stand for all such files.
"""
import dataclasses


@dataclasses.dataclass(frozen=True)
class Stage:
    name: str
    title: str
    piece: str
    make: tuple
    run: str
    makes: str = ""                  # a file that must come of it; else it must print something
    within: str = ""                 # instructions of this function and what it calls, in place of the whole run
    statuses: tuple = (0,)
    sizes: tuple = (100, 2500, 9999) # pieces, as docs/performance.md tells of them
    gate: tuple | None = (20, 500)   # what is taken off, and the size whose double is looked at; None: no gate


def edit(kind="edit", more=""):
    return (f"make_input {kind} {{n}} {more} > e.otio",)


def table(kind="edit", more=""):
    return edit(kind, more) + ("quillbrook cutlist e.otio -o t.txt --quiet",)


def recut(kind=""):
    return (f"make_recut {{n}} old.cdb new.cdb {kind}",)


def film(versions):
    """That version of a film of 20 reels, and the orders of those before it."""
    lines, had = [], ""
    for version in range(1, versions + 1):
        lines.append(f"make_film {{n20}} 20 {version} .")
        if version < versions:
            lines.append(f"quillbrook order r*.otio {had and '--had ' + had} -o order.txt --json had{version:02}.json "
                         "--handles 8 --overwrite --quiet")
            had += f" had{version:02}.json"
    return tuple(lines)


TWO_FILMS = ("folder old", "make_film {n20} 20 1 old", "folder new", "make_film {n20} 20 2 new")
TAPES = ("make_input tapes-log {n} > l.ale", "quillbrook log import l.ale -o l.RDB --quiet", "make_input tapes-edl {n} > e.edl")
LOG_SIZES = (100, 8000, 32000)
CHANGES = "changelist --old {in}/old.cdb --new {in}/new.cdb -o changes.txt --quiet --lists "
PRINT = "print {in}/t.cdb -o again.txt --quiet "


def reader(name, title, kind, file, options="", gate=(20, 500)):
    return Stage("read-" + name, title, "clip", (f"make_input {kind} {{n}} > {file}",), f"edit show {{in}}/{file} {options}",
                 within="tool::open_edit*", gate=gate)


def document(option, title, made, lists="", into="", make=table("opticals"), **more):
    return Stage("print" + option[1:], title, "event", make, f"{PRINT} {lists} {option} {into or made}", made, **more)


def log(kind, title, options=""):
    return Stage("log-" + kind, title, "row", (f"make_input {kind} {{n}} > l.log",),
                 f"log import {{in}}/l.log -o l.RDB --quiet {options}", "l.RDB", sizes=LOG_SIZES)


def shape(title, *more):
    words = " ".join(("dissolve-every=1000000", *more) if not any("dissolve" in word for word in more) else more)
    return Stage("shape-" + (more[0] if more else "cuts"), title, "clip", edit("shape", words),
                 "cutlist {in}/e.otio -o t.txt --quiet", "t.cdb", sizes=(100, 500, 2500), gate=None)


GROUPS = {
    "reading": [
        reader("otio", "OpenTimelineIO", "edit", "e.otio"),
        reader("edl", "edit list", "edl", "e.edl", "--rate 24"),
        reader("fcp7xml", "FCP 7 XML", "fcp7xml", "e.xml"),
        reader("fcp7xml-filters", "the same with filters that some programs write for each clip", "fcp7xml-filters", "e.xml",
               gate=None),
        reader("fcpxml", "FCPXML", "fcpxml", "e.fcpxml"),
        reader("aaf", "AAF with a chain to film", "aaf", "e.aaf"),
    ],
    "lists": [
        Stage("cutlist", "`cutlist`, plain cuts", "event", edit(), "cutlist {in}/e.otio -o t.txt --quiet", "t.cdb"),
        Stage("single-layer", "`cutlist --single-layer 1,2,3,4`, an optical for every 20th event, every fifth used again",
              "event", edit("opticals"), "cutlist {in}/e.otio -o t.txt --quiet --single-layer 1,2,3,4", "t.sl3"),
        Stage("prove", "`cutlist --prove` of the same, with the list of doubts", "event", edit("opticals"),
              "cutlist {in}/e.otio -o t.txt --quiet --prove --lists rolls,pull,assembly,opticals,doubts", "t.cdb"),
        Stage("check", "`check` of the same", "event", edit("opticals"), "check {in}/e.otio"),
        Stage("print", "`print` of the same table", "event", table("opticals"), PRINT, "again.txt"),
        *(Stage("print-" + name, f"`print --lists {name}`", "event", table("opticals"), f"{PRINT} --lists {name}", "again.txt")
          for name in ("rolls", "pull", "assembly", "opticals", "doubts")),
        Stage("through-log", "`cutlist --log` of an edit list, through a log of as many rows", "event", TAPES,
              "cutlist {in}/e.edl --rate 24 --log {in}/l.RDB -o t.txt --quiet", "t.cdb"),
        Stage("check-log", "`check --log` of the same", "event", TAPES, "check {in}/e.edl --rate 24 --log {in}/l.RDB"),
    ],
    "documents": [
        document("--html", "`--html`", "p.html"),
        document("--csv", "`--csv`", "assembly.csv", into="."),
        document("--json", "`--json`", "p.json"),
        document("--text", "`--text`", "p.out"),
        document("--svg", "`--svg`", "optical-1.svg", into="."),
    ],
    "paper": [
        # As many pages an event whatever the length: film of the other stages is used again the more the longer the edit is.
        document("--pdf", "`--pdf`", "p.pdf", "--lists assembly", gate=(20, 100), sizes=(100, 500, 2500),
                 make=table("shape", "uses=5 effect-every=20 dissolve-every=10")),
    ],
    "recuts": [
        Stage("changes", "`changelist` of the usual lists", "event", recut(), CHANGES + "summary,new,changes,transitions",
              "changes.txt"),
        Stage("bench", "the bench list alone", "event", recut(), CHANGES + "bench", "changes.txt"),
        *(Stage("bench-" + cost, f"the same with `--cost {cost}`", "event", recut(), f"{CHANGES} bench --cost {cost}",
                "changes.txt", gate=None) for cost in ("moves", "splices", "frames")),
        Stage("prove-changes", "all lists, `--prove`", "event", recut(),
              CHANGES + "summary,new,changes,transitions,bench --prove", "changes.txt", statuses=(0, 3)),
        Stage("reused-changes", "the usual lists of takes used 35 times", "event", recut("reused"),
              CHANGES + "summary,new,changes,transitions", "changes.txt"),
        Stage("reused-bench", "the bench list of the same", "event", recut("reused"), CHANGES + "bench", "changes.txt"),
        *(Stage("reused-bench-" + cost, f"the same with `--cost {cost}`", "event", recut("reused"),
                f"{CHANGES} bench --cost {cost}", "changes.txt") for cost in ("moves", "splices", "frames")),
    ],
    "orders": [
        Stage("order", "`order` of 20 reels", "event", film(1), "order {in}/r*.otio -o o.txt --json o.json --handles 8 --quiet",
              "o.json", gate=(40, 500)),
        Stage("order-had", "the same against the orders of 30 versions before", "event", film(31),
              "order {in}/r*.otio --had {in}/had*.json -o o.txt --json o.json --handles 8 --prove --quiet", "o.json",
              gate=(40, 500)),
        Stage("conform", "`conform` of 20 reels whose version before was cut", "event", TWO_FILMS,
              "conform {in}/new/r*.otio --cut {in}/old/r*.otio -o c.txt --json c.json --quiet", "c.json", statuses=(0, 1),
              gate=(40, 500)),
    ],
    "exports": [
        Stage("export-" + kind, f"`export` as `.{kind}`", "clip", edit(), f"export {{in}}/e.otio -o x.{kind} --quiet",
              "x." + kind) for kind in ("otio", "edl", "ale")
    ],
    "logs": [
        log("ale", "ALE"),
        log("flex", "FLEx"),
        log("keylog", "Keylog"),
        log("delimited", "text parted by tabs", "--rate 24"),
        Stage("log-check", "`log check` of an ALE", "row", ("make_input ale {n} > l.ale",), "log check {in}/l.ale",
              sizes=LOG_SIZES),
        Stage("log-show", "`log show` of a table", "row",
              ("make_input ale {n} > l.ale", "quillbrook log import l.ale -o l.RDB --quiet"), "log show {in}/l.RDB",
              sizes=LOG_SIZES),
    ],
    "long logs": [
        Stage("log-too-long", "an ALE of ten times the rows that a table holds, refused", "row",
              ("make_input ale {n} > l.ale",), "log import {in}/l.ale -o l.RDB --quiet", statuses=(1,),
              sizes=(40000, 80000, 320000), gate=None),
    ],
    "shapes": [shape(*words) for words in (
        ("all cuts",),
        ("half of the cuts dissolves", "dissolve-every=2"),
        ("every fifth clip under an optical", "effect-every=5"),
        ("every clip under an optical", "effect-every=1"),
        ("on 4 tracks", "tracks=4"),
        ("on 16 tracks", "tracks=16"),
        ("every take used 5 times", "uses=5"),
        ("every take used 35 times", "uses=35"),
    )],
}
STAGES = {stage.name: stage for group in GROUPS.values() for stage in group}
