#pragma once
// The layout of Keylog files, and which of their columns fill which columns of a film log.

#include "host/labels.h"

/// Columns of a Keylog file, in the order of their offsets. Up to the comments their places are fixed; those
/// behind are found by name.
enum keylog_column : int {
    kc_event = 0,
    kc_soundroll = 2,
    kc_take = 5,
    kc_vttc_drop = 10,
    kc_nagra_drop = 11,
    kc_descript = 17,
    kc_comments = 18,
    kc_dur_frames = 22,
    kc_ink_out = 26,
    kc_labroll = 27,
    kc_dlyroll = 28,
    kc_slate = 29,
    kc_none = 30, ///< its offset ends the list
};

/// A row's name is scene and take; otherwise reel and number.
constexpr bool keylog_name_from_scene = true;
/// Leaves the comments out of the notes.
constexpr bool keylog_no_comments = false;
/// Clears the line before each read.
constexpr bool keylog_clear_line = false;

/// What a header line begins with, in any case of letters.
extern const char keylog_header[];
constexpr int keylog_header_length = 218;

/// Names of the columns as a header in lower case has them, from `kc_event` to `kc_slate`.
extern const char* const keylog_names[];
/// The other name of `kc_dur_frames`.
extern const char* const keylog_short_dur_frames;
/// Columns that may lack without a word; closed by null.
extern const char* const keylog_optional_names[];

/// The Keylog column of each column of a film log, and of three more.
extern const int keylog_column_map[];

/// The standard of a name, compared exactly; not set for a name that isn't known.
TCInf keylog_tv_standard(const char* name);
