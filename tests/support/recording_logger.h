#pragma once
// A logger that keeps what it is told.

#include "host/settings.h"

#include <ostream>
#include <string>
#include <vector>

struct LoggedLine {
    std::string text;
    int level;

    bool operator==(const LoggedLine&) const = default;
};

inline void PrintTo(const LoggedLine& line, std::ostream* out) { *out << '"' << line.text << "\" at " << line.level; }

class RecordingLogger : public LoggerHandle {
public:
    void message(const LightweightString<wchar_t>& text, int level) override {
        lines.push_back({toUTF8(text).c_str(), level});
    }

    bool said(const std::string& text, int level) const {
        for (const LoggedLine& line : lines) {
            if (line == LoggedLine{text, level}) return true;
        }
        return false;
    }
    bool said_at(int level) const {
        for (const LoggedLine& line : lines) {
            if (line.level == level) return true;
        }
        return false;
    }

    std::vector<LoggedLine> lines;
};
