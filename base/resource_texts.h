#pragma once
// The texts that the library has from its host, by their numbers there.

#include "host/settings.h"

/// What each says is the host's to word; `docs/hosting.md` lists them.
enum resource_text : ResId {
    text_black = 10061, ///< the name of a shot of black

    // Changelists.
    text_reading_cutlist = 10257, ///< "$FILE$" stands for the file
    text_writing_summary = 10260,
    text_writing_new_material = 10264,
    text_writing_transitions = 10265,
    text_comparing_cutlists = 10266,
    text_looking_for_moves = 10267,
    text_looking_for_reuse = 10268,
    text_joining_changes = 10269,
    text_writing_changes = 10272,

    // Lists of a cutlist.
    text_making_reports = 10471, ///< "$FILE$" stands for the file
    text_writing_opticals = 10472,
    text_scanning_for_reuse = 10473,
    text_key_below_zero = 10474, ///< an event that the scan for re-use leaves out
    text_writing_rolls = 10475,
    text_writing_pull_list = 10476,
    text_writing_optical_pulls = 10477,
    text_writing_reuse = 10478,
    text_writing_assembly = 10479,
    text_writing_timecodes = 10480,
};
