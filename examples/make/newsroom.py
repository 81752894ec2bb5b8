"""29.97 drop-frame: film by 2:3 pulldown, four film frames to five of video, over two minutes' ends."""

from .otio import Take, Track, timeline

RATE = 30000 / 1001
MEDIA = "file:///transfers/newsroom/"


def drop_frames(text):
    """Frames since midnight of a 30 drop-frame timecode: two numbers are left out a minute, not each tenth."""
    hours, minutes, seconds, frames = (int(part) for part in text.replace(";", ":").split(":"))
    total = hours * 60 + minutes
    return (total * 60 + seconds) * 30 + frames - 2 * (total - total // 10)


def take(name, start, length, **film):
    return Take(name, MEDIA + name.replace(" ", "_") + ".mxf", drop_frames(start), length, RATE, timecode=start, **film)


DESK = take("Desk 3", "01:00:57;10", 1800, reel="D1", keycode="KX654321-0000+00", cam_reel="N1",
            snd_reel="SR9", sound_timecode="14:22:58;05", sound_std="29.97df", scene="1", take="3")
PHONE = take("Phone 1", "02:09:50;00", 1800, reel="D2", keycode="KX654321-0210+09", cam_reel="N1", scene="1A", take="1")
PRESS = take("Press 2", "03:10:00;02", 1800, reel="D2", keycode="FN 77 0013-4999+14", cam_reel="N2", scene="2",
             take="2", inkcode="NR020050+01")


def edit():
    v1 = Track("V1", RATE)
    v1.clip(DESK, 0, 100)
    v1.clip(PHONE, 250, 83)
    v1.transition(15, 15, name="Dissolve")
    v1.clip(PRESS, 61, 120)
    v1.clip(DESK, 301, 62)
    v1.clip(PHONE, 333, 150)
    v1.clip(PRESS, 502, 97)
    a1 = Track("A1", RATE, "Audio")
    a1.clip(DESK, 0, 100)
    a1.clip(PHONE, 250, 83)
    a1.transition(5, 5, name="Crossfade")
    a1.clip(PRESS, 61, 120)
    a1.clip(DESK, 301, 309)
    return timeline("Newsroom", drop_frames("01:00:56;20"), RATE, [v1, a1], project="Late Edition", drop_frame=True)
