#include "formats/scans/dpx_header.h"

#include "host/ascii_text.h"

#include <algorithm>
#include <bit>

namespace formats {
namespace {

constexpr std::string_view big_end_first_mark = "SDPX", little_end_first_mark = "XPDS";
constexpr std::uint32_t unset = 0xFFFFFFFF;

// Where fields lie, in bytes from the start of the file.
enum Place : std::size_t {
    at_image = 4, ///< where the picture begins
    end_of_generic = 1664,
    at_maker = 1664,
    at_stock = 1666,
    at_offset = 1668,
    at_prefix = 1670,
    at_count = 1676,
    at_format = 1680,
    at_position = 1712,
    at_film_rate = 1724,
    at_slate = 1764,
    at_timecode = 1920,
    at_video_rate = 1940,
};

constexpr std::size_t code_digits = 2, prefix_digits = 6, count_digits = 4, format_size = 32, slate_size = 100;

/// Two digits of a code, a single letter as it stands; nothing for anything else.
std::optional<std::string> code_of(const std::string& field) {
    if (field.empty()) return std::string();
    if (field.size() == 1 && ascii::is_capital(ascii::upper(field[0]))) return std::string(1, ascii::upper(field[0]));
    if (number_of_digits(field) < 0) return std::nullopt;
    return std::string(code_digits - std::min(field.size(), code_digits), '0') + field;
}

// The prefix keeps its leading zeros; some programs leave them out.
void read_key(const HeaderBytes& bytes, ScanHeader& header) {
    const std::string maker = bytes.text(at_maker, code_digits), stock = bytes.text(at_stock, code_digits);
    const std::string offset = bytes.text(at_offset, code_digits), prefix = bytes.text(at_prefix, prefix_digits);
    const std::string count = bytes.text(at_count, count_digits);
    if (offset.empty() && prefix.empty() && count.empty()) return;
    const std::optional<std::string> maker_code = code_of(maker), stock_code = code_of(stock);
    HeaderKey key;
    key.count = number_of_digits(count);
    key.offset = number_of_digits(offset);
    header.key_faulty = !maker_code || !stock_code || maker_code->size() != stock_code->size() || key.count < 0 ||
                        key.offset < 0 || number_of_digits(prefix) < 0;
    if (header.key_faulty) return;
    key.film = *maker_code + *stock_code;
    key.prefix = std::string(prefix_digits - prefix.size(), '0') + prefix;
    header.key = key_unless_zero(std::move(key));
}

/// Frames above 40 of slow material carry the mark of drop-frame; only the rate tells.
void read_time(const HeaderBytes& bytes, ScanHeader& header) {
    const std::uint32_t coded = bytes.number(at_timecode);
    if (coded != unset) take_time(header, coded, false);
}

const embedded::RateInfo* rate_at(const HeaderBytes& bytes, std::size_t at) {
    return rate_of_header(std::bit_cast<float>(bytes.number(at)));
}

} // namespace

HeaderReading read_dpx_header(std::string_view bytes) {
    HeaderReading reading;
    const std::string_view mark = bytes.substr(0, big_end_first_mark.size());
    if (mark != big_end_first_mark && mark != little_end_first_mark) {
        reading.trouble = "isn't a DPX picture";
        return reading;
    }
    const HeaderBytes whole(bytes, mark == big_end_first_mark);
    if (bytes.size() < end_of_generic) {
        reading.trouble = "ends inside its header";
        return reading;
    }
    // A picture may begin where the headers of film and video would stand.
    const std::uint32_t image = whole.number(at_image);
    const std::size_t end = image < end_of_generic ? bytes.size() : std::min<std::size_t>(image, bytes.size());
    const HeaderBytes header(bytes.substr(0, end), mark == big_end_first_mark);
    if (end >= at_timecode) {
        read_key(header, reading.header);
        const std::uint32_t position = header.number(at_position);
        if (position != unset) reading.header.position = position;
        reading.header.film_format = header.text(at_format, format_size);
        reading.header.slate = header.text(at_slate, slate_size);
        reading.header.rate = rate_at(header, at_film_rate);
    }
    if (end >= dpx_header_bytes) {
        read_time(header, reading.header);
        if (!reading.header.rate) reading.header.rate = rate_at(header, at_video_rate);
    }
    return reading;
}

} // namespace formats
