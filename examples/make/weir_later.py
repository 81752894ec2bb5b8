"""The Weir, cuts 5 and 6: what came of cut 4, which the negative no longer held, and a cut that goes back on much of it.

With cuts 3 and 4 of weir.py these are four versions of two reels; versions/WORKED.md works out by hand what to order for
each, and what the negative still holds.
"""

from .otio import freeze, speed
from .weir import (ALARM, BRIDGE, DUSK, EEL, FLOOD, GATE, HOUSE, KEEPER, KITCHEN, LAMP, LANE, LETTER, MORNING, OARS, RUN,
                   SEARCH, WATER, edit)


def five_r1(v1):
    v1.clip(WATER, 32, 80)
    v1.clip(GATE, 48, 63)  # a frame less: the splices on both sides of the cut need it
    v1.clip(EEL, 32, 48)
    v1.clip(GATE, 112, 64)
    v1.clip(KEEPER, 32, 64)  # as it was in cut 3
    v1.gap(48)
    v1.clip(HOUSE, 32, 160)
    v1.transition(6, 6, name="Dissolve")
    v1.clip(KITCHEN, 32, 96)
    v1.clip(LANE, 32, 112)
    v1.clip(LETTER, 32, 64)
    v1.clip(RUN, 48, 36, effects=[speed(2.0)])
    v1.clip(SEARCH, 32, 112)


def five_r2(v1):
    v1.clip(DUSK, 48, 80)
    v1.clip(LAMP, 32, 48)
    v1.clip(FLOOD, 64, 128)  # as it was in cut 3
    v1.clip(BRIDGE, 32, 80)
    v1.clip(KEEPER, 112, 32)  # other frames of the take than reel 1 has
    v1.gap(24)
    v1.clip(MORNING, 64, 128)


def six_r1(v1):
    v1.clip(WATER, 32, 96)  # cut 3's length: over cut 5's splice
    v1.clip(GATE, 48, 128)  # whole again, with a splice in its midst
    v1.clip(KEEPER, 32, 64)
    v1.gap(48)
    v1.clip(HOUSE, 32, 160)
    v1.transition(12, 12, name="Dissolve")  # long again: over both of cut 5's splices
    v1.clip(KITCHEN, 32, 96)
    v1.clip(LETTER, 32, 32)  # the lane lies between two parts of it, with a frame between them on the film
    v1.clip(LANE, 31, 113)  # a frame more at its head
    v1.clip(LETTER, 65, 31)
    v1.clip(RUN, 32, 48, effects=[speed(2.0)])
    v1.clip(BRIDGE, 100, 24)  # 12 frames of it are in reel 2 too
    v1.clip(SEARCH, 32, 114)  # two frames more at its tail


def six_r2(v1):
    v1.clip(DUSK, 48, 80)
    v1.clip(LAMP, 32, 24)
    v1.clip(BRIDGE, 32, 80)
    v1.clip(LAMP, 56, 24)  # goes on where its first part ends, and no frame is left for the splices
    v1.clip(FLOOD, 64, 128)
    v1.clip(KEEPER, 112, 32)
    v1.clip(OARS, 32, 16)
    v1.clip(OARS, 48, 16)  # goes on with the same film: no cut at all
    v1.clip(ALARM, 113, 32)  # behind the frame that cut 3's splice spent
    v1.clip(DUSK, 47, 24, effects=[freeze()])  # the frame ahead of event 1
    v1.gap(24)
    v1.clip(MORNING, 65, 127)


EDITS = {
    "weir-5-r1": lambda: edit(five_r1, "The Weir R1 cut 5", 1),
    "weir-5-r2": lambda: edit(five_r2, "The Weir R2 cut 5", 2),
    "weir-6-r1": lambda: edit(six_r1, "The Weir R1 cut 6", 1),
    "weir-6-r2": lambda: edit(six_r2, "The Weir R2 cut 6", 2),
}
