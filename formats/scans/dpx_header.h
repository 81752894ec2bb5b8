#pragma once
// Headers of DPX pictures, in either order of bytes. Fields that are unset, of zeros or of bytes 255, say nothing.

#include "formats/scans/scan_header.h"

namespace formats {

/// All that is read of a file.
constexpr std::size_t dpx_header_bytes = 2048;

/// `bytes` are the first of a file; fewer than `dpx_header_bytes` where the file has no more.
HeaderReading read_dpx_header(std::string_view bytes);

} // namespace formats
