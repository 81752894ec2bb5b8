#!/usr/bin/env python3
"""Fails where twice as much to do costs more than 2.2 times the instructions, in any stage, or 2.1 times of small edits.

    scripts/check_growth.py [BUILD]              small edits, 500 and 1,000 events; a minute or so
    scripts/check_growth.py [BUILD] --whole      edits of 2,500 and 9,999 events, where less shows; a quarter of an hour
    scripts/check_growth.py [BUILD] --stages read-edl,bench

What a run costs whatever it has to do is taken off, by a run that has next to nothing. Instructions are the same on every
machine with the same compiler. BUILD is build/release by default, with its programs in bench/.
"""
import argparse
import os
import sys
import tempfile

from measured_runs import RunFailed, Runs, growth, in_parallel, missing_tools
from measured_stages import STAGES

def sizes_of(stage, whole):
    if whole:
        return stage.sizes
    least, half = stage.gate
    return least, half, 2 * half


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("build", nargs="?", default="build/release")
    parser.add_argument("--whole", action="store_true")
    parser.add_argument("--stages", default="", metavar="NAME,...", help="only these")
    parser.add_argument("--tell", action="store_true", help="tell of each stage")
    options = parser.parse_args()
    if missing_tools():
        raise SystemExit("growth: missing: " + " ".join(missing_tools()) + "; scripts/setup.sh installs them")
    stages = [STAGES[name] for name in options.stages.split(",")] if options.stages else list(STAGES.values())
    stages = [stage for stage in stages if options.whole or stage.gate]
    limit = 2.2 if options.whole else 2.1
    wanted = [(stage, n) for stage in stages for n in sizes_of(stage, options.whole)]
    share = None
    with tempfile.TemporaryDirectory(prefix="growth-", dir=os.environ.get("TMPDIR")) as work:
        runs = Runs(options.build, work)
        try:
            runs.prepare(wanted)
            counts = in_parallel(lambda one: runs.instructions(*one), wanted)
            if options.whole and not options.stages:
                share = runs.share_of_looks(STAGES["prove"], 9999)
        except RunFailed as failure:
            raise SystemExit(f"growth: {failure}") from None
    grown = []
    for at, stage in enumerate(stages):
        of_stage = [(n, count) for (_, n), count in zip(wanted, counts)][3 * at:3 * at + 3]
        times = growth(of_stage)
        grown.append((times, stage.name))
        if options.tell or options.whole or times > limit:
            told = ", ".join(f"{count / 1e6:.1f} M for {n}" for n, count in of_stage)
            print(f"growth: {stage.name}: {times:.3f} ({told})", flush=True)
    worst, name = max(grown)
    print(f"growth: twice as much costs at most {worst:.2f} times the instructions, in {len(grown)} stages; most {name}")
    if share is not None:
        print(f"growth: what is found, the list of doubts and the proof cost {share:.2f} times reading the edit and its lists")
    return 1 if worst > limit or (share or 0) > 1 else 0


if __name__ == "__main__":
    sys.exit(main())
