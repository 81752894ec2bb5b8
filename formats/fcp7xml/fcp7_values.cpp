#include "formats/fcp7xml/fcp7_values.h"

#include "formats/fcp7xml/fcp7_index.h"
#include "host/ascii_text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace formats::fcp7 {
namespace {

constexpr int most_digits = 10;
constexpr int highest_timebase = 1000;

struct ObjectName {
    std::string_view element, words;
};

constexpr ObjectName object_names[] = {
    {"clipitem", "clip item"},
    {"generatoritem", "generator"},
    {"transitionitem", "transition"},
    {"xmeml", "document"},
};

std::string words_for(const Element& object) {
    const auto found = std::find_if(std::begin(object_names), std::end(object_names),
                                    [&](const ObjectName& name) { return name.element == object.name(); });
    return std::string(found == std::end(object_names) ? object.name() : found->words);
}

/// The digits at the head of the text, which loses them.
std::string_view take_digits(std::string_view& text) {
    std::size_t count = 0;
    while (count < text.size() && ascii::is_digit(text[count]))
        ++count;
    const std::string_view digits = text.substr(0, count);
    text.remove_prefix(count);
    return digits;
}

std::int64_t whole_number(std::string_view digits) {
    std::int64_t number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}

/// Writers that reckon in doubles leave a few millionths.
Fraction without_noise(const Fraction& value) {
    const Fraction whole(value.nearest());
    const Fraction off = value < whole ? whole - value : value - whole;
    return off <= Fraction(1, 10000) ? whole : value;
}

/// The four parts of "01:00:00;00" or " 01:00:00.00".
std::optional<std::array<int, 4>> parts_of_timecode(std::string_view text) {
    std::array<int, 4> parts{};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const std::string_view digits = take_digits(text);
        if (digits.empty() || digits.size() > 3) return std::nullopt;
        parts[i] = static_cast<int>(whole_number(digits));
        if (i + 1 == parts.size()) break;
        if (text.empty() || std::string_view(":;.,").find(text.front()) == std::string_view::npos) return std::nullopt;
        text.remove_prefix(1);
    }
    return text.empty() ? std::optional(parts) : std::nullopt;
}

/// Drop-frame leaves out two numbers of 30, four of 60, each minute but the tenth.
int left_out(int minutes, int timebase, bool drop) { return drop && minutes % 10 != 0 ? timebase / 15 : 0; }

/// Whether it is a number that drop-frame leaves out.
bool is_left_out(const std::array<int, 4>& parts, int timebase, bool drop) {
    return parts[2] == 0 && parts[3] < left_out(parts[1], timebase, drop);
}

/// A number that is left out is the next that exists.
std::optional<std::int64_t> frame_of_text(std::string_view text, int timebase, bool drop) {
    const auto parts = parts_of_timecode(text);
    if (!parts) return std::nullopt;
    const auto [hours, minutes, seconds, frames] = *parts;
    if (minutes > 59 || seconds > 59 || frames >= timebase) return std::nullopt;
    const int shown = is_left_out(*parts, timebase, drop) ? left_out(minutes, timebase, drop) : frames;
    const std::int64_t total_minutes = std::int64_t{hours} * 60 + minutes;
    const std::int64_t counted = (total_minutes * 60 + seconds) * timebase + shown;
    return drop ? counted - (total_minutes - total_minutes / 10) * (timebase / 15) : counted;
}

/// There may be others beside it, of the tracks that a tape has for them.
bool is_of_source(const Element& timecode) {
    const std::string_view source = timecode.text_of("source");
    return source.empty() || ascii::same(source, "source");
}

bool can_drop(const Rate& rate) { return rate.timebase == 30 || rate.timebase == 60; }

bool is_drop(const Element& timecode) {
    const std::string_view format = timecode.text_of("displayformat");
    if (!format.empty()) return ascii::same(format, "DF");
    return timecode.text_of("string").find(';') != std::string_view::npos;
}

void doubt_text(const Element& object, std::string_view text, const Timecode& timecode, Teller& teller) {
    const auto parts = parts_of_timecode(text);
    if (!parts) return;
    if (is_left_out(*parts, timecode.rate.timebase, timecode.drop))
        teller.doubt(object, "its timecode is \"" + std::string(text) +
                                 "\", which drop-frame leaves out; it counts as the next that there is");
    if ((*parts)[0] > 23) teller.doubt(object, "its timecode is \"" + std::string(text) + "\", but a day has 24 hours");
}

/// Film and its video at 24, 30, 48, 60 and so on; 25 and 50 stand apart.
bool keeps_step(int timebase) { return timebase % 6 == 0 || timebase == 15; }

} // namespace

std::string place_of(const Element& object) {
    std::string text = "line " + std::to_string(object.line()) + ": " + words_for(object);
    const std::string_view name = object.text_of("name");
    return name.empty() ? text : text + " \"" + std::string(name) + "\"";
}

