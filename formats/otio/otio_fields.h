#pragma once
// The fields of our own dictionary that reading and writing share.

#include "embedded/edit_builder.h"
#include "formats/otio/otio_metadata.h"

#include <utility>

namespace formats::otio {

struct ReelField {
    embedded::ReelLabel medium;
    FieldName name;
};

inline constexpr ReelField reel_fields[] = {
    {embedded::tape_reel, {"reel", "Tape", true}},        {embedded::sound_reel, {"snd_reel", "Soundroll", false}},
    {embedded::reel_24p, {"reel_24p", "", false}},        {embedded::camera_reel, {"cam_reel", "Camroll", false}},
    {embedded::lab_reel, {"lab_reel", "Labroll", false}}, {embedded::composite_reel, {"comp_reel", "", false}},
};

} // namespace formats::otio
