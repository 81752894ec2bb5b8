#pragma once
// The fields of our own dictionary that reading and writing share.

#include "embedded/edit_builder.h"
#include "formats/otio/otio_metadata.h"

#include <utility>

namespace formats::otio {

struct ReelField {
    std::pair<int, int> medium; ///< as of `SourceDescription::reels`
    FieldName name;
};

inline constexpr ReelField reel_fields[] = {
    {{1, 2}, {"reel", "Tape", true}},          {{4, 3}, {"snd_reel", "Soundroll", false}},
    {{15, 1}, {"reel_24p", "", false}},        {{2, 1}, {"cam_reel", "Camroll", false}},
    {{10, 1}, {"lab_reel", "Labroll", false}}, {{11, 1}, {"comp_reel", "", false}},
};

} // namespace formats::otio
