#pragma once
// An order as an edit, for the writers of edits: its pieces one after another on one picture track.

#include "embedded/warning.h"
#include "film/order_facts.h"
#include "host/edit.h"
#include "tool/scan_files.h"

#include <string>

namespace tool {

/// What of a piece becomes an event, and what the reel of its source is.
struct OrderEditing {
    enum class Shown : unsigned char {
        piece, ///< the whole piece, in whole frames of its timecode
        needed ///< what is needed of it; the piece is its media
    };
    /// What a source is looked up by.
    enum class Reel : unsigned char { roll, lab, tape };

    const char* option; ///< that messages name
    std::string title;  ///< of the edit
    Shown shown = Shown::piece;
    Reel reel = Reel::tape;
    bool fields = true;               ///< scene, take and all rolls, beside what the source is looked up by
    bool one_rate = false;            ///< refuse pieces whose timecodes count otherwise than the first one's
    bool needs_timecode = false;      ///< leave pieces without one to the writer; else they count from 0
    const FileNames* files = nullptr; ///< of image sequences; null: none
    FrameNumbers numbers = FrameNumbers::timecode;
};

/// `warnings` take what pieces lack. Throws `JobError` where the pieces can't stand in one edit.
EditPtr edit_of_order(const film::OrderToTell& order, const OrderEditing& editing, embedded::Warnings& warnings);

} // namespace tool
