#pragma once
// How film is counted on drawings: feet, and key numbers in groups.

#include "film/film_strip.h"
#include "host/labels.h"

#include <cstdint>
#include <string>

namespace documents {

/// A foot as a fraction of frames; both are 0 where the film isn't counted in feet.
struct FeetOfFilm {
    int perforations = 0; ///< of a foot
    int in_frame = 0;     ///< of a frame
    explicit operator bool() const { return perforations > 0 && in_frame > 0; }
    /// The frame in which a foot begins, as labels count: "0001+00".
    std::int64_t first_frame(std::int64_t foot) const;
    /// The last foot that begins in a frame or ahead of it.
    std::int64_t foot_of(std::int64_t frame) const;
};

FeetOfFilm feet_of(label_t film);

/// "0037+14", or frames where the film isn't counted in feet.
std::string position_text(label_t film, std::int64_t frame);

/// "KJ 29 1010" of "KJ291010": maker and kind, then the numbers of the strip. What isn't such a prefix stays.
std::string grouped_prefix(const std::string& prefix);

/// A key number parted into what tells the strip and what tells the frame.
struct KeyParts {
    std::string prefix, count;
    std::string label; ///< as labels have it: "KJ2910105867+05"
    std::string whole() const { return prefix.empty() ? count : prefix + ' ' + count; }
};
KeyParts key_parts(const film::Count& count, std::int64_t k);

} // namespace documents
