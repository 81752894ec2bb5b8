#include "formats/otio/otio_values.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace formats::otio {
namespace {

/// What a value of a time may be written as: a count and its rate.
struct Count {
    double value = 0, rate = 1;
};

std::optional<Count> frame_count(const Fraction& seconds, const RateInfo& rate) {
    constexpr double read_as_whole = 1e-4;
    const Fraction frames = seconds * rate.rate();
    const double value = frames.to_double();
    const bool near_whole = std::fabs(value - std::nearbyint(value)) <= read_as_whole;
    if (!is_double(frames) || (near_whole && frames.den() != 1)) return std::nullopt;
    return Count{value, rate.rate().to_double()};
}

/// No reader takes a rate of a thousand and more for that of a film.
std::optional<Count> fine_count(const Fraction& seconds) {
    constexpr Fraction::wide scale = 1000, most_value = 9007199254740992, most_rate = 1000000000000000;
    const Fraction::wide most_num = most_value / scale;
    if (seconds.num() > most_num || seconds.num() < -most_num || seconds.den() > most_rate / scale) return std::nullopt;
    return Count{static_cast<double>(seconds.num() * scale), static_cast<double>(seconds.den() * scale)};
}

std::string digits_of(Fraction::wide value) {
    const bool negative = value < 0;
    std::string digits;
    do {
        const int digit = static_cast<int>(value % 10);
        digits += static_cast<char>('0' + (digit < 0 ? -digit : digit));
        value /= 10;
    } while (value != 0);
    if (negative) digits += '-';
    std::reverse(digits.begin(), digits.end());
    return digits;
}

} // namespace

std::string text_of(const Fraction& value) { return digits_of(value.num()) + "/" + digits_of(value.den()); }

bool is_double(const Fraction& value) { return Fraction::exactly(value.to_double()) == value; }

JsonValue Values::text(std::string_view bytes) const {
    return JsonValue(bytes.data(), static_cast<rapidjson::SizeType>(bytes.size()), pool_);
}

JsonValue Values::object(const char* schema) const {
    JsonValue made(rapidjson::kObjectType);
    if (*schema) made.AddMember("OTIO_SCHEMA", rapidjson::StringRef(schema), pool_);
    return made;
}

void Values::add(JsonValue& object, const char* key, JsonValue value) const {
    object.AddMember(rapidjson::StringRef(key), value, pool_);
}

void Values::add_given(JsonValue& object, const char* key, std::string_view value) const {
    if (!value.empty()) add(object, key, value);
}

void Values::add_own(JsonValue& object, JsonValue own) const {
    JsonValue metadata = this->object();
    if (own.MemberCount() > 0) add(metadata, "quillbrook", std::move(own));
    add(object, "metadata", std::move(metadata));
}

JsonValue Values::time(const Fraction& seconds, const RateInfo& rate, JsonValue& own, const char* key) const {
    return time(seconds, rate, own, key, seconds);
}

JsonValue Values::time(const Fraction& seconds, const RateInfo& rate, JsonValue& own, const char* key,
                       const Fraction& measured) const {
    constexpr double milliseconds = 1000;
    std::optional<Count> count = frame_count(seconds, rate);
    if (!count) count = fine_count(seconds);
    if (!count) {
        add_exact(own, key, measured);
        count = Count{seconds.to_double() * milliseconds, milliseconds};
    }
    JsonValue time = object("RationalTime.1");
    add(time, "rate", number(count->rate));
    add(time, "value", number(count->value));
    return time;
}

JsonValue Values::frames(double count, const RateInfo& rate) const {
    JsonValue time = object("RationalTime.1");
    add(time, "rate", number(rate.rate().to_double()));
    add(time, "value", number(count));
    return time;
}

JsonValue Values::range(JsonValue start, JsonValue duration) const {
    JsonValue range = object("TimeRange.1");
    add(range, "duration", std::move(duration));
    add(range, "start_time", std::move(start));
    return range;
}

void Values::add_exact(JsonValue& own, const char* key, const Fraction& value) const {
    if (!own.HasMember("exact")) add(own, "exact", object());
    add(own["exact"], key, text_of(value));
}

} // namespace formats::otio
