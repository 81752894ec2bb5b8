#!/usr/bin/env python3
"""Writes the edit files of the examples beside this script. The same bytes on every run."""

import pathlib

from make import desert, ferry, harbour, heron, market, newsroom, reel
from make.otio import write

EXAMPLES = {
    "reel/reel.otio": reel,
    "16mm/heron.otio": heron,
    "3perf/harbour.otio": harbour,
    "65mm/desert.otio": desert,
    "25fps/market.otio": market,
    "29.97df/newsroom.otio": newsroom,
    "23.976/ferry.otio": ferry,
}


def main():
    here = pathlib.Path(__file__).resolve().parent
    for name, example in EXAMPLES.items():
        write(here / name, example.edit())


if __name__ == "__main__":
    main()
