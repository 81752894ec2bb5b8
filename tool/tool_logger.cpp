#include "tool/tool_logger.h"
#include "embedded/warning.h"

#include <iostream>

namespace tool {

constexpr int level_that_ends_a_run = 4;

std::string one_line(const std::string& text) {
    std::string line;
    for (const char c : text)
        line += static_cast<unsigned char>(c) < ' ' || c == '\x7f' ? ' ' : c;
    line.erase(line.find_last_not_of(' ') + 1);
    line.erase(0, line.find_first_not_of(' '));
    return line;
}

void ToolLogger::message(const LightweightString<wchar_t>& text, int level) {
    const std::string line = one_line(toUTF8(text).c_str());
    if (level == level_that_ends_a_run) {
        failed_ = true;
        std::cerr << "error: " << line << " (" << subject_ << ")\n";
    } else if (!quiet_ && !line.empty()) {
        std::cout << line << '\n';
    }
}

void tell_warnings(const embedded::Warnings& warnings, bool quiet) {
    if (quiet) return;
    for (const embedded::Warning& warning : warnings)
        std::cerr << "warning: " << one_line(warning.text) << '\n';
}

} // namespace tool
