"""One short reel in the formats of five kinds of programs, and the log of its tapes: what each can say of it.

The AAF of the same shots is made by tests/support/crossing_aaf.cpp, as it is binary.
"""

from .otio import Take, Track, speed, time_range, timeline

RATE = 24
MEDIA = "file:///transfers/crossing/"
NAME = "The Crossing R1"
START = 86400  # 01:00:00:00
DISSOLVE = 12  # frames from the cut on


class Shot:
    """`length` frames of the edit, of a medium of 40 seconds on a tape that begins 10 seconds ahead of what is used."""

    def __init__(self, name, tape, first, length, scene, take, share=1):
        self.name, self.tape, self.first, self.length = name, tape, first, length
        self.scene, self.take, self.share = scene, take, share
        self.media_first, self.media_length = first - 240, 960
        self.url = MEDIA + name + ".mov"


def at(hours, minutes, seconds, frames=0):
    return ((hours * 60 + minutes) * 60 + seconds) * RATE + frames


BANK = Shot("1-1", "TC01", at(1, 0, 20), 48, "1", "1")
ROPE = Shot("1-2", "TC01", at(1, 2, 0), 60, "1", "2")
BOAT = Shot("2-1", "TC02", at(2, 0, 15), 72, "2", "1")
BLACK = 24
OARS = Shot("2-2", "TC02", at(2, 3, 0, 12), 36, "2", "2", share=2)  # at half its speed
LANDING = Shot("1-3", "TC01", at(1, 5, 0), 40, "1", "3")
SHOTS = [BANK, ROPE, BOAT, OARS, LANDING]
ROW = [BANK, ROPE, BOAT, None, OARS, LANDING]  # None: black; a dissolve begins at the cut from ROPE to BOAT


