"""An edit list at 25 with the lab's logs of its rushes: one from an editing system, one from the telecine."""

from .otio import timecode_frames

RATE = 25
RECORD = 10 * 3600 * RATE


def timecode(frame):
    seconds, frames = divmod(frame, RATE)
    return f"{seconds // 3600:02}:{seconds // 60 % 60:02}:{seconds % 60:02}:{frames:02}"


class Take:
    """A take on tape; the key number is that of its first frame, 16 frames to a count."""

    def __init__(self, slate, reel, start, length, prefix, count, frames, camera):
        self.scene, self.take = slate.split("-")
        self.name = slate
        self.reel = reel
        self.start = timecode_frames(start, RATE)
        self.length = length
        self.prefix, self.count, self.frames = prefix, count, frames
        self.camera = camera

    def key(self, frame, digits=4):
        count, frames = divmod(self.count * 16 + self.frames + frame, 16)
        return f"{count:0{digits}}+{frames:02}"


def takes(reel, hour, prefix, camera, slates, first, step):
    """Takes that follow each other on one reel with ten seconds between them."""
    made, start = [], hour * 3600 * RATE + 10 * RATE
    for number, slate in enumerate(slates):
        length = 900 + 75 * (number * 5 % 7)
        count, frames = first + number * step, number * 5 % 16
        made.append(Take(slate, reel, timecode(start), length, prefix, count, frames, camera))
        start += length + 10 * RATE
    return made


FIRST_DAY = takes("TK01", 1, "KJ291010", "A012", ["1-1", "1-2", "1A-1", "1B-3", "2-2", "2A-1"], 5867, 130)
SECOND_DAY = takes("TK02", 2, "KJ291044", "A019", ["3-1", "3A-2", "3B-1", "4-4", "4A-1"], 1200, 145)
NIGHT = takes("TK03", 3, "KI460077", "B003", ["11-1", "11-3", "11A-2", "12-1", "12-2"], 8845, 140)
ALL = FIRST_DAY + SECOND_DAY + NIGHT


class List:
    """A list in the making; `record` is where the next event begins."""

    def __init__(self, title):
        self.lines = [f"TITLE:   {title}", "FCM: NON-DROP FRAME", ""]
        self.record = RECORD
        self.event = 0

    def line(self, reel, channels, kind, source, record, used, length):
        self.lines.append(
            f"{self.event:03}  {reel:8} {channels:5} {kind:8} {timecode(source)} {timecode(source + used)} "
            f"{timecode(record)} {timecode(record + length)}")

    def cut(self, take, at, length, channels="B", kind="C", used=None):
        self.event += 1
        self.line(take.reel, channels, kind, take.start + at, self.record, length if used is None else used, length)
        self.lines.append(f"* FROM CLIP NAME:  {take.name}")
        self.record += length

    def speed(self, take, at, frames_a_second):
        self.lines.append(f"M2   {take.reel:8}       {frames_a_second:05.1f}                {timecode(take.start + at)}")

    def transition(self, before, leaves, take, at, length, kind, effect):
        """`leaves` is the frame of the take before at which the transition begins."""
        self.event += 1
        self.line(before.reel if before else "BL", "V", "C", before.start + leaves if before else 0, self.record, 0, 0)
        source = take.start + at if take else 0
        self.line(take.reel if take else "BL", "V", kind, source, self.record, length, length)
        self.lines.append(f"* EFFECT NAME: {effect}")
        if before:
            self.lines.append(f"* FROM CLIP NAME:  {before.name}")
        if take:
            self.lines.append(f"* TO CLIP NAME:  {take.name}")
        self.record += length

    def note(self, text):
        self.lines.append(f"* {text}")

    def text(self):
        return "\n".join(self.lines) + "\n"


def plain_cuts(made, first, count):
    for number in range(first, first + count):
        take = ALL[number * 7 % len(ALL)]
        made.cut(take, 30 + number * 37 % 700, 25 + number * 29 % 83)


