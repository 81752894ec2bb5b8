"""A reel of opticals, 35mm 4-perf at 24: "The Lantern", reel 4.

V1 is the picture, V2 and V3 carry the layers, FX asks for them. The pieces are chosen so that every form that a line
of the opticals drawing has comes about somewhere.
"""

from .otio import Take, Track, effect, freeze, marker, missing, speed, time_range, timecode_frames, timeline

RATE = 24.0
MEDIA = "file:///transfers/lantern/"


def take(name, start, length, key, roll, **film):
    fields = {"reel": "LN0" + start[1], "film": "35mm-4p", "keycode": key, "cam_reel": roll, "scene": name.split("/")[0],
              "take": name.split("/")[1], **film}
    return Take(name, f"{MEDIA}{name.replace('/', '_T')}.mxf", timecode_frames(start, 24), length, RATE, **fields)


CLOCK = take("40/1", "01:00:00:00", 1200, "KJ 51 2040-1000+00", "A040", inkcode="AL401000+00")
STREET = take("41/2", "01:02:00:00", 1200, "KJ 51 2040-1400+08", "A040")
SHOP = take("42/3", "01:04:00:00", 1200, "KN 62 7001-2200+04", "A041", inkcode="AL420000+08")
GLASS = take("43/1", "02:00:00:00", 1440, "KN 62 7001-2600+12", "A041")
FLAME = take("44/2", "02:03:00:00", 1440, "FN 13 4405-0300+00", "A042")
SMOKE = take("45/6", "02:06:00:00", 1440, "FN 13 4405-0700+05", "A042")
HANDS = take("46/1", "03:00:00:00", 1440, "KU 80 1212-5000+10", "A043", inkcode="AL460500+00")
MOON = take("47/4", "03:03:00:00", 1440, "KU 80 1212-9950+00", "A043")
TITLE = take("T1/1", "04:00:00:00", 480, "EK 09 0001-0100+00", "T001")
# The lab has no numbers of this one yet.
LOST = Take("48/1", MEDIA + "48_T1.mxf", timecode_frames("03:10:00:00", 24), 960, RATE, reel="LN03",
            film="35mm-4p", cam_reel="A044", scene="48", take="1")

FLOP = effect("Flop", optical=True)
MASK = effect("Soft mask", optical=True)
BLOW_UP = effect("Blow up", optical=True)
TINT = effect("Tint", optical=True)


def street(v1, v2, fx):
    """A chain that no FX track asks for, then two layers with straight cuts on the upper one."""
    v1.clip(CLOCK, 100, 48, markers=[("Strikes nine", 10)])
    v1.clip(STREET, 40, 60)
    v1.transition(12, 12, name="Dissolve")
    v1.clip(SHOP, 60, 72)
    v1.wipe(8, 8, 4)
    v1.clip(GLASS, 30, 66)
    v1.clip(STREET, 200, 40)
    here = v1.here
    v1.clip(SHOP, 300, 160)
    v2.until(here + 4)
    v2.clip(FLAME, 20, 36)
    v2.clip(SMOKE, 20, 24, effects=[speed(2.0), FLOP])
    v2.gap(10)
    v2.clip(FLAME, 120, 30, effects=[speed(0.5), MASK])
    v2.gap(6)
    v2.clip(SMOKE, 140, 32)
    fx.until(here + 4)
    fx.gap(138, [effect("Superimpose flame", tracks=[0, 1])])


def shop(v1, v2, v3, fx):
    """Transitions in a row on both layers, and a third one over them: two effects that share one number."""
    v1.clip(CLOCK, 130, 40)
    here = v1.here
    v1.clip(GLASS, 120, 60)
    v1.transition(10, 10, name="Dissolve")
    v1.clip(HANDS, 40, 66, effects=[speed(1.5)])
    v1.transition(12, 12, "Film_Dissolve", "Film Dissolve")
    v1.clip(LOST, 100, 58, effects=[speed(0.5)])
    v1.wipe(6, 10, 2, True)
    v1.clip(MOON, 12, 70)
    v2.until(here + 4)
    v2.clip(TITLE, 0, 12, effects=[TINT])
    v2.transition(12, 8, name="Dissolve 1")
    v2.clip(SMOKE, 300, 14)
    v2.transition(6, 6, name="Dissolve 2")
    v2.clip(FLAME, 300, 40, effects=[speed(1.25)])
    v2.transition(8, 8, name="Dissolve 3")
    v2.clip(LOST, 300, 44)
    v2.wipe(10, 6, 7, name="Wipe 4")
    v2.clip(SMOKE, 420, 16)
    v2.transition(10, 6, name="Dissolve 5")
    v2.clip(FLAME, 420, 40)
    v3.until(here + 150)
    v3.clip(MOON, 500, 60)
    fx.until(here)
    fx.gap(124, [effect("Candle glow", tracks=[0, 1])])
    fx.gap(v1.here - fx.here - 30, [effect("Moonlight", tracks=[0, 1, 2])])