def timecode(frame):
    return "%02d:%02d:%02d:%02d" % (frame // 86400, frame // 1440 % 60, frame // 24 % 60, frame % 24)


def places():
    """Each item with its first frame and the one behind its last, from the edit's start."""
    here, found = 0, []
    for shot in ROW:
        length = shot.length if shot else BLACK
        found.append((shot, here, here + length))
        here += length
    return found


def otio():
    track = Track("V1", RATE)
    for shot, _, _ in places():
        if not shot:
            track.gap(BLACK)
            continue
        if shot is BOAT:
            track.transition(0, DISSOLVE, name="Cross Dissolve")
        take = Take(shot.name, shot.url, shot.media_first, shot.media_length, RATE, reel=shot.tape, scene=shot.scene,
                    take=shot.take)
        span = time_range(shot.first, shot.length, RATE)
        effects = [speed(0.5)] if shot.share == 2 else []
        track.media_clip(take.reference(), span, shot.length, shot.name, effects)
    return timeline(NAME, START, RATE, [track])


def edl():
    lines = ["TITLE:   " + NAME.upper(), "FCM: NON-DROP FRAME", ""]

    def line(number, reel, kind, first, last, start, end):
        stamps = " ".join(timecode(frame) for frame in (first, last, START + start, START + end))
        lines.append("%03d  %-8s V     %-8s %s" % (number, reel, kind, stamps))

    for number, (shot, start, end) in enumerate(places(), 1):
        if not shot:
            line(number, "BL", "C", 0, BLACK, start, end)
            continue
        if shot is BOAT:
            edge = ROPE.first + ROPE.length
            line(number, ROPE.tape, "C", edge, edge, start, start)
        kind = "D    %03d" % DISSOLVE if shot is BOAT else "C"
        line(number, shot.tape, kind, shot.first, shot.first + shot.length // shot.share, start, end)
        if shot.share == 2:
            lines.append("M2   %-8s 012.0                %s" % (shot.tape, timecode(shot.first)))
        if shot is BOAT:
            lines.append("* FROM CLIP NAME:  " + ROPE.name)
            lines.append("* TO CLIP NAME:  " + shot.name)
        else:
            lines.append("* FROM CLIP NAME:  " + shot.name)
    return "\n".join(lines) + "\n"


def fcp7xml():
    rate = "<rate><timebase>24</timebase><ntsc>FALSE</ntsc></rate>"
    items = []
    for shot, start, end in places():
        if not shot:
            continue
        if shot is BOAT:
            items.append(
                f"     <transitionitem><start>{start}</start><end>{start + DISSOLVE}</end>"
                f"<alignment>start-black</alignment>{rate}\n      <effect><name>Cross Dissolve</name>"
                "<effectid>Cross Dissolve</effectid><effectcategory>Dissolve</effectcategory>"
                "<effecttype>transition</effecttype><mediatype>video</mediatype></effect></transitionitem>")
        first, last = (shot.first - shot.media_first) * shot.share, 0
        last = first + shot.length
        if shot is ROPE:
            end, last = -1, last + DISSOLVE
        if shot is BOAT:
            start = -1
        warp = ""
        if shot.share == 2:
            warp = ("\n      <filter><effect><name>Time Remap</name><effectid>timeremap</effectid>"
                    "<effectcategory>motion</effectcategory><effecttype>motion</effecttype><mediatype>video</mediatype>\n"
                    "       <parameter><parameterid>variablespeed</parameterid><value>0</value></parameter>"
                    "<parameter><parameterid>speed</parameterid><value>50</value></parameter>"
                    "<parameter><parameterid>reverse</parameterid><value>FALSE</value></parameter></effect></filter>")
        items.append(
            f'     <clipitem id="{shot.name}"><name>{shot.name}</name><duration>{shot.media_length}</duration>{rate}'
            f"<start>{start}</start><end>{end}</end><in>{first}</in><out>{last}</out>\n"
            f'      <file id="file {shot.name}"><name>{shot.name}.mov</name><pathurl>{shot.url}</pathurl>{rate}'
            f"<duration>{shot.media_length}</duration>\n"
            f"       <timecode>{rate}<string>{timecode(shot.media_first)}</string><frame>{shot.media_first}</frame>"
            f"<displayformat>NDF</displayformat><reel><name>{shot.tape}</name></reel></timecode></file>\n"
            f"      <logginginfo><scene>{shot.scene}</scene><shottake>{shot.take}</shottake></logginginfo>{warp}"
            "</clipitem>")
    length = places()[-1][2]
    return ('<?xml version="1.0" encoding="UTF-8"?>\n<!DOCTYPE xmeml>\n<xmeml version="5">\n'
            f'  <sequence id="{NAME}"><name>{NAME}</name><duration>{length}</duration>{rate}\n'
            f"   <timecode>{rate}<string>{timecode(START)}</string><frame>{START}</frame>"
            "<displayformat>NDF</displayformat></timecode>\n   <media><video><track>\n" + "\n".join(items) +
            "\n   </track></video></media>\n  </sequence>\n</xmeml>\n")


def fcpxml():
    def time(frames):
        return f"{frames}/24s"

    resources = ['        <format id="r1" name="FFVideoFormat1080p24" frameDuration="1/24s" width="1920" height="1080"/>',
                 '        <effect id="r2" name="Cross Dissolve" uid="FxPlug:4731E73A-8DAC-4113-9A30-AE85B1761265"/>']
    for number, shot in enumerate(SHOTS, 3):
        keys = (("reel", shot.tape), ("scene", shot.scene), ("shot", shot.take))
        metadata = "".join(f'<md key="com.apple.proapps.studio.{key}" value="{value}"/>' for key, value in keys)
        resources.append(
            f'        <asset id="r{number}" name="{shot.name}" start="{time(shot.media_first)}" '
            f'duration="{time(shot.media_length)}" hasVideo="1" format="r1">\n'
            f'            <media-rep kind="original-media" src="{shot.url}"/>\n'
            f"            <metadata>{metadata}</metadata>\n        </asset>")
    spine = []
    for shot, start, end in places():
        offset, length = time(START + start), time(end - start)
        if not shot:
            spine.append(f'                        <gap name="Gap" offset="{offset}" duration="{length}"/>')
            continue
        if shot is BOAT:
            spine.append(f'                        <transition name="Cross Dissolve" offset="{offset}" '
                         f'duration="{time(DISSOLVE)}"><filter-video ref="r2" name="Cross Dissolve"/></transition>')
        head = (f'                        <asset-clip ref="r{SHOTS.index(shot) + 3}" name="{shot.name}" '
                f'offset="{offset}" duration="{length}" tcFormat="NDF" ')
        if shot.share == 1:
            spine.append(head + f'start="{time(shot.first)}"/>')
            continue
        # On the clip's own clock, which runs twice as long as the medium's.
        began, went = (shot.first - shot.media_first) * shot.share, shot.media_length * shot.share
        spine.append(head + f'start="{time(began)}">\n                            <timeMap>'
                     f'<timept time="0s" value="{time(shot.media_first)}" interp="linear"/>'
                     f'<timept time="{time(went)}" value="{time(shot.media_first + shot.media_length)}" interp="linear"/>'
                     "</timeMap>\n                        </asset-clip>")
    total = time(places()[-1][2])
    return ('<?xml version="1.0" encoding="UTF-8"?>\n<!DOCTYPE fcpxml>\n<fcpxml version="1.10">\n    <resources>\n' +
            "\n".join(resources) + '\n    </resources>\n    <library>\n        <event name="Reels">\n'
            f'            <project name="{NAME}">\n'
            f'                <sequence format="r1" duration="{total}" tcStart="{time(START)}" tcFormat="NDF">\n'
            "                    <spine>\n" + "\n".join(spine) +
            "\n                    </spine>\n                </sequence>\n            </project>\n        </event>\n"
            "    </library>\n</fcpxml>\n")


def log():
    rows = ["Heading", "FIELD_DELIM\tTABS", "FPS\t24", "FILM_FORMAT\t35mm,4perf", "", "Column",
            "Name\tTape\tStart\tEnd\tCamroll\tScene\tTake\tKN Start", "", "Data"]
    for number, shot in enumerate(sorted(SHOTS, key=lambda one: one.first)):
        row = [shot.name, shot.tape, timecode(shot.media_first), timecode(shot.media_first + shot.media_length),
               "C1" if shot.tape == "TC01" else "C2", shot.scene, shot.take,
               "KJ 45 2001-%04d+00" % (1000 + 100 * number)]
        rows.append("\t".join(row))
    return "\n".join(rows) + "\n"


FILES = {"crossing.edl": edl, "crossing.xml": fcp7xml, "crossing.fcpxml": fcpxml, "crossing.ale": log}
