"""Small pieces of OpenTimelineIO files, as plain dictionaries, and a writer that always gives the same bytes.

Times are counted in whole frames of the rate that is handed in; nothing here rounds.
"""

import json
import pathlib

MODIFIED = 1789934400  # 20 September 2026, 20:00 UTC: the day on which the examples say they were cut
LINE = 110  # an object that fits such a line stands on one


def rational(value, rate):
    return {"OTIO_SCHEMA": "RationalTime.1", "rate": rate, "value": value}


def time_range(start, duration, rate, duration_rate=None):
    return {
        "OTIO_SCHEMA": "TimeRange.1",
        "duration": rational(duration, duration_rate or rate),
        "start_time": rational(start, rate),
    }


def timecode_frames(text, count):
    """Frames since midnight of a non-drop timecode."""
    hours, minutes, seconds, frames = (int(part) for part in text.split(":"))
    return ((hours * 60 + minutes) * 60 + seconds) * count + frames


class Take:
    """One take as it was transferred: a media file and what the lab wrote down of it.

    `first` is the frame count of its first frame, `length` its frames, both at `rate`. Keywords are the film
    fields; `other` is metadata of other programs, used as it stands.
    """

    def __init__(self, name, url, first, length, rate=24.0, other=None, **film):
        self.name, self.url, self.first, self.length, self.rate = name, url, first, length, rate
        self.metadata = dict(other or {})
        if film:
            self.metadata["quillbrook"] = film

    def reference(self):
        return {
            "OTIO_SCHEMA": "ExternalReference.1",
            "name": self.name,
            "target_url": self.url,
            "available_range": time_range(self.first, self.length, self.rate),
            "metadata": self.metadata,
        }


def missing(name, numbers=None):
    return {
        "OTIO_SCHEMA": "MissingReference.1",
        "name": name,
        "available_range": None,
        "metadata": {"quillbrook": numbers} if numbers else {},
    }


def generator(kind, name, length, rate):
    return {
        "OTIO_SCHEMA": "GeneratorReference.1",
        "name": name,
        "generator_kind": kind,
        "parameters": {},
        "available_range": time_range(0, length, rate),
        "metadata": {},
    }


def speed(scalar):
    return {
        "OTIO_SCHEMA": "LinearTimeWarp.1",
        "name": "",
        "effect_name": "LinearTimeWarp",
        "time_scalar": scalar,
        "metadata": {},
    }


def freeze():
    return {
        "OTIO_SCHEMA": "FreezeFrame.1",
        "name": "",
        "effect_name": "FreezeFrame",
        "time_scalar": 0,
        "metadata": {},
    }


def effect(name, **lab):
    return {
        "OTIO_SCHEMA": "Effect.1",
        "name": name,
        "effect_name": name,
        "metadata": {"quillbrook": lab} if lab else {},
    }


def marker(text, at, rate, flags=None):
    return {
        "OTIO_SCHEMA": "Marker.2",
        "name": text,
        "color": "RED",
        "marked_range": time_range(at, 0, rate),
        "metadata": {} if flags is None else {"quillbrook": {"flags": flags}},
    }


class Track:
    """A track that is filled from its head. `here` is the frame at which the next item will stand."""

    def __init__(self, name, rate, kind="Video", subtype=None):
        self.name, self.rate, self.kind, self.subtype = name, rate, kind, subtype
        self.children, self.markers, self.here = [], [], 0

    def add(self, item, length):
        self.children.append(item)
        self.here += length
        return item

    def clip(self, take, at, length, name=None, effects=(), markers=(), film=None, enabled=True):
        """`length` frames of a take from its frame `at` on; markers are (text, frame of the clip[, flags])."""
        start = take.first + at
        marks = [marker(m[0], start + m[1], take.rate, *m[2:]) for m in markers]
        reference = take.reference()
        source_range = time_range(start, length, take.rate)
        return self.media_clip(reference, source_range, length, name or take.name, effects, marks, film, enabled)

    def media_clip(self, reference, source_range, length, name, effects=(), markers=(), film=None, enabled=True):
        item = {
            "OTIO_SCHEMA": "Clip.2",
            "name": name,
            "enabled": enabled,
            "source_range": source_range,
            "media_references": {"DEFAULT_MEDIA": reference},
            "active_media_reference_key": "DEFAULT_MEDIA",
            "effects": list(effects),
            "markers": list(markers),
            "metadata": {"quillbrook": film} if film else {},
        }
        return self.add(item, length)

    def gap(self, length, effects=()):
        item = {
            "OTIO_SCHEMA": "Gap.1",
            "name": "",
            "enabled": True,
            "source_range": time_range(0, length, self.rate),
            "effects": list(effects),
            "markers": [],
            "metadata": {},
        }
        return self.add(item, length)

    def until(self, frame):
        """A gap up to a frame."""
        return self.gap(frame - self.here)

    def transition(self, before, behind, kind="SMPTE_Dissolve", name="", **film):
        item = {
            "OTIO_SCHEMA": "Transition.1",
            "name": name,
            "transition_type": kind,
            "in_offset": rational(before, self.rate),
            "out_offset": rational(behind, self.rate),
            "metadata": {"quillbrook": film} if film else {},
        }
        return self.add(item, 0)

    def wipe(self, before, behind, pattern, reversed_=False, name="Wipe"):
        return self.transition(before, behind, "Custom_Transition", name,
                               wipe={"pattern": pattern, "reversed": reversed_})

    def stack(self, name, tracks, length):
        """A nest. One track is spliced in, several are one event of rendered material."""
        return self.add(stack(name, [t.otio() for t in tracks], time_range(0, length, self.rate)), length)

    def otio(self):
        return {
            "OTIO_SCHEMA": "Track.1",
            "name": self.name,
            "kind": self.kind,
            "enabled": True,
            "source_range": None,
            "children": self.children,
            "effects": [],
            "markers": self.markers,
            "metadata": {} if self.subtype is None else {"quillbrook": {"subtype": self.subtype}},
        }


def stack(name, children, source_range=None, markers=()):
    return {
        "OTIO_SCHEMA": "Stack.1",
        "name": name,
        "enabled": True,
        "source_range": source_range,
        "children": children,
        "effects": [],
        "markers": list(markers),
        "metadata": {},
    }


def timeline(name, start, rate, tracks, markers=(), **film):
    return {
        "OTIO_SCHEMA": "Timeline.1",
        "name": name,
        "global_start_time": rational(start, rate),
        "metadata": {"quillbrook": {"modification_time": MODIFIED, **film}},
        "tracks": stack("tracks", [track.otio() for track in tracks], markers=markers),
    }


def text_of(value, depth=0):
    """JSON with short objects on one line, so that a file can be read and compared by eye."""
    flat = json.dumps(value, ensure_ascii=False)
    if not isinstance(value, (dict, list)) or not value or len(flat) + depth * 2 <= LINE:
        return flat
    inner, outer = "  " * (depth + 1), "  " * depth
    if isinstance(value, dict):
        rows = [inner + json.dumps(key) + ": " + text_of(each, depth + 1) for key, each in value.items()]
        return "{\n" + ",\n".join(rows) + "\n" + outer + "}"
    return "[\n" + ",\n".join(inner + text_of(each, depth + 1) for each in value) + "\n" + outer + "]"


def write_text(path, text):
    path = pathlib.Path(path)
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text, encoding="utf-8", newline="\n")


def write(path, value):
    write_text(path, text_of(value) + "\n")