def workshop(v1, v2, v3, fx):
    """Cuts under the optical; over it shots and transitions by turns, so that these begin on either side."""
    v1.clip(FLAME, 700, 34)
    v1.clip(FLAME, 734, 30)
    here = v1.here
    v1.clip(HANDS, 300, 90)
    v1.clip(GLASS, 400, 80)
    v1.clip(HANDS, 420, 100, effects=[speed(-1.0)], markers=[("Hands back", 20)])
    v2.until(here)
    v2.clip(SMOKE, 600, 20)
    v2.clip(FLAME, 520, 30, effects=[speed(1.5), FLOP])
    v2.transition(6, 6, name="Dissolve right")
    v2.clip(SMOKE, 640, 30, effects=[speed(0.5), MASK])
    v2.clip(GLASS, 700, 18)
    v2.clip(FLAME, 580, 30, effects=[speed(2.0), BLOW_UP])
    v2.transition(6, 6, name="Dissolve left")
    v2.clip(SMOKE, 690, 30, effects=[speed(-1.0), TINT])
    v2.clip(GLASS, 740, 18)
    v2.clip(FLAME, 640, 8)
    v2.transition(8, 8, name="Right, at once")
    v2.clip(SMOKE, 740, 24)
    v2.clip(GLASS, 780, 16)
    v2.clip(FLAME, 660, 8)
    v2.transition(8, 8, name="Left, at once")
    v2.clip(SMOKE, 780, 24)
    fx.until(here)
    fx.gap(v2.here - here, [effect("Reflections", tracks=[0, 1])])
    # The shots under this one have an effect already, so the lists call it an error.
    fx.gap(8, [effect("Flare", tracks=[0])])


def attic(v1, v2, v3, fx):
    """Effects on V1 itself, chains before and behind them, layers that reach out of their optical."""
    v1.clip(STREET, 420, 30)
    v1.transition(8, 8, name="Dissolve")
    v1.clip(CLOCK, 400, 44)
    v1.clip(GLASS, 860, 60, effects=[FLOP])
    v1.clip(SHOP, 520, 50)
    v1.transition(10, 9, name="Dissolve")
    v1.clip(MOON, 700, 52, markers=[("Moon sets", 30)])
    v1.clip(LOST, 500, 40)
    here = v1.here
    v1.clip(LOST, 600, 50)
    v1.transition(12, 12, name="Dissolve")
    v1.clip(HANDS, 560, 90)
    v2.until(here - 30)
    v2.clip(SMOKE, 1000, 40)
    v2.transition(8, 8, name="Into the layer")
    v2.clip(FLAME, 900, 46, effects=[MASK])
    v2.transition(6, 6, name="Inside")
    v2.clip(SMOKE, 1100, 40)
    v2.clip(GLASS, 1000, 48, effects=[FLOP])
    v2.transition(4, 4, name="Out of the layer")
    v2.clip(FLAME, 1000, 30)
    v3.until(here - 20)
    v3.clip(MOON, 800, 30)
    v3.transition(6, 6, name="Before it")
    v3.clip(TITLE, 100, 40)
    fx.until(here + 20)
    fx.gap(100, [effect("Ghost", tracks=[0, 1, 2])])


def cuts(v1):
    """Scenes 49 to 52: plain cuts, with film that was used before."""
    for cut in range(12):
        v1.clip((CLOCK, STREET, SHOP, MOON)[cut % 4], 600 + cut * 30, 24 + (cut * 7) % 19)
    v1.clip(HANDS, 900, 36, effects=[freeze()])
    v1.clip(MOON, 710, 33)


def ending(v1, v2, v3, fx):
    """The last optical, a chain behind it, and a fade out."""
    here = v1.here
    v1.clip(STREET, 800, 64, effects=[speed(2.0)])
    v2.until(here + 10)
    v2.clip(TITLE, 200, 40)
    v3.until(here + 10)
    v3.clip(LOST, 700, 20)
    v3.clip(TITLE, 260, 20, effects=[TINT])
    fx.until(here + 10)
    fx.gap(40, [effect("End title", tracks=[0, 1, 2])])
    v1.clip(SHOP, 900, 48)
    v1.transition(12, 12, name="Dissolve")
    v1.clip(CLOCK, 900, 40)
    v1.transition(6, 6, name="Dissolve")
    v1.clip(MOON, 1100, 60)
    v1.transition(24, 0, name="Fade out")


def edit():
    v1, v2, v3 = Track("V1", RATE), Track("V2", RATE), Track("V3", RATE)
    fx = Track("FX", RATE, subtype=8)
    street(v1, v2, fx)
    shop(v1, v2, v3, fx)
    workshop(v1, v2, v3, fx)
    attic(v1, v2, v3, fx)
    cuts(v1)
    ending(v1, v2, v3, fx)
    fx.markers.append(marker("Flame to 60 %", 300, RATE))
    fx.markers.append(marker("Match the moon", 640, RATE))
    return timeline("The Lantern R4", timecode_frames("04:00:00:00", 24), RATE, [v1, v2, v3, fx],
                    project="The Lantern", timecode_24p="04:00:00:00")
