#pragma once
// 16-bit text as compound files hold it.

#include <string>
#include <string_view>

namespace formats::compound {

/// The UTF-8 of little-endian (or big-endian) 16-bit text, up to its closing 0 if it has one. Halves of pairs that
/// stand alone become U+FFFD, an odd byte at the end goes.
std::string utf8_of_wide(std::string_view bytes, bool big_endian = false);

} // namespace formats::compound
