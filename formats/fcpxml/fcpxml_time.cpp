#include "formats/fcpxml/fcpxml_time.h"

#include "embedded/rates.h"
#include "host/ascii_text.h"

#include <algorithm>
#include <charconv>

namespace formats::fcpxml {
namespace {

/// Digits only, and no more than fit.
std::optional<std::int64_t> whole_number(std::string_view digits) {
    std::int64_t number = 0;
    if (digits.empty() || !std::all_of(digits.begin(), digits.end(), ascii::is_digit)) return std::nullopt;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    return number;
}

std::optional<Fraction> quotient(std::string_view above, std::string_view below) {
    const auto num = whole_number(above), den = whole_number(below);
    if (!num || !den || *den == 0) return std::nullopt;
    return Fraction(*num, *den);
}

/// "2.5" by its digits, not by way of a double.
std::optional<Fraction> decimal(std::string_view whole, std::string_view behind_point) {
    constexpr std::size_t most_digits = 18;
    const auto above = whole_number(whole), behind = whole_number(behind_point);
    if (!above || !behind || behind_point.size() > most_digits) return std::nullopt;
    std::int64_t ten_times = 1;
    for (std::size_t i = 0; i < behind_point.size(); ++i)
        ten_times *= 10;
    return Fraction(*above) + Fraction(*behind, ten_times);
}

std::optional<Fraction> positive_number(std::string_view text) {
    if (const std::size_t slash = text.find('/'); slash != std::string_view::npos)
        return quotient(text.substr(0, slash), text.substr(slash + 1));
    if (const std::size_t point = text.find('.'); point != std::string_view::npos)
        return decimal(text.substr(0, point), text.substr(point + 1));
    const auto number = whole_number(text);
    return number ? std::optional<Fraction>(*number) : std::nullopt;
}

/// Rates above those that edits can have, which are written rounded too.
constexpr std::int64_t twice_the_highest_of_ntsc = 120;

} // namespace

std::optional<Fraction> parse_time(std::string_view text) {
    if (text.empty() || text.back() != 's') return std::nullopt;
    text.remove_suffix(1);
    const bool negative = !text.empty() && text.front() == '-';
    if (negative) text.remove_prefix(1);
    const std::optional<Fraction> seconds = positive_number(text);
    if (!seconds || Fraction(longest_time) < *seconds) return std::nullopt;
    return negative ? -*seconds : *seconds;
}

std::optional<Fraction> parse_rate(std::string_view text) {
    if (text == "119.88") return Fraction(twice_the_highest_of_ntsc * 1000, 1001);
    const std::optional<Fraction> rate = positive_number(text);
    if (!rate || *rate <= Fraction(0) || Fraction(1'000'000) < *rate) return std::nullopt;
    const embedded::RateInfo* listed = embedded::nearest_rate(rate->to_double());
    return listed ? listed->rate() : *rate;
}

} // namespace formats::fcpxml
