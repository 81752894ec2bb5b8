#include "tests/support/scan_writer.h"

#include <algorithm>
#include <bit>

namespace scan_writer {
namespace {

std::string number(std::uint32_t value, bool big_end_first) {
    std::string bytes;
    for (int i = 0; i < 4; ++i)
        bytes += static_cast<char>(value >> (big_end_first ? 24 - 8 * i : 8 * i) & 0xFF);
    return bytes;
}

std::uint32_t pair(int value) { return static_cast<std::uint32_t>(value / 10 * 16 + value % 10); }

} // namespace

std::string bytes_of(const Dpx& header) {
    std::string bytes(2048, '\0');
    const auto put_text = [&](std::size_t at, std::size_t size, const std::string& text) {
        bytes.replace(at, size,
                      text.empty() ? std::string(size, header.filler) : text + std::string(size - text.size(), '\0'));
    };
    const auto put = [&](std::size_t at, std::uint32_t value) {
        bytes.replace(at, 4, number(value, header.big_end_first));
    };
    bytes.replace(0, 4, header.big_end_first ? "SDPX" : "XPDS");
    put(4, header.image);
    put_text(1664, 2, header.maker);
    put_text(1666, 2, header.stock);
    put_text(1668, 2, header.offset);
    put_text(1670, 6, header.prefix);
    put_text(1676, 4, header.count);
    put_text(1680, 32, header.format);
    put(1712, header.position);
    put(1724, std::bit_cast<std::uint32_t>(header.film_rate));
    put_text(1764, 100, header.slate);
    put(1920, header.timecode);
    put(1940, std::bit_cast<std::uint32_t>(header.video_rate));
    return bytes;
}

std::string exr_bytes(const std::vector<ExrAttribute>& attributes) {
    std::string bytes = "\x76\x2f\x31\x01" + number(2, false);
    for (const ExrAttribute& attribute : attributes)
        bytes += attribute.name + '\0' + attribute.type + '\0' +
                 number(static_cast<std::uint32_t>(attribute.value.size()), false) + attribute.value;
    return bytes + '\0';
}

ExrAttribute key_code(const std::vector<int>& numbers) {
    std::string value;
    for (const int each : numbers)
        value += number(static_cast<std::uint32_t>(each), false);
    return {"keyCode", "keycode", value};
}

ExrAttribute time_code(std::uint32_t coded) {
    return {"timeCode", "timecode", number(coded, false) + number(0, false)};
}

ExrAttribute frames_per_second(int above, int below) {
    return {"framesPerSecond", "rational",
            number(static_cast<std::uint32_t>(above), false) + number(static_cast<std::uint32_t>(below), false)};
}

ExrAttribute reel_name(const std::string& name) { return {"reelName", "string", name}; }

ExrAttribute preview(std::size_t bytes) { return {"preview", "preview", std::string(bytes, '\x7F')}; }

std::uint32_t coded_time(int hours, int minutes, int seconds, int frames) {
    return pair(hours) << 24 | pair(minutes) << 16 | pair(seconds) << 8 | pair(frames);
}

std::string digits(int value, int width) {
    const std::string text = std::to_string(value);
    return std::string(static_cast<std::size_t>(std::max(0, width - static_cast<int>(text.size()))), '0') + text;
}

} // namespace scan_writer
