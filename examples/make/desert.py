"""65mm 5-perf: 16 frames to a key number of 80 perforations; no feet, so the lists count print frames."""

from .otio import Take, Track, missing, speed, time_range, timeline

RATE = 24.0
MEDIA = "file:///transfers/desert/"


def take(name, hour, length, **film):
    return Take(name, MEDIA + name.replace(" ", "_") + ".mxf", hour * 86400, length, RATE, film="65mm-5p80", **film)


DUNES = take("Dunes 1", 1, 2400, reel="W1", keycode="EB 65 0001-0040+03", cam_reel="W101", scene="1", take="1")
RIDERS = take("Riders 2", 2, 2400, reel="W1", keycode="EB 65 0001-0310+15", cam_reel="W101", scene="2", take="2")
# A reduction print was inked in 35mm; 65mm has no ink form, so the lists leave the number out.
WELL = take("Well 1", 3, 2400, reel="W2", keycode="EB 65 0002 7000", cam_reel="W102", scene="3", take="1",
            ink="35mm-4p", inkcode="WE010012+08")


def edit():
    v1 = Track("V1", RATE)
    v1.transition(0, 48, name="Fade in")
    v1.clip(DUNES, 80, 160)
    v1.clip(RIDERS, 17, 96)
    v1.transition(24, 24, name="Dissolve")
    v1.clip(WELL, 33, 130)
    v1.media_clip(missing("Mirage"), time_range(0, 40, RATE), 40, "Mirage")
    v1.clip(RIDERS, 400, 50, effects=[speed(-1.0)])
    v1.clip(DUNES, 500, 72)
    v1.transition(36, 0, name="Fade out")
    return timeline("Desert", 86400, RATE, [v1], project="Salt Road")
