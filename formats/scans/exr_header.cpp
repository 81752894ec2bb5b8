#include "formats/scans/exr_header.h"

#include <algorithm>
#include <cstdio>

namespace formats {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view mark = "\x76\x2f\x31\x01"sv;
constexpr std::size_t begin_of_attributes = 8;
constexpr std::size_t longest_name = 255;
/// Enough for the names behind an attribute, so that a header is asked for in few pieces.
constexpr std::size_t spare = 1024;
constexpr int highest_code = 99, highest_prefix = 999'999, highest_count = 9999, most_offset = 119;

/// An attribute's value, little end first.
class Value {
public:
    explicit Value(std::string_view bytes) : bytes_(bytes), numbers_(bytes, false) {}

    std::int32_t number(std::size_t index) const { return static_cast<std::int32_t>(numbers_.number(4 * index)); }
    std::string text() const { return numbers_.text(0, bytes_.size()); }

private:
    std::string_view bytes_;
    HeaderBytes numbers_;
};

bool lies_within(int value, int most) { return value >= 0 && value <= most; }

std::string digits(int value, int width) {
    char text[16];
    std::snprintf(text, sizeof text, "%0*d", width, value);
    return text;
}

// Maker, stock, prefix, count, offset, perforations of a frame and of a count. Of an attribute that stands twice the
// last counts, as of all of them.
void read_key(const Value& value, ScanHeader& header) {
    const int maker = value.number(0), stock = value.number(1), prefix = value.number(2);
    HeaderKey key;
    key.count = value.number(3);
    key.offset = value.number(4);
    header.frame_perforations = value.number(5);
    header.count_perforations = value.number(6);
    header.key.reset();
    header.key_faulty = !lies_within(maker, highest_code) || !lies_within(stock, highest_code) ||
                        !lies_within(prefix, highest_prefix) || !lies_within(key.count, highest_count) ||
                        !lies_within(key.offset, most_offset);
    if (header.key_faulty) return;
    key.film = digits(maker, 2) + digits(stock, 2);
    key.prefix = digits(prefix, 6);
    header.key = key_unless_zero(std::move(key));
}

// Digit pairs, frames lowest. Other bits than these are flags; bit 6 says that numbers are dropped.
void read_time(const Value& value, ScanHeader& header) {
    constexpr std::uint32_t digits = 0x3F'7F'7F'3F, drop = 0x40;
    const auto coded = static_cast<std::uint32_t>(value.number(0));
    take_time(header, coded & digits, (coded & drop) != 0);
}

void read_rate(const Value& value, ScanHeader& header) {
    const auto below = static_cast<std::uint32_t>(value.number(1));
    if (below != 0) header.rate = rate_of_header(double(value.number(0)) / below);
}

void read_reel(const Value& value, ScanHeader& header) { header.reel = value.text(); }

struct Attribute {
    std::string_view name, type;
    std::size_t size; ///< the least
    void (*read)(const Value& value, ScanHeader& header);
};

constexpr Attribute attributes[] = {
    {"keyCode", "keycode", 28, read_key},
    {"timeCode", "timecode", 8, read_time},
    {"framesPerSecond", "rational", 8, read_rate},
    {"reelName", "string", 1, read_reel},
};

class Reader {
public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

    HeaderReading read() {
        if (bytes_.substr(0, mark.size()) != mark.substr(0, bytes_.size()) || bytes_.empty())
            return refused("isn't an OpenEXR picture");
        while (read_attribute()) {
        }
        return std::move(reading_);
    }

private:
    static HeaderReading refused(const char* why) {
        HeaderReading reading;
        reading.trouble = why;
        return reading;
    }

    bool fail(const char* why) {
        reading_ = refused(why);
        return false;
    }

    bool want(std::size_t bytes) {
        if (bytes > most_exr_header_bytes) return fail("has a header of more than 1 MiB");
        reading_.wanted = bytes;
        return false;
    }

    // Name, type, size of the value, value; an empty name ends the list.
    bool read_attribute() {
        std::string_view name, type;
        if (!read_name(name) || name.empty() || !read_name(type)) return false;
        if (bytes_.size() < at_ + 4) return want(at_ + spare);
        const std::size_t size = HeaderBytes(bytes_, false).number(at_);
        at_ += 4;
        if (bytes_.size() < at_ || bytes_.size() - at_ < size) return want(at_ + size + spare);
        take(name, type, bytes_.substr(at_, size));
        at_ += size;
        return true;
    }

    bool read_name(std::string_view& name) {
        const std::string_view rest = bytes_.substr(std::min(at_, bytes_.size()));
        const std::size_t end = rest.find('\0');
        if (std::min(end, rest.size()) > longest_name) return fail("has a header that can't be read");
        if (end == std::string_view::npos) return want(at_ + spare);
        name = rest.substr(0, end);
        at_ += end + 1;
        return true;
    }

    void take(std::string_view name, std::string_view type, std::string_view value) {
        for (const Attribute& known : attributes)
            if (known.name == name && known.type == type && value.size() >= known.size)
                known.read(Value(value), reading_.header);
    }

    std::string_view bytes_;
    std::size_t at_ = begin_of_attributes;
    HeaderReading reading_;
};

} // namespace

HeaderReading read_exr_header(std::string_view bytes) { return Reader(bytes).read(); }

} // namespace formats
