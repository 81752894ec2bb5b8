#pragma once
// Headers of OpenEXR pictures: a list of attributes, of which the first part's are read.

#include "formats/scans/scan_header.h"

namespace formats {

/// A header isn't longer; real ones are some hundred bytes, or some ten thousand with a small picture in them.
constexpr std::size_t most_exr_header_bytes = std::size_t{1} << 20;

/// `bytes` are the first of a file. Where `wanted` comes back, call again with as many, if the file has them.
HeaderReading read_exr_header(std::string_view bytes);

} // namespace formats
