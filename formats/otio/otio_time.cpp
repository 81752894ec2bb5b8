#include "formats/otio/otio_time.h"

#include "host/ascii_text.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace formats::otio {
namespace {

constexpr double lowest_rate = 1e-6;
constexpr double highest_rate = 1e15;

Fraction near_whole(double value) {
    const double whole = std::nearbyint(value);
    return Fraction::exactly(std::fabs(value - whole) <= 1e-4 ? whole : value);
}

double number_of(const Place& place, const JsonValue* number, std::string_view key) {
    if (!number || !number->IsNumber()) refuse(place, "\"" + std::string(key) + "\" isn't a number");
    return number->GetDouble();
}

void check_rate(const Place& place, double rate, std::string_view what) {
    if (!std::isfinite(rate) || rate <= 0) refuse(place, std::string(what) + " isn't a number above 0");
    if (rate < lowest_rate || rate > highest_rate) refuse(place, std::string(what) + " is beyond any use");
}

Fraction listed_or_exact(const RateInfo* listed, double rate) {
    return listed ? listed->rate() : Fraction::exactly(rate);
}

Time time_at(const Place& place) {
    static constexpr std::string_view keys[] = {schema_key, "rate", "value"};
    const auto members = json_members(*place.value, keys);
    if (type_named_by(members[0]).schema != Schema::rational_time) refuse(place, "isn't a RationalTime");
    const double rate = number_of(place, members[1], keys[1]);
    const double value = number_of(place, members[2], keys[2]);
    check_rate(place, rate, "the rate");
    if (!std::isfinite(value)) refuse(place, "the value isn't a finite number");
    if (!(std::fabs(value / rate) <= longest_time)) refuse(place, "the time is beyond ten years");
    const RateInfo* listed = embedded::nearest_rate(rate);
    return {near_whole(value), listed_or_exact(listed, rate), listed};
}

/// The sign and digits of a text, up to `longest_part` digits.
std::optional<Fraction::wide> whole_of(std::string_view text) {
    constexpr std::size_t longest_part = 38;
    const bool negative = !text.empty() && text.front() == '-';
    if (negative) text.remove_prefix(1);
    if (text.empty() || text.size() > longest_part || !std::all_of(text.begin(), text.end(), ascii::is_digit))
        return std::nullopt;
    Fraction::wide value = 0;
    for (const char digit : text)
        value = value * 10 + (digit - '0');
    return negative ? -value : value;
}

} // namespace

std::optional<Fraction> fraction_of_text(std::string_view text) {
    const std::size_t bar = text.find('/');
    if (bar == std::string_view::npos) return std::nullopt;
    const std::optional<Fraction::wide> num = whole_of(text.substr(0, bar)), den = whole_of(text.substr(bar + 1));
    if (!num || !den || *den <= 0) return std::nullopt;
    return Fraction(*num, *den);
}

std::optional<Fraction> exact_of(const JsonValue* own_metadata, std::string_view key) {
    return fraction_of_text(json_string(json_member(json_object(own_metadata, "exact"), key)));
}

Fraction exact_or(const std::optional<Fraction>& exact, const Fraction& read) {
    const Fraction tolerance(1, 1000000);
    return exact && *exact - read <= tolerance && read - *exact <= tolerance ? *exact : read;
}

Fraction exact_or(const JsonValue* own_metadata, std::string_view key, const Fraction& read) {
    return exact_or(exact_of(own_metadata, key), read);
}

Fraction Time::frames_at(const RateInfo& other) const {
    if (info && info->nominal == other.nominal) return value;
    return seconds() * other.rate();
}

std::optional<Time> read_time(const Place& place, std::string_view key) {
    const JsonValue* time = json_member(*place.value, key);
    if (!time) return std::nullopt;
    return time_at(place.step(key, *time));
}

std::optional<Range> read_range(const Place& place, std::string_view key) {
    const JsonValue* found = json_member(*place.value, key);
    if (!found) return std::nullopt;
    const Place range = place.step(key, *found);
    if (schema_of(*found) != Schema::time_range) refuse(range, "isn't a TimeRange");
    Range result{read_time(range, "start_time"), read_time(range, "duration")};
    if (result.duration && result.duration->value < Fraction(0))
        refuse(place, "the length in \"" + std::string(key) + "\" is negative");
    return result;
}

std::optional<Fraction> read_rate(const Place& place, const JsonValue* value, std::string_view what) {
    if (!value) return std::nullopt;
    double rate = 0;
    if (value->IsNumber()) {
        rate = value->GetDouble();
    } else {
        const std::string text = json_text(value);
        if (text.empty()) return std::nullopt;
        if (const std::optional<Fraction> exact = fraction_of_text(text)) {
            check_rate(place, exact->to_double(), what);
            return exact;
        }
        char* end = nullptr;
        rate = std::strtod(text.c_str(), &end);
        if (*end != '\0') rate = 0;
    }
    check_rate(place, rate, what);
    return listed_or_exact(embedded::nearest_rate(rate), rate);
}

Fraction read_number(const Place& place, const JsonValue& value, std::string_view what, double limit) {
    if (!value.IsNumber()) refuse(place, std::string(what) + " isn't a number");
    const double number = value.GetDouble();
    if (!(std::fabs(number) <= limit)) refuse(place, std::string(what) + " is beyond any use");
    return Fraction::exactly(number);
}

} // namespace formats::otio