std::optional<Fraction> number_from(std::string_view text) {
    const bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
    const std::string_view whole = take_digits(text);
    std::string_view behind;
    if (!text.empty() && text.front() == '.') {
        text.remove_prefix(1);
        behind = take_digits(text);
    }
    if (!text.empty() || whole.size() + behind.size() == 0 || whole.size() > most_digits) return std::nullopt;
    Fraction value(whole_number(whole));
    behind = behind.substr(0, most_digits);
    std::int64_t power = 1;
    for (std::size_t i = 0; i < behind.size(); ++i)
        power *= 10;
    if (!behind.empty()) value = without_noise(value + Fraction(whole_number(behind), power));
    return negative ? -value : value;
}

std::optional<Fraction> number_in(const Element& object, std::string_view child, Teller& teller) {
    const Element found = object.child(child);
    if (found.text().empty()) return std::nullopt;
    const std::optional<Fraction> number = number_from(found.text());
    if (!number)
        teller.dropped(object, "\"" + std::string(found.text()) + "\" of its \"" + std::string(child) +
                                   "\" isn't a number of frames");
    return number;
}

std::optional<Fraction> place_in(const Element& object, std::string_view child, Teller& teller) {
    const std::optional<Fraction> number = number_in(object, child, teller);
    return number == Fraction(-1) ? std::nullopt : number;
}

std::optional<Fraction> seconds_of_ticks(std::string_view text) {
    constexpr std::int64_t ticks_a_second = 254'016'000'000;
    constexpr std::size_t longest = 18;
    const std::string_view digits = take_digits(text);
    if (!text.empty() || digits.empty() || digits.size() > longest) return std::nullopt;
    return Fraction(whole_number(digits), ticks_a_second);
}

std::string text_of_marker(const Element& marker) {
    const std::string_view name = marker.text_of("name");
    return std::string(name.empty() ? marker.text_of("comment") : name);
}

bool truth_in(const Element& object, std::string_view child, bool otherwise) {
    const std::string_view text = object.text_of(child);
    if (text.empty()) return otherwise;
    return ascii::same(text, "TRUE") || text == "1";
}

std::optional<Rate> rate_in(const Element& rate) {
    const std::optional<Fraction> timebase = number_from(rate.text_of("timebase"));
    if (!timebase || *timebase < Fraction(1) || *timebase > Fraction(highest_timebase) || timebase->den() != 1)
        return std::nullopt;
    const int counted = static_cast<int>(timebase->floor());
    return Rate{counted, counted % 25 != 0 && truth_in(rate, "ntsc", false)}; // nothing runs at 24.975
}

Fraction Clock::rate(const Rate& rate) const {
    if (rate.timebase == edit_.nominal) return edit_.rate();
    if (!keeps_step(rate.timebase) || !keeps_step(edit_.nominal)) return rate.frames_a_second();
    return edit_.rate() * Fraction(rate.timebase, edit_.nominal);
}

const RateInfo* Clock::listed(const Rate& written) const {
    const Fraction exact = rate(written);
    const RateInfo* near = embedded::nearest_rate(exact.to_double());
    return near && near->rate() == exact ? near : nullptr;
}

Element timecode_in(const Element& object) {
    const Element first = object.child("timecode");
    for (Element element = first; element; element = element.next_of_name())
        if (is_of_source(element)) return element;
    return first;
}

std::optional<Timecode> timecode_of(const Element& object, const Index& index, Teller& teller) {
    const Element element = timecode_in(object);
    const std::optional<Rate> rate = index.rate_of(element);
    if (!element || !rate) return std::nullopt;
    Timecode timecode{0, *rate, is_drop(element)};
    if (timecode.drop && !can_drop(*rate)) {
        teller.rate(object, "there is no drop-frame timecode at " + std::to_string(rate->timebase) +
                                " frames a second; counted without");
        timecode.drop = false;
    }
    const std::string_view text = element.text_of("string");
    const std::optional<Fraction> frame = number_in(element, "frame", teller);
    const std::optional<std::int64_t> counted = frame_of_text(text, rate->timebase, timecode.drop);
    if (frame && counted && frame->nearest() != *counted)
        teller.doubt(object, "its timecode says frame " + std::to_string(frame->nearest()) + " but \"" +
                                 std::string(text) + "\"; the frame counts");
    if (!frame && !text.empty() && !counted)
        teller.dropped(object, "\"" + std::string(text) + "\" can't be read as its timecode");
    if (!frame && !counted) return std::nullopt;
    timecode.frame = frame ? frame->nearest() : *counted;
    if (!frame) doubt_text(object, text, timecode, teller);
    if (!is_of_source(element))
        teller.doubt(object,
                     "has no timecode of its own but \"" + std::string(element.text_of("source")) + "\", which counts");
    return timecode;
}

} // namespace formats::fcp7
