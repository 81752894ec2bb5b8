#include "formats/scans/scan_header.h"

#include "host/ascii_text.h"

#include <algorithm>
#include <cmath>

namespace formats {
namespace {

constexpr std::size_t most_digits = 9;

bool is_filler(char c) { return c == ' ' || c == '\xFF'; }

bool is_zero(std::string_view text) { return text.find_first_not_of('0') == std::string_view::npos; }

} // namespace

std::uint32_t HeaderBytes::number(std::size_t at) const {
    if (at > bytes_.size() || bytes_.size() - at < 4) return 0;
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value = value << 8 | static_cast<unsigned char>(bytes_[at + (big_end_first_ ? i : 3 - i)]);
    return value;
}

std::string HeaderBytes::text(std::size_t at, std::size_t size) const {
    if (at >= bytes_.size()) return {};
    std::string_view text = bytes_.substr(at, size);
    text = text.substr(0, text.find('\0'));
    while (!text.empty() && is_filler(text.back()))
        text.remove_suffix(1);
    while (!text.empty() && is_filler(text.front()))
        text.remove_prefix(1);
    return std::string(text);
}

const embedded::RateInfo* rate_of_header(double frames_per_second) {
    return std::isfinite(frames_per_second) ? embedded::nearest_rate(frames_per_second) : nullptr;
}

int number_of_digits(std::string_view text) {
    if (text.empty() || text.size() > most_digits || !std::all_of(text.begin(), text.end(), ascii::is_digit)) return -1;
    int number = 0;
    for (const char c : text)
        number = number * 10 + (c - '0');
    return number;
}

void take_time(ScanHeader& header, std::uint32_t pairs, bool drop) {
    HeaderTime time;
    time.drop = drop;
    header.time.reset();
    header.time_faulty = false;
    for (std::size_t i = 0; i < time.parts.size(); ++i) {
        const std::uint32_t tens = pairs >> (28 - 8 * i) & 0xF, ones = pairs >> (24 - 8 * i) & 0xF;
        header.time_faulty = header.time_faulty || tens > 9 || ones > 9;
        time.parts[i] = static_cast<int>(10 * tens + ones);
    }
    if (!header.time_faulty) header.time = time;
}

std::optional<HeaderKey> key_unless_zero(HeaderKey key) {
    const bool unset = is_zero(key.film) && is_zero(key.prefix) && key.count == 0;
    return unset ? std::nullopt : std::optional(std::move(key));
}

} // namespace formats
