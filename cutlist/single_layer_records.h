#pragma once
// The rows of the single-layer lists while they are put together. A new one is blank: numbers 0, texts empty, film
// codes invalid.

#include "host/labels.h"
#include "host/text.h"

#include <cstdint>

/// What the rows of all lists end with. Lengths are film frames.
struct clip_part {
    LightweightString<wchar_t> shot_name;
    char comments[128] = "";
    char reel_id[9] = "";
    LabelPoint film_code_in = get_invalid_label()->get_label_point(0);
    LabelPoint film_code_out = get_invalid_label()->get_label_point(0); ///< of the last frame
    double speed = 1.0;
    std::int32_t clip_length = 0;
    char transition_in[31] = "";
    std::int32_t trns_in_length = 0;
    char transition_out[31] = "";
    std::int32_t trns_out_length = 0;
    char clip_modification[31] = "";
};

/// A piece of material under an optical, for the lists of types 1 and 2.
struct sl1_rec {
    std::int32_t fx_num = 0;
    std::int32_t at_edit_frame = 0;
    std::int32_t track = 0;
    char ab_roll = 0; ///< 'A' or 'B', 0 for none
    char fx_type[31] = "";
    clip_part clip;
};

/// A clip between opticals, or an optical as a whole, for the list of type 3.
struct sl2_rec {
    std::int32_t event_num = 0;
    char type = 0; ///< 'C' a clip, 'F' an optical
    std::int32_t fx_num = 0;
    std::int32_t at_edit_frame = 0;
    std::int32_t track = 0;
    char ab_roll = 0;
    clip_part clip;
};

/// An event with a cue, for the list of type 4.
struct sl3_rec {
    std::int32_t at_edit_frame = 0;
    std::int32_t track = 0;
    clip_part clip;
};
