"""A reel of a short film, 35mm 4-perf at 24: "The Lamplighter", reel 2.

V1 is the picture, V2 and V3 carry what stands over it, FX the opticals; A1 is dialogue, A2 music and effects.
"""

from .otio import (Take, Track, effect, freeze, generator, marker, missing, speed, stack, time_range,
                   timecode_frames, timeline)

RATE = 24.0
MEDIA = "file:///transfers/lamplighter/"


def take(scene, number, start, length, key, roll, name=None, **film):
    """A take that the telecine logged in full; `film` adds to the numbers or replaces them."""
    fields = {
        "reel": "LL0" + start[1], "film": "35mm-4p", "keycode": key, "cam_reel": roll, "lab_reel": "L" + roll[1:],
        "scene": scene, "take": str(number),
    }
    fields.update(film)
    label = name or f"{scene}/{number}"
    return Take(label, f"{MEDIA}{scene}_T{number}.mxf", timecode_frames(start, 24), length, RATE, **fields)


def logged(scene, number, start, length, columns):
    """A take of which only the telecine's log is known, in the columns of its own program."""
    url = f"{MEDIA}{scene}_T{number}.mxf"
    return Take(f"{scene}/{number}", url, timecode_frames(start, 24), length, RATE, {"ALE": columns})


# Scene 12: the square at dusk.
SQUARE = take("12", 3, "01:02:10:00", 1440, "KJ 29 1010-5867+07", "A012", inkcode="AA121000+00", snd_reel="SR04",
              sound_timecode="17:40:10:12", timecode_24p="01:02:10:00", description="Wide, lamps unlit")
LAMP = take("12A", 1, "01:05:00:00", 960, "KJ291010-6120&02", "A012", inkcode="AA121100+08", snd_reel="SR04",
            sound_timecode="17:52:00:00", description="CU wick")
LADDER = take("12B", 2, "01:08:30:12", 720, "KJ 29 1010 6302", "A013", snd_reel="SR04", sound_timecode="18:03:20:03")
# Scene 13: the kitchen, two angles of one talk.
ANNA = take("13", 4, "02:00:30:00", 2880, "KN 24 4675-1234-10", "A014", name="Анна 13/4", inkcode="AB130000+04",
            snd_reel="SR05", sound_timecode="09:12:44:20", timecode_24p="02:00:30:00")
TOMAS = take("13A", 2, "02:10:00:00", 2880, "kn244675-1520+01", "A015", name="Tomáš 13A/2", inkcode="AB130300+12",
             snd_reel="SR05", sound_timecode="09:31:02:07")
TABLE = take("13B", 1, "02:15:45:06", 600, "KN 24 4676 0088+15", "A015", snd_reel="SR05",
             sound_timecode="09:50:00:00", description="Insert: letter")
# Scene 14: the harbour wall at night, from the log alone.
WALL = logged("14", 5, "03:01:00:00", 1920, {
    "Tape": "LL03", "KN Start": "FN 77 0013-4999+14", "Camroll": "A016", "Labroll": "L016", "Scene": "14", "Take": "5",
    "Ink Number": "AC140010+00", "Soundroll": "SR06", "Sound TC": "21:15:30:00", "TC 24": "03:01:00:00"})
BEACON = logged("14A", 2, "03:06:12:00", 1200, {
    "tape": "LL03", "kn start": "FN770013 5133&03", "camroll": "A016", "scene": "14A", "take": "2"})
SURF = take("14B", 1, "03:09:00:00", 1200, "FN 77 0013-9998+06", "A017", name="灯台 14B/1")
# Scene 15: the attic; the last roll of the show.
ATTIC = take("15", 6, "04:00:10:00", 2400, "KU 22 9611 1802+02", "A018", name="Σοφίτα 15/6", inkcode="AD150000+00",
             snd_reel="SR07", sound_timecode="10:20:00:00")
CANDLE = take("15A", 3, "04:04:00:00", 1200, "KU 22 9611-2044+09", "A018", inkcode="AD150200+03")
WINDOW = take("15B", 2, "04:07:21:18", 1440, "KU229612 0301+11", "A019", name="נר 15B/2", snd_reel="SR07",
              sound_timecode="10:41:15:16")
