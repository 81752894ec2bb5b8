#pragma once
// Times of .otio documents as exact seconds on the edit.

#include "embedded/fraction.h"
#include "embedded/rates.h"
#include "formats/otio/otio_schema.h"

#include <optional>

namespace formats::otio {

using embedded::Fraction;
using embedded::RateInfo;

/// Times beyond ten years are refused: no film is that long, and sums stay exact.
constexpr double longest_time = 10.0 * 366 * 86400;

/// A time as it stands in the document. A value within 1e-4 of a whole number is that number.
struct Time {
    Fraction value;
    Fraction rate;                  ///< that of the list within 0.01, else as written
    const RateInfo* info = nullptr; ///< null for a rate outside the list

    Fraction seconds() const { return value / rate; }
    /// Frame for frame where both rates count alike, else by seconds.
    Fraction frames_at(const RateInfo& other) const;
    Fraction seconds_on(const RateInfo& other) const { return frames_at(other) / other.rate(); }
};

struct Range {
    std::optional<Time> start;
    std::optional<Time> duration; ///< not below 0
};

/// Refused: what isn't a time, rates of 0 or below, values and rates that aren't finite.
std::optional<Time> read_time(const Place& place, std::string_view key);
std::optional<Range> read_range(const Place& place, std::string_view key);
/// A rate or film rate that stands as a number or its text; refused unless it is finite and above 0.
std::optional<Fraction> read_rate(const Place& place, const JsonValue* value, std::string_view what);
/// Times that no number of a document holds exactly stand beside it as texts "NUM/DEN" of seconds, in an object
/// `exact` of the own metadata. They make a time exact, and never another one: `read` counts where they are more than a
/// millionth away from it, as in a document that was changed since.
Fraction exact_or(const JsonValue* own_metadata, std::string_view key, const Fraction& read);
Fraction exact_or(const std::optional<Fraction>& exact, const Fraction& read);
/// What stands there; nothing where it isn't a fraction.
std::optional<Fraction> exact_of(const JsonValue* own_metadata, std::string_view key);
/// "NUM/DEN", of numbers of up to 38 digits; nothing for what isn't one.
std::optional<Fraction> fraction_of_text(std::string_view text);
/// A finite number within a limit, as a fraction; refused otherwise.
Fraction read_number(const Place& place, const JsonValue& value, std::string_view what, double limit);

} // namespace formats::otio
