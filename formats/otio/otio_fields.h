#pragma once
// The fields of our own dictionary that reading and writing share.

#include "embedded/edit_builder.h"
#include "formats/otio/otio_metadata.h"

#include <utility>

namespace formats::otio {

struct ReelField {
    embedded::ReelLabel medium;
    Field field;
};

inline constexpr ReelField reel_fields[] = {
    {embedded::tape_reel, Field::reel},    {embedded::sound_reel, Field::sound_reel},
    {embedded::reel_24p, Field::reel_24p}, {embedded::camera_reel, Field::camera_reel},
    {embedded::lab_reel, Field::lab_reel}, {embedded::composite_reel, Field::composite_reel},
};

} // namespace formats::otio