def edit_list():
    made = List("FERRYMAN R1")
    opening, river, face, night, boat = FIRST_DAY[0], FIRST_DAY[2], SECOND_DAY[1], NIGHT[0], NIGHT[3]
    made.transition(None, 0, opening, 40, 120, "D    025", "FADE IN")
    plain_cuts(made, 1, 14)
    made.note(f"LOC: {timecode(made.record - 10)} RED     CHECK FOCUS")
    made.cut(river, 100, 60)
    made.transition(river, 160, face, 200, 90, "D    024", "CROSS DISSOLVE")
    plain_cuts(made, 20, 12)
    made.cut(night, 80, 50, used=100)
    made.speed(night, 80, 50.0)
    made.cut(boat, 120, 48, used=1)
    made.speed(boat, 120, 0.0)
    made.note("* FREEZE FRAME")
    made.cut(face, 400, 30)
    made.speed(face, 400, -25.0)
    plain_cuts(made, 40, 13)
    made.cut(opening, 300, 70)
    made.transition(opening, 370, night, 300, 80, "W005 016", "CLOCK WIPE")
    plain_cuts(made, 60, 14)
    made.cut(FIRST_DAY[5], 200, 64)
    made.note(f"KEYCODE: {FIRST_DAY[5].prefix} {FIRST_DAY[5].key(200)}")
    made.cut(boat, 500, 100)
    made.transition(boat, 600, None, 0, 50, "D    050", "FADE OUT")
    return made.text()


def key_with_blanks(take, frame):
    prefix = take.prefix
    return f"{prefix[:2]} {prefix[2:4]} {prefix[4:]}-{take.key(frame)}"


def ale():
    """The log of both days, as an editing system writes it."""
    lines = ["Heading", "FIELD_DELIM\tTABS", "VIDEO_FORMAT\tPAL", "FILM_FORMAT\t35mm,4perf", "AUDIO_FORMAT\t48kHz",
             "TAPE\tTK01", "FPS\t25", "", "Column",
             "\t".join(["Name", "Tracks", "Start", "End", "Tape", "KN Start", "KN End", "Camroll", "Scene", "Take"]), "",
             "Data"]
    for take in FIRST_DAY + SECOND_DAY:
        lines.append("\t".join([take.name, "VA1", timecode(take.start), timecode(take.start + take.length), take.reel,
                                key_with_blanks(take, 0), key_with_blanks(take, take.length), take.camera, take.scene,
                                take.take]))
    return "\n".join(lines) + "\n"


def placed(*fields):
    """A line of fixed columns from (column, text) pairs."""
    line = ""
    for column, text in fields:
        line = line.ljust(column) + text
    return line


def feet(frames):
    return f"{frames // 16:06}+{frames % 16:02}"


def flex_take(number, take):
    length = take.length
    return [
        placed((0, "100"), (4, "Edit"), (9, f"{number:04}"), (14, "to"), (17, take.reel), (29, "Field"), (35, "A1"),
               (38, "PAL")),
        placed((0, "110"), (4, "Scene"), (10, take.scene), (19, "Take"), (24, take.take), (33, "Cam Roll"),
               (42, take.camera), (51, "Sound"), (57, "S07")),
        placed((0, "200"), (4, "TKB"), (10, "35"), (13, "25.00"), (19, take.camera), (28, feet(0)),
               (38, feet(length)), (48, "Key"), (52, "KODAK"), (58, take.prefix), (67, take.key(0, 6))),
        placed((0, "300"), (4, "VTR-1"), (10, "Assemble"), (20, take.reel), (29, "At"), (32, timecode(take.start) + ".0"),
               (46, "For"), (50, timecode(length) + ".0"), (64, "Using"), (70, "LTC")),
    ]


def flex():
    """The telecine's log of the night's rushes."""
    lines = [
        placed((0, "000"), (4, "Manufacturer"), (17, "EXAMPLE"), (28, "No."), (32, "001"), (36, "Equip"),
               (42, "TELECINE"), (53, "Version"), (61, "01.00"), (70, "FLEx"), (75, "1004")),
        placed((0, "010"), (4, "Title"), (10, "FERRYMAN")),
        placed((0, "012"), (4, "Shoot Date"), (15, "09-18-26"), (25, "Transfer Date"), (39, "09-19-26")),
    ]
    for number, take in enumerate(NIGHT, 1):
        lines += flex_take(number, take)
    return "\n".join(lines) + "\n"


FILES = {"ferryman.edl": edit_list, "days.ale": ale, "night.flx": flex}
