#pragma once
// What the header of one scanned picture says of its frame of film.

#include "embedded/rates.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace formats {

/// A key number as scanners write it.
struct HeaderKey {
    std::string film;   ///< maker and stock: four digits as "0274", or letters as "KJ"; empty where neither is told
    std::string prefix; ///< six digits
    int count = 0;
    int offset = 0; ///< perforations from the dot of the count to the frame
};

/// Hours, minutes, seconds and frames, each as it is written.
struct HeaderTime {
    std::array<int, 4> parts{};
    bool drop = false;
};

struct ScanHeader {
    std::optional<HeaderKey> key;
    std::optional<HeaderTime> time;
    std::optional<std::uint32_t> position; ///< the frame's number in its sequence
    const embedded::RateInfo* rate = nullptr;
    int frame_perforations = 0; ///< perforations of a frame, and from count to count; 0 where they aren't told
    int count_perforations = 0;
    std::string film_format;
    std::string reel;
    std::string slate;
    bool key_faulty = false; ///< there is a key number, and it can't be read
    bool time_faulty = false;
};

/// What the first bytes of a file gave.
struct HeaderReading {
    ScanHeader header;
    const char* trouble = nullptr; ///< why the file can't be used
    std::size_t wanted = 0;        ///< not 0: the header needs as many bytes of the file, and more than there were
};

/// Bytes that begin a file, as numbers; 0 behind their end.
class HeaderBytes {
public:
    HeaderBytes(std::string_view bytes, bool big_end_first) : bytes_(bytes), big_end_first_(big_end_first) {}

    std::uint32_t number(std::size_t at) const;
    /// Up to its first zero byte, without blanks and unset bytes at its ends.
    std::string text(std::size_t at, std::size_t size) const;

private:
    std::string_view bytes_;
    bool big_end_first_;
};

/// Null for what isn't a rate that films run at.
const embedded::RateInfo* rate_of_header(double frames_per_second);
/// Digits alone, at most nine of them; -1 for anything else.
int number_of_digits(std::string_view text);
/// The header's time from pairs of digits, a byte each and hours first; none, and faulty, where one is no digit.
void take_time(ScanHeader& header, std::uint32_t pairs, bool drop);
/// The key number, unless all of it is zero, as files have it that know of none.
std::optional<HeaderKey> key_unless_zero(HeaderKey key);

} // namespace formats