STAIRS = take("15C", 1, "04:10:00:00", 960, "EK 65 0420-7777+05.3", "A019")
# Stock, a print and what isn't there.
STOCK = take("S1", 1, "05:00:00:00", 480, "KI 46 0009-0003+00", "LIB22", name="Stock: fog")
# Only a workprint is left of this one.
PRINT = Take("16/1 workprint", MEDIA + "16_T1.mxf", timecode_frames("05:10:00:00", 24), 600, RATE,
             {"cmx_3600": {"reel": "LL05"}}, film="35mm-4p", inkcode="AE160020+09", scene="16", take="1")
LETTER = {"reel": "LL05", "keycode": "KN 24 4676-0140+00", "inkcode": "AB130400+00", "cam_reel": "A015",
          "scene": "13C", "take": "1", "timecode": "05:20:00:00"}


def opening(v1):
    """Scene 12: a fade in, a dissolve, cuts, a cue or two."""
    v1.transition(0, 24, name="Fade in")
    v1.clip(SQUARE, 48, 132, markers=[("Lamps off", 40), ("Private note", 30, 0)])
    v1.transition(12, 12, name="Dissolve")
    v1.clip(LAMP, 30, 96)
    v1.clip(LADDER, 100, 57)
    v1.clip(SQUARE, 320, 49, markers=[("Editor only", 5, 0)])
    v1.clip(LAMP, 200, 72, effects=[speed(2.0)])
    v1.clip(LADDER, 240, 60, effects=[speed(0.5)])
    v1.clip(LAMP, 420, 40, effects=[freeze()])
    v1.clip(LADDER, 400, 48, effects=[speed(-1.0)])
    v1.wipe(10, 15, 23)
    v1.clip(SQUARE, 700, 90)
    v1.transition(24, 0, name="Dissolve")
    v1.gap(36)
    v1.transition(0, 16, name="Dissolve")


def talk(v1):
    """Scene 13: shot and counter-shot; each angle goes on where the talk has got to."""
    place = 60
    for turn in range(32):
        length = 26 + (turn * 17) % 43
        v1.clip((ANNA, TOMAS)[turn % 2], place, length)
        place += length + (turn * 5) % 11
        if turn == 10:
            v1.clip(TABLE, 120, 50)
        if turn == 20:
            v1.media_clip(missing("13C/1"), time_range(33, 44, RATE), 44, "13C/1", film=LETTER)


def harbour(v1):
    """Scene 14: chains of transitions, film that is lost, black in its own right."""
    v1.transition(8, 8, name="Dissolve")
    v1.clip(WALL, 100, 80)
    v1.transition(12, 13, "Film_Dissolve", "Film Dissolve")
    v1.clip(BEACON, 60, 70)
    v1.wipe(9, 9, 4, True, "Push wipe")
    v1.clip(SURF, 24, 66)
    v1.media_clip(missing("14C/1"), time_range(0, 31, RATE), 31, "14C/1")
    v1.clip(WALL, 300, 45, effects=[speed(1.5)])
    v1.clip(SURF, 30, 38)
    v1.media_clip(generator("black", "", 25, RATE), time_range(0, 25, RATE), 25, "")
    for cut in range(16):
        v1.clip((WALL, BEACON, SURF)[cut % 3], 400 + cut * 40, 18 + (cut * 13) % 29)
    v1.transition(20, 4, "Custom_Transition", "Ripple")
    v1.clip(WALL, 1500, 64)
    v1.clip(STOCK, 200, 36, enabled=False)
    v1.clip(STOCK, 40, 77)


def attic(v1):
    """Scene 15, with the rendered bits and the lab's own effect on V1."""
    v1.clip(ATTIC, 100, 90)
    rendered(v1)
    v1.clip(CANDLE, 40, 60, effects=[effect("Flop", optical=True)])
    v1.clip(ATTIC, 260, 52, effects=[effect("Grade")])
    inner, over = Track("inner", RATE), Track("over", RATE)
    inner.clip(WINDOW, 12, 58)
    over.clip(CANDLE, 300, 58)
    v1.stack("Window superimposed", [inner, over], 58)
    nest = Track("nest", RATE)
    nest.clip(STAIRS, 50, 40)
    nest.clip(WINDOW, 90, 35)
    v1.stack("Stairs", [nest], 75)
    v1.clip(PRINT, 77, 47)
    for cut in range(46):
        length = 15 + (cut * 11) % 37
        v1.clip((ATTIC, WINDOW, CANDLE, STAIRS)[cut % 4], 300 + cut * 12, length)
        if cut in (13, 14, 30):
            v1.transition(6, 6 + cut % 2, name="Dissolve")


