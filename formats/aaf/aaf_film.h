#pragma once
// Film of AAF files: its gauge, and its numbers as labels.

#include "embedded/edit_builder.h"
#include "formats/aaf/aaf_source.h"

#include <optional>
#include <string>

namespace formats::aaf {

struct Gauge {
    int millimetres = 35;        ///< 0 where it is none that has numbers
    int perforations = 4;        ///< of a frame
    const char* doubt = nullptr; ///< why its numbers may count otherwise

    /// As "35mm-4p".
    std::string text() const;
};

/// By the film's descriptor, else by its numbers; 35mm with four perforations where nothing tells.
Gauge gauge_of(const Traced& traced);

/// The number of a frame as a label of that kind; none where the gauge has no such numbers, or the frame can't be
/// counted.
std::optional<embedded::LabelDescription> edge_label(const Gauge& gauge, const EdgeNumber& number, std::int64_t frame,
                                                     UserLabelType kind);

} // namespace formats::aaf
