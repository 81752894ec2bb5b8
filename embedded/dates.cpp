#include "host/settings.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>

namespace {

constexpr const char* month_names[12] = {"January", "February", "March",     "April",   "May",      "June",
                                         "July",    "August",   "September", "October", "November", "December"};

// Seconds from the epoch to the last years that a calendar date can be made of, both ways, where the system counts so
// far.
constexpr std::int64_t farthest =
    std::min<std::int64_t>(67'768'000'000'000'000, std::numeric_limits<std::time_t>::max());

} // namespace

void date_def::convert(std::int64_t seconds) {
    const auto time = static_cast<std::time_t>(std::clamp(seconds, -farthest, farthest));
    std::tm date = {};
    ::tzset();
    ::localtime_r(&time, &date);
    std::snprintf(named_, sizeof named_, "%d %s %lld %02d:%02d:%02d", date.tm_mday, month_names[date.tm_mon],
                  1900LL + date.tm_year, date.tm_hour, date.tm_min, date.tm_sec);
}

std::int64_t present_time() {
    if (const char* fixed = std::getenv("SOURCE_DATE_EPOCH")) {
        const std::string_view text(fixed);
        std::int64_t seconds = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
        if (error == std::errc() && end == text.data() + text.size()) return seconds;
    }
    return std::time(nullptr);
}

LightweightString<char> timeAsString(unsigned int seconds, bool) {
    date_def date;
    date.convert(seconds);
    return date.get_named_date();
}
