#pragma once
// The events of a CMX 3600 edit list as they are written, before anything is known of the rate.

#include "embedded/fraction.h"
#include "formats/edl/edl_lines.h"
#include "host/ascii_text.h"

#include <bit>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace formats::edl {

/// A timecode by its digits; the frames are checked when the rate is known.
struct Timecode {
    int hours = 0, minutes = 0, seconds = 0, frames = 0;
    bool marked_drop = false; ///< written with ";"

    friend bool operator==(const Timecode& a, const Timecode& b) {
        return a.hours == b.hours && a.minutes == b.minutes && a.seconds == b.seconds && a.frames == b.frames;
    }
};

std::optional<Timecode> parse_timecode(std::string_view text);

/// Some of the numbers from 1 to 64, walked upward.
class NumberSet {
public:
    class Walk {
    public:
        explicit Walk(std::uint64_t rest) : rest_(rest) {}
        int operator*() const { return std::countr_zero(rest_) + 1; }
        Walk& operator++() {
            rest_ &= rest_ - 1;
            return *this;
        }
        bool operator==(const Walk&) const = default;

    private:
        std::uint64_t rest_;
    };

    NumberSet() = default;
    NumberSet(std::initializer_list<int> numbers) {
        for (const int number : numbers)
            insert(number);
    }
    void insert(int number) { bits_ |= std::uint64_t{1} << (number - 1); }
    bool empty() const { return bits_ == 0; }
    Walk begin() const { return Walk(bits_); }
    Walk end() const { return Walk(0); }
    bool operator==(const NumberSet&) const = default;

private:
    std::uint64_t bits_ = 0;
};

/// Picture tracks and sound channels, numbered from 1.
struct Channels {
    NumberSet picture;
    NumberSet sound;
};

/// "V", "V2", "A", "A12", "AA", "AA/V", "B", "A1234V", "NONE" and their like; nothing for what isn't one.
std::optional<Channels> parse_channels(std::string_view text);

enum class EditType { cut, dissolve, wipe, key_background, key, key_out };

/// A key number that a comment holds.
struct KeyNumber {
    std::string text; ///< plain form
    std::string film; ///< text of the film kind
    /// A frame of tape with which one of film begins; without one the number's own is such.
    std::optional<Timecode> cycle = {};
};

/// One line of an event with what the lines below it say of its clip.
struct EventLine {
    int line = 0;
    std::string reel;
    Channels channels;
    EditType type = EditType::cut;
    int wipe_code = 0;
    int frames = 0; ///< of the transition
    Timecode source_in, source_out, record_in, record_out;
    bool source_drop = false; ///< the frame code mode in force, or a ";"

    std::string name;
    std::string file;
    std::string real_reel;                   ///< in full, where a comment tells it
    std::optional<embedded::Fraction> speed; ///< frames a second, as written
    bool freeze = false;                     ///< a comment says so
    std::optional<KeyNumber> key;
    std::vector<std::string> effects;

    bool black() const { return ascii::same(reel, "BL") || ascii::same(reel, "BLK"); }
    /// Material that came from no reel.
    bool auxiliary() const { return ascii::same(reel, "AX"); }
    bool transition() const { return type == EditType::dissolve || type == EditType::wipe; }
};

/// What is wrong with one line.
struct BadLine {
    std::string reason;
};

/// `words` are those of the line, and are used up. Throws `BadLine` for what isn't an event.
EventLine parse_event_line(const Line& line, Words& words);

/// A text of the file for messages: printable, and not too long.
std::string quoted(std::string_view text);

} // namespace formats::edl
