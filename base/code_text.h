#pragma once
// The small texts of film that lists share: names of film formats, codes and speeds.

#include "host/labels.h"

/// The name of a film format by its kind of label, static.
const char* edgecode_name(int type);

/// Text of a key or ink number, empty for an invalid point. Without its prefix the count stands where it
/// stands in a line that shows the prefix. `out` holds at least 20 bytes.
char* code_text(char* out, LabelPoint& point, int with_prefix);

/// A length in feet as a field of nine characters, in a static buffer that the next call overwrites.
const char* footage_text(const char* text);

/// A short text by value.
struct ListText {
    char text[48] = "";
};

/// The text of a point, empty for an invalid one.
ListText point_text(LabelPoint point);
/// The count, without its prefix, of the last frame of film ahead of the exclusive end `point`. `slack` is
/// added to the samples of that frame before they are cut to a whole number.
ListText last_frame_text(LabelPoint point, double speed, double slack = 0.0);
/// The codes of a stretch of film: its first frame whole, its last by the count alone.
struct CodePair {
    ListText in;
    ListText out;
};
/// The same words for both, where there are no codes.
CodePair missing_codes(const char* words);
/// A speed in two significant digits.
ListText speed_text(double speed);
