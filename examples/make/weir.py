"""A recut, 35mm 4-perf at 24: "The Weir", reels 1 and 2, as they were and as they are now.

Every kind of change is there once, in whole feet wherever film allows it, so that the list of changes can be worked
out by hand: see recut/WORKED.md. A shot begins 32 frames or more into its take.
"""

from .otio import Take, Track, speed, timecode_frames, timeline

RATE = 24.0
MEDIA = "file:///transfers/weir/"


def take(name, start, key, roll, ink=None):
    """Scene and take are in the name; the tape has the number of the camera roll."""
    scene, number = name.split("/")
    film = {"inkcode": ink} if ink else {}
    return Take(name, f"{MEDIA}{scene}_T{number}.mxf", timecode_frames(start, 24), 480, RATE, reel="WR" + roll[1:],
                film="35mm-4p", keycode=key, cam_reel=roll, scene=scene, take=number, **film)


WATER = take("1/2", "01:00:00:00", "KJ 10 2001-1000+00", "A001", "AA010100+00")
GATE = take("2/1", "01:10:00:00", "KJ 10 2001-1100+00", "A001", "AA010200+00")
KEEPER = take("3/4", "01:20:00:00", "KJ 10 2001-1200+00", "A001", "AA010300+00")
HOUSE = take("4/1", "02:00:00:00", "KJ 10 2002-2000+00", "A002", "AA020100+00")
KITCHEN = take("5/3", "02:10:00:00", "KJ 10 2002-2100+00", "A002", "AA020200+00")
LETTER = take("6/2", "02:20:00:00", "KJ 10 2002-2200+00", "A002", "AA020300+00")
LANE = take("7/1", "03:00:00:00", "KN 63 0044-3000+00", "A003", "AA030100+00")
RUN = take("8/2", "03:10:00:00", "KN 63 0044-3100+00", "A003", "AA030200+00")
BRIDGE = take("9/1", "03:20:00:00", "KN 63 0044-3200+00", "A003", "AA030300+00")
# Shot after the workprint was numbered: no ink number.
EEL = take("11/1", "04:00:00:00", "FN 44 0100-4000+00", "A004")
DUSK = take("12/1", "05:00:00:00", "KN 63 0051-5000+00", "A005", "AA050100+00")
BOAT = take("13/2", "05:10:00:00", "KN 63 0051-5100+00", "A005", "AA050200+00")
OARS = take("13/3", "05:20:00:00", "KN 63 0051-5200+00", "A005", "AA050300+00")
FLOOD = take("14/1", "05:30:00:00", "KN 63 0051-5300+00", "A005", "AA050400+00")
ALARM = take("15/3", "05:40:00:00", "KN 63 0051-5400+00", "A005", "AA050500+00")
LAMP = take("16/1", "06:00:00:00", "KN 63 0052-6000+00", "A006", "AA060100+00")
SEARCH = take("17/2", "06:10:00:00", "KN 63 0052-6100+00", "A006", "AA060200+00")
MORNING = take("18/1", "06:20:00:00", "KN 63 0052-6200+00", "A006", "AA060300+00")


def old_r1(v1):
    v1.clip(WATER, 32, 96)
    v1.clip(GATE, 48, 128)
    v1.clip(KEEPER, 32, 64)
    v1.gap(48)
    v1.clip(HOUSE, 32, 160)
    v1.transition(12, 12, name="Dissolve")
    v1.clip(KITCHEN, 32, 96)
    v1.clip(LETTER, 32, 64)
    v1.clip(LANE, 32, 112)
    v1.clip(RUN, 32, 48, effects=[speed(2.0)])
    v1.clip(BRIDGE, 32, 80)


def new_r1(v1):
    v1.clip(WATER, 32, 80)  # a foot off its tail
    v1.clip(GATE, 48, 64)  # split, with new film between the halves
    v1.clip(EEL, 32, 48)
    v1.clip(GATE, 112, 64)
    v1.clip(KEEPER, 32, 80)  # a foot more at its tail
    v1.gap(48)
    v1.clip(HOUSE, 32, 160)
    v1.transition(6, 6, name="Dissolve")  # was 24
    v1.clip(KITCHEN, 32, 96)
    v1.clip(LANE, 32, 112)
    v1.clip(LETTER, 32, 64)  # was before the lane
    v1.clip(RUN, 48, 36, effects=[speed(2.0)])  # eight frames off its head, four off its tail
    v1.clip(SEARCH, 32, 112)  # was in reel 2


def old_r2(v1):
    v1.clip(DUSK, 32, 96)
    v1.clip(BOAT, 32, 64)
    v1.clip(OARS, 32, 32)
    v1.clip(FLOOD, 64, 128)
    v1.clip(ALARM, 32, 80)
    v1.clip(LAMP, 32, 48)
    v1.clip(SEARCH, 32, 112)
    v1.gap(24)
    v1.clip(MORNING, 32, 160)


def new_r2(v1):
    v1.clip(DUSK, 48, 80)  # a foot off its head
    v1.clip(LAMP, 32, 48)  # was behind the flood and the alarm
    v1.clip(FLOOD, 48, 144)  # a foot more at its head
    v1.clip(BRIDGE, 32, 80)  # was in reel 1
    v1.clip(KEEPER, 32, 32)  # used again: it is in reel 1 too
    v1.gap(24)  # as long as the old one, but between other shots
    v1.clip(MORNING, 64, 128)  # two feet off its head


def edit(fill, name, hour):
    v1 = Track("V1", RATE)
    fill(v1)
    return timeline(name, hour * 86400, RATE, [v1], project="The Weir")


EDITS = {
    "weir-old-r1": lambda: edit(old_r1, "The Weir R1 cut 3", 1),
    "weir-old-r2": lambda: edit(old_r2, "The Weir R2 cut 3", 2),
    "weir-new-r1": lambda: edit(new_r1, "The Weir R1 cut 4", 1),
    "weir-new-r2": lambda: edit(new_r2, "The Weir R2 cut 4", 2),
}