def rendered(v1):
    """One rendered file that stands for two shots and the dissolve between them."""
    inside = Track("inside", RATE)
    inside.clip(ATTIC, 700, 50)
    inside.transition(10, 10, name="Dissolve")
    inside.clip(WINDOW, 200, 60)
    file = Take("Render 0001", MEDIA + "render_0001.mxf", 0, 110, RATE)
    v1.clip(file, 5, 100, film={"rendered": True, "rendered_from": stack("inside", [inside.otio()])})


def picture():
    v1 = Track("V1", RATE)
    opening(v1)
    talk(v1)
    harbour(v1)
    attic(v1)
    v1.transition(8, 8, "SMPTE_Wipe_101", "Barn door")
    v1.clip(SQUARE, 1000, 120)
    v1.transition(48, 0, name="Fade out")
    v1.markers = [marker("Reel note", 700, RATE)]
    return v1


def upper_picture():
    """V2: titles, inserts and a shot with an effect of its own. V3: the second layer of the same."""
    v2, v3 = Track("V2", RATE), Track("V3", RATE)
    v2.until(240)
    v2.media_clip(generator("Text", "Main title", 70, RATE), time_range(0, 70, RATE), 70, "Main title")
    v2.until(380)
    v2.clip(TABLE, 30, 40, effects=[effect("Split screen", optical=True)])
    v2.until(900)
    v2.clip(CANDLE, 700, 60)
    v2.transition(8, 8, name="Dissolve")
    v2.clip(WINDOW, 800, 50)
    v3.until(910)
    v3.clip(STOCK, 100, 42)
    v3.until(1700)
    v3.clip(BEACON, 20, 33, effects=[effect("Matte", optical=True, tracks=[0, 2])])
    return v2, v3


def opticals(end):
    """FX: numbers of tracks count from the bottom, so V1 is 0."""
    fx = Track("FX", RATE, subtype=8)
    fx.until(240)
    fx.gap(70, [effect("Superimpose title", tracks=[0, 1])])
    fx.until(900)
    fx.gap(110, [effect("Matte", tracks=[0, 1]), effect("Blur", tracks=[0, 2])])
    fx.until(1280)
    fx.gap(24, [effect("Flash", tracks=[0])])
    fx.gap(41, [effect("Glow", tracks=[0])])
    # The shot under this one has an effect already, so the lists call it an error.
    fx.gap(10, [effect("Flare", tracks=[0])])
    fx.until(end + 24)
    fx.gap(48, [effect("End roll", tracks=[0, 1])])
    return fx


def sound():
    a1, a2 = Track("A1", RATE, "Audio"), Track("A2", RATE, "Audio")
    a1.clip(SQUARE, 48, 132)
    a1.clip(LAMP, 30, 96)
    a1.gap(57)
    a1.clip(SQUARE, 320, 49)
    a1.until(700)
    for turn in range(14):
        length = 30 + (turn * 19) % 41
        a1.clip((ANNA, TOMAS)[turn % 2], 100 + turn * 60, length)
        if turn in (3, 9):
            a1.transition(3, 3, name="Crossfade")
    a1.clip(WALL, 100, 90, markers=[("Wave", 12)])
    a1.clip(ATTIC, 100, 140)
    waltz = Take("Waltz m4", MEDIA + "waltz.wav", 0, 4800000, 48000.0, reel="MUS1", snd_reel="MX02",
                 sound_timecode="20:00:00:00")
    a2.transition(0, 12, name="Crossfade")
    a2.media_clip(waltz.reference(), time_range(96000, 600000, 48000.0), 300, waltz.name)
    a2.gap(100)
    a2.media_clip(missing("Bell"), time_range(0, 48, RATE), 48, "Bell")
    a2.clip(SURF, 24, 200, name="Waves")
    a2.transition(24, 24, name="Crossfade")
    a2.clip(SURF, 400, 150, name="Waves again")
    return a1, a2


def edit():
    v1 = picture()
    v2, v3 = upper_picture()
    fx = opticals(v1.here)
    start = timecode_frames("01:00:00:00", 24)
    stack_marker = marker("Changeover", v1.here - 100, RATE)
    return timeline("The Lamplighter R2", start, RATE, [v1, v2, v3, fx, *sound()], markers=[stack_marker],
                    project="The Lamplighter", timecode_24p="01:00:00:00")
