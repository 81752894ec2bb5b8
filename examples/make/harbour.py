"""35mm 3-perf: 21, 21 and 22 frames to a key number; the perforation of the dot is part of every number."""

from .otio import Take, Track, speed, timeline

RATE = 24.0
MEDIA = "file:///transfers/harbour/"


def take(name, hour, length, **film):
    return Take(name, MEDIA + name.replace(" ", "_") + ".mxf", hour * 86400, length, RATE, film="35mm-3p", **film)


QUAY = take("Quay 1", 1, 1200, reel="T01", keycode="KJ 12 1234-3456-10.3", cam_reel="A001", scene="4", take="1")
CRANE = take("Crane 3", 2, 1200, reel="T01", keycode="KQ123456 1234+00(1)", cam_reel="A002", scene="4A", take="3",
             inkcode="HB011000+05")
TUG = take("Tug 2", 3, 1200, reel="T02", keycode="KU 22 9611 1802+02.2", cam_reel="A003", scene="5", take="2")


def edit():
    v1 = Track("V1", RATE)
    v1.clip(QUAY, 0, 21)
    v1.clip(QUAY, 32, 64)
    v1.clip(CRANE, 0, 63)
    v1.transition(12, 12, name="Dissolve")
    v1.clip(TUG, 19, 85)
    v1.clip(CRANE, 64, 40, effects=[speed(2.0)])
    v1.clip(TUG, 130, 43)
    v1.transition(10, 11, "SMPTE_Wipe_5", "Clock")
    v1.clip(QUAY, 200, 65)
    return timeline("Harbour", 86400, RATE, [v1], project="Tide")
