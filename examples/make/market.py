"""25 frames a second, frame for frame on film; one shot ran at 24 and one came from 16mm, so the list is mixed."""

from .otio import Take, Track, time_range, timeline

RATE = 25.0
MEDIA = "file:///transfers/market/"


def take(name, first, length, rate=RATE, **film):
    return Take(name, MEDIA + name.replace(" ", "_") + ".mxf", first, length, rate, **film)


STALLS = take("Stalls 1", 90000, 1500, reel="PAL01", film="35mm-4p", keycode="KN24 4675 1234&00", cam_reel="B01",
              inkcode="MA010100+00", snd_reel="DAT7", sound_timecode="09:15:00:10", scene="7", take="1")
FISH = take("Fish 2", 180000, 1500, reel="PAL01", film="35mm-4p", keycode="KN244675-2001+15", cam_reel="B01",
            scene="7A", take="2")
# Shot and transferred at 24: 48 film frames last two seconds, which are 50 frames of the edit.
SCALES = take("Scales 1", 172800, 1440, 24.0, reel="FT03", film="35mm-4p", keycode="KN244676-0500+02",
              cam_reel="B02", scene="8", take="1")
CROWD = take("Crowd 5", 270000, 1500, reel="PAL02", film="16mm-1p", keycode="KE430101 0077+05", cam_reel="S16A",
             scene="9", take="5")


def edit():
    v1 = Track("V1", RATE)
    v1.clip(STALLS, 30, 75)
    v1.clip(FISH, 100, 60)
    v1.media_clip(SCALES.reference(), time_range(SCALES.first + 96, 48, SCALES.rate), 50, SCALES.name)
    v1.clip(CROWD, 50, 45)
    v1.transition(6, 7, name="Dissolve")
    v1.clip(STALLS, 200, 88)
    v1.gap(12)
    v1.clip(FISH, 300, 110, markers=[("Bell rings", 25)])
    return timeline("Market", 900000, RATE, [v1], project="Saturday")
