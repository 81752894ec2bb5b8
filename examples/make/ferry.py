"""23.976: a 24-frame edit of shots that came on 29.97 tapes, two of sound at another rate, one hand-cranked at 16."""

from .otio import Take, Track, time_range, timeline

RATE = 24000 / 1001
TAPE = 30000 / 1001
MEDIA = "file:///transfers/ferry/"


def take(name, first, length, rate, **film):
    return Take(name, MEDIA + name.replace(" ", "_") + ".mxf", first, length, rate, **film)


DECK = take("Deck 1", 108000, 3000, TAPE, reel="NT1", keycode="KI 46 2001-0600+06", cam_reel="F1",
            inkcode="FE010000+00", timecode_24p="01:00:00:00", scene="1", take="1")
BRIDGE = take("Bridge 2", 216000, 3000, TAPE, reel="NT1", keycode="KI462001 0720", cam_reel="F1",
              snd_reel="DA01", sound_timecode="11:02:10:15", sound_std="30fps", scene="2", take="2")
WAKE = take("Wake 1", 259200, 2400, RATE, reel="HD1", keycode="KI 46 2002-9999+12", cam_reel="F2", scene="3", take="1")
ARCHIVE = take("Launch 1911", 345600, 960, RATE, reel="AR1", keycode="EA110001 0001+00", cam_reel="ARC1", film_rate=16,
               scene="4", take="1")


def from_tape(track, source, at, length):
    """`length` frames of the edit, from a place that is counted in frames of the tape."""
    span = time_range(source.first + at, length, TAPE, RATE)
    track.media_clip(source.reference(), span, length, source.name)


def edit():
    v1 = Track("V1", RATE)
    from_tape(v1, DECK, 50, 48)
    from_tape(v1, BRIDGE, 103, 60)
    v1.clip(WAKE, 20, 72)
    v1.transition(12, 12, name="Dissolve")
    from_tape(v1, DECK, 505, 66)
    v1.clip(ARCHIVE, 48, 72)
    from_tape(v1, BRIDGE, 1001, 37)
    v1.clip(WAKE, 300, 90)
    return timeline("Ferry", 86400, RATE, [v1], project="Crossing", timecode_24p="01:00:00:00")
