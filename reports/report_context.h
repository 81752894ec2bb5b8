#pragma once
// What the lists of a run share: the film standard, and the unit of positions and lengths.

#include "base/code_text.h"

class ReuseScan;
class recdb;

/// State of the run in progress. Each run overwrites it, but for `mixed_standards`.
struct ReportContext {
    label_t film_label = label_none; ///< the film standard in its key form
    label_t ink_label = label_none;
    label_cvt* film_cvt = nullptr; ///< not owned
    label_cvt* ink_cvt = nullptr;
    EditLabel frame_label;
    int mixed_standards = 0;         ///< set by the first mixed file and never cleared
    ReuseScan* reuse_scan = nullptr; ///< made by the pull list, released when the run ends
};

ReportContext& report_context();

/// Takes over the film standard and the mark of a mixed file from the parameters of a cutlist.
void take_film_standard(const recdb& table);
/// Makes the labels of the standard. One without feet turns the unit of the lists into frames.
void choose_unit();
/// The name of the run's film format, as headings give it.
const char* format_name();

/// Feet and frames of a film frame of the reel, in the film format of the run.
ListText footage(int frame);
/// A position in the unit of the lists: feet and frames, or frames in six digits.
ListText position_text(int frame);
/// A number of frames in the unit of the lists.
ListText length_text(int frames);
