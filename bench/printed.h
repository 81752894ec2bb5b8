#pragma once
// Texts of numbers, for files that are made to be measured.

#include <cstdio>
#include <string>

namespace bench {

template <class... Values> std::string printed(const char* format, Values... values) {
    char text[1024];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

/// Of a frame at 24 or another whole number of frames a second, from midnight on again after 24 hours.
inline std::string timecode(int frame, int rate = 24) {
    const int second = frame / rate;
    return printed("%02d:%02d:%02d:%02d", second / 3600 % 24, second / 60 % 60, second % 60, frame % rate);
}

/// A long film uses each take five times or so.
inline int takes_of(int events) { return events / 5 + 1; }

} // namespace bench
