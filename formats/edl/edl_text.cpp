#include "formats/edl/edl_text.h"

#include "formats/edl/edl_list.h"
#include "formats/edl/edl_tracks.h"

#include <cstdio>

namespace formats::edl {
namespace {

using embedded::Fraction;
using embedded::RateInfo;

constexpr int most_decimals = 6;

/// `digits` counts units of 10^-decimals.
std::string speed_digits(std::int64_t digits, int decimals) {
    std::int64_t unit = 1;
    for (int i = 0; i < decimals; ++i)
        unit *= 10;
    const std::int64_t size = digits < 0 ? -digits : digits;
    char text[48];
    std::snprintf(text, sizeof text, "%s%03lld.%0*lld", digits < 0 ? "-" : "", static_cast<long long>(size / unit),
                  decimals, static_cast<long long>(size % unit));
    return text;
}

Fraction frames_a_second(const Fraction& speed, const RateInfo& rate) { return speed * Fraction(rate.nominal); }

} // namespace

std::int64_t frame_of_day(std::int64_t frame, const Counting& counting) {
    const std::int64_t day = frames_of_day(*counting.rate, counting.drop);
    return ((frame % day) + day) % day;
}

std::string timecode_text(std::int64_t frame, const Counting& counting) {
    const label_t type = counting.drop ? counting.rate->drop_timecode : counting.rate->timecode;
    return LabelPoint(static_cast<int>(frame_of_day(frame, counting)), type).get_string();
}

std::string event_text(int number, const WrittenLine& line, const Counting& record) {
    const Counting source{record.rate, line.source_drop};
    char length[16] = "";
    if (line.type != "C") std::snprintf(length, sizeof length, "%03d", line.frames);
    char head[64];
    std::snprintf(head, sizeof head, " %-5s %-4s %-3s ", line.channels.c_str(), line.type.c_str(), length);
    char start[16];
    std::snprintf(start, sizeof start, "%03d  ", number);
    std::string reel = line.reel;
    constexpr std::size_t usual_reel = 8;
    if (reel.size() < usual_reel) reel.resize(usual_reel, ' ');
    return start + reel + head + timecode_text(line.source_in, source) + " " + timecode_text(line.source_out, source) +
           " " + timecode_text(line.record_in, record) + " " + timecode_text(line.record_out, record) + "\n";
}

std::string speed_text(const std::string& reel, const std::string& speed, std::int64_t source_in,
                       const Counting& source) {
    constexpr std::size_t usual_reel = 8, usual_speed = 22;
    std::string text = "M2   " + reel;
    if (reel.size() < usual_reel) text.append(usual_reel - reel.size(), ' ');
    text += " " + speed;
    text.append(speed.size() < usual_speed ? usual_speed - speed.size() : 1, ' ');
    return text + timecode_text(source_in, source) + "\n";
}

std::optional<std::string> exact_speed(const Fraction& speed, const RateInfo& rate) {
    const Fraction wanted = frames_a_second(speed, rate);
    const Fraction size = magnitude(wanted);
    if (size > Fraction(9999)) return std::nullopt;
    const bool unit = speed == Fraction(1) || speed == Fraction(-1);
    if (!unit && is_normal_speed(size, rate)) return std::nullopt;
    std::int64_t scale = 10;
    for (int decimals = 1; decimals <= most_decimals; ++decimals, scale *= 10) {
        const Fraction digits = wanted * Fraction(scale);
        if (digits.den() == 1) return speed_digits(digits.floor(), decimals);
    }
    return std::nullopt;
}

std::string nearest_speed(const Fraction& speed, const RateInfo& rate) {
    constexpr std::int64_t scale = 1000000;
    return speed_digits((frames_a_second(speed, rate) * Fraction(scale)).nearest(), most_decimals);
}

std::optional<std::string> key_comment(LabelPoint key, const KeySpelling& spelling, const std::string& cycle) {
    std::string text = "* KEY NUMBER: " + spelled(key, spelling) + " " + label_type_to_edlstr(key.type());
    if (!cycle.empty()) text += " CYCLE FROM " + cycle;
    const std::optional<KeyNumber> found = find_key_number(text, true);
    if (!found) return std::nullopt;
    LabelPoint read(0, edlstr_to_label_type(found->film.c_str(), user_label_key));
    read.set_sample(found->text.c_str());
    if (!read.is_useful() || !(read == key)) return std::nullopt;
    return text + "\n";
}

std::string field_text(const std::string& text) {
    std::string field;
    for (const std::string_view word : words_of(text))
        field += (field.empty() ? "" : " ") + std::string(word);
    return field;
}

} // namespace formats::edl
