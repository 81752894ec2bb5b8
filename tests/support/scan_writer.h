#pragma once
// Writes headers of scanned pictures as scanners do, with no picture behind them.

#include <cstdint>
#include <string>
#include <vector>

namespace scan_writer {

/// The fields of a DPX header that are read; texts that are empty and numbers of all bits are unset.
struct Dpx {
    bool big_end_first = true;
    std::uint32_t image = 2048; ///< where the picture begins
    std::string maker = "02", stock = "74", offset = "00", prefix = "291010", count = "5867", format;
    std::uint32_t position = 0xFFFFFFFF;
    float film_rate = 24;
    std::uint32_t timecode = 0xFFFFFFFF; ///< 0x01000012 is 01:00:00:12
    float video_rate = 0;
    std::string slate;
    char filler = '\xFF'; ///< what unset texts are made of
};

/// 2048 bytes.
std::string bytes_of(const Dpx& header);

struct ExrAttribute {
    std::string name, type, value;
};

/// A header of one part.
std::string exr_bytes(const std::vector<ExrAttribute>& attributes);
/// Maker, stock, prefix, count, offset, perforations of a frame and of a count.
ExrAttribute key_code(const std::vector<int>& numbers);
/// As `Dpx::timecode`.
ExrAttribute time_code(std::uint32_t coded);
ExrAttribute frames_per_second(int above, int below);
ExrAttribute reel_name(const std::string& name);
/// A small picture, as programs put one into the header.
ExrAttribute preview(std::size_t bytes);

/// "01:00:00:12" as headers have it.
std::uint32_t coded_time(int hours, int minutes, int seconds, int frames);

/// With leading zeros.
std::string digits(int value, int width);

} // namespace scan_writer
