"""16mm: 20 frames to a key number, 40 frames to a foot, and a count that runs past 9999."""

from .otio import Take, Track, freeze, timeline

RATE = 24.0
MEDIA = "file:///transfers/heron/"


def take(name, hour, length, **film):
    return Take(name, MEDIA + name.replace(" ", "_") + ".mxf", hour * 86400, length, RATE, film="16mm-1p", **film)


# The first shot is a print from the library: it has an ink number and no key number.
LIBRARY = take("Marsh 1962", 1, 600, reel="VT101", inkcode="LB 00120+10", cam_reel="LIB3", scene="1", take="1")
NEST = take("Nest 1", 2, 2400, reel="VT102", keycode="KE 43 1207-3301+07", inkcode="HA010200+00",
            cam_reel="H14", scene="2", take="1")
WINGS = take("Wings 4", 3, 2400, reel="VT102", keycode="KE 43 1207-9995+12", cam_reel="H14", scene="2A", take="4")
WADING = take("Wading 2", 4, 2400, reel="VT103", keycode="eh65 2322 1201", inkcode="HA020040+39",
              cam_reel="H15", scene="3", take="2", description="long lens")


def edit():
    v1 = Track("V1", RATE)
    v1.clip(LIBRARY, 24, 60)
    v1.clip(NEST, 100, 90)
    v1.clip(WINGS, 57, 72)
    v1.transition(8, 9, name="Dissolve")
    v1.clip(WADING, 200, 100)
    v1.clip(WADING, 300, 36, effects=[freeze()])
    v1.clip(NEST, 500, 81)
    v1.gap(40)
    v1.clip(WINGS, 160, 55)
    return timeline("Heron", 86400, RATE, [v1], project="Marsh Birds")
