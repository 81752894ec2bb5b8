#pragma once
// Numbers, truth values, rates and timecodes as FCP 7 XML writes them.

#include "embedded/fraction.h"
#include "embedded/rates.h"
#include "embedded/warning.h"
#include "formats/xml/xml_document.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace formats::fcp7 {

using embedded::Fraction;
using embedded::RateInfo;
using xml::Element;

class Index;

/// What stops the reading, in words that name the object.
struct ReadError {
    std::string message;
};

/// As `line 12: clip item "A012"`.
std::string place_of(const Element& object);

/// Takes what there is to tell, the same thing once: a file is looked at for each clip of it.
class Teller {
public:
    explicit Teller(embedded::Warnings& warnings) : warnings_(warnings) {}

    void doubt(const Element& object, const std::string& what) { tell(embedded::WarningKind::doubt, object, what); }
    void dropped(const Element& object, const std::string& what) { tell(embedded::WarningKind::dropped, object, what); }
    void replaced(const Element& object, const std::string& what) {
        tell(embedded::WarningKind::replaced, object, what);
    }
    void rate(const Element& object, const std::string& what) { tell(embedded::WarningKind::rate, object, what); }
    void tell(embedded::WarningKind kind, const Element& object, const std::string& what) {
        if (told_.size() >= most_told) {
            ++untold_;
            return;
        }
        std::string line = place_of(object) + ": " + what;
        if (told_.insert(line).second) warnings_.push_back({kind, std::move(line)});
    }
    /// Things that there was no room for: a file may be made of nothing else.
    std::size_t untold() const { return untold_; }

    embedded::Warnings& warnings() { return warnings_; }

private:
    static constexpr std::size_t most_told = 10'000;

    embedded::Warnings& warnings_;
    std::unordered_set<std::string> told_;
    std::size_t untold_ = 0;
};

/// A decimal number, of frames or of percents, exactly; one within 1e-4 of a whole number is that number. Nothing for
/// other texts and for numbers from ten thousand million on.
std::optional<Fraction> number_from(std::string_view text);
/// The number in a child; nothing where that lacks or is empty, and, told, where it is none.
std::optional<Fraction> number_in(const Element& object, std::string_view child, Teller& teller);
/// A place in frames, where -1 means that there is none.
std::optional<Fraction> place_in(const Element& object, std::string_view child, Teller& teller);
/// Of places that are repeated in ticks, 254,016,000,000 a second; nothing where the text is no such count.
std::optional<Fraction> seconds_of_ticks(std::string_view text);
/// What a marker says.
std::string text_of_marker(const Element& marker);
bool truth_in(const Element& object, std::string_view child, bool otherwise);
/// Shown and heard: not switched off.
inline bool is_enabled(const Element& object) { return truth_in(object, "enabled", true); }

struct Rate {
    int timebase = 0; ///< what timecode counts in a second
    bool ntsc = false;

    Fraction frames_a_second() const { return ntsc ? Fraction(timebase) * Fraction(1000, 1001) : Fraction(timebase); }
    friend bool operator==(const Rate& a, const Rate& b) = default;
};

/// That of an element "rate"; nothing where it is none that is known.
std::optional<Rate> rate_in(const Element& rate);

/// Turns frames of any rate into seconds on an edit. What the edit's rate goes into, or goes into it, keeps step with
/// it: 24 frames are as long as 30 at 29.97 in an edit at 23.976, and as 30 at 30 in one at 24, for film and video that
/// are transferred to each other are never a thousandth apart.
class Clock {
public:
    explicit Clock(const RateInfo& edit) : edit_(edit) {}

    const RateInfo& edit() const { return edit_; }
    Fraction frame() const { return Fraction(edit_.den, edit_.num); }
    /// Frames a second on the edit.
    Fraction rate(const Rate& rate) const;
    Fraction seconds(const Fraction& frames, const Rate& of) const { return frames / rate(of); }
    /// The listed rate that it has on the edit; null where there is none.
    const RateInfo* listed(const Rate& rate) const;

private:
    const RateInfo& edit_;
};

struct Timecode {
    std::int64_t frame = 0; ///< of midnight on
    Rate rate;
    bool drop = false;
};

/// The object's child `timecode`; of several that of the source.
Element timecode_in(const Element& object);
/// What that says; nothing where it says nothing.
std::optional<Timecode> timecode_of(const Element& object, const Index& index, Teller& teller);

} // namespace formats::fcp7
