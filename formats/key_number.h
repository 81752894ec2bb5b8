#pragma once
// Key numbers in the spellings that people write.

#include <string>
#include <string_view>

namespace formats {

/// The plain form of a key number, as "KJ1234567890+12.1", from any of "KJ 12 3456 7890+12", "KJ123456-7890-12.1",
/// "KJ123456 7890&12(1)" and "KJ123456 007890+12 p1"; a letter behind the frames, which names a pulldown phase,
/// goes. Letters become capitals. What isn't a key number comes out in some form that doesn't parse as one.
std::string plain_key_number(std::string_view text);

} // namespace formats
