#pragma once
// The bytes of a report in a form that literals of a test can show.

#include <string>

/// CR LF as LF; a form feed as "<FF>". The blank lines of a form feed stay.
inline std::string plain_lines(const std::string& bytes) {
    std::string plain;
    for (const char c : bytes) {
        if (c == '\f') {
            plain += "<FF>";
        } else if (c != '\r') {
            plain += c;
        }
    }
    return plain;
}
