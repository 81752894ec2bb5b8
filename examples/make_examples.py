#!/usr/bin/env python3
"""Writes the edit files of the examples beside this script, or below another folder. The same bytes on every run."""

import pathlib
import sys

sys.dont_write_bytecode = True

from make import (crossing, desert, ferry, ferryman, harbour, heron, lantern, market, newsroom, reel,  # noqa: E402
                  weir, weir_later)
from make.otio import write, write_text  # noqa: E402

EXAMPLES = {
    "reel/reel.otio": reel,
    "16mm/heron.otio": heron,
    "3perf/harbour.otio": harbour,
    "65mm/desert.otio": desert,
    "25fps/market.otio": market,
    "29.97df/newsroom.otio": newsroom,
    "23.976/ferry.otio": ferry,
    "opticals/lantern.otio": lantern,
}


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parent
    for name, example in EXAMPLES.items():
        write(folder / name, example.edit())
    for name, edit in weir.EDITS.items():
        write(folder / "recut" / (name + ".otio"), edit())
    for name, edit in weir_later.EDITS.items():
        write(folder / "versions" / (name + ".otio"), edit())
    for name, text in ferryman.FILES.items():
        write_text(folder / "edl" / name, text())
    write(folder / "formats" / "crossing.otio", crossing.otio())
    for name, text in crossing.FILES.items():
        write_text(folder / "formats" / name, text())


if __name__ == "__main__":
    main()
