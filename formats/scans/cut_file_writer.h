#pragma once
// Writes stretches of film as a cut list in fixed columns (`.cut`), as conform programs take it.
//
//     Shot Footage  Length    Keycode     In Frame  Out Frame  Roll
//     001  0000+00  0002+08   KJ 12 3456  1000+04   1002+12    A012

#include "formats/edit_writing.h"
#include "host/labels.h"

#include <cstdint>
#include <string>
#include <vector>

namespace formats {

/// Whole frames of film with key numbers.
struct CutFileRow {
    LabelPoint first;
    std::int64_t frames = 0;
    std::string roll;
    int shot = 0; ///< its number
};

/// Footage runs on from row to row; out is the frame behind the last. The rows are of one gauge, which is counted in
/// feet. Left out, and told: numbers that the columns don't hold, so that no reader takes a part of one.
Written write_cut_file(const std::string& title, const std::vector<CutFileRow>& rows);

} // namespace formats
