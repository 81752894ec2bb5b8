#include "tool/tool_logger.h"
#include "embedded/services.h"
#include "embedded/table_door.h"
#include "embedded/visible_text.h"
#include "embedded/warning.h"

#include <iostream>

namespace tool {

constexpr int level_that_ends_a_run = 4;

std::string one_line(const std::string& text) {
    constexpr const char* blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos) return {};
    return embedded::visible(text.substr(first, text.find_last_not_of(blanks) + 1 - first));
}

namespace {

/// The file whose writing failed, and why, as the library's errors don't tell.
std::string unwritten_file() {
    std::string name, why;
    if (!embedded::take_write_failure(&name, &why)) return "";
    return ": " + one_line(name) + (why.empty() ? "" : ": " + why);
}

} // namespace

void ToolLogger::message(const LightweightString<wchar_t>& text, int level) {
    const std::string line = one_line(toUTF8(text).c_str());
    if (level == level_that_ends_a_run) {
        failed_ = true;
        std::cerr << "error: " << line << " (" << one_line(subject_) << ')' << unwritten_file() << '\n';
    } else if (!quiet_ && !line.empty()) {
        std::cerr << line << '\n';
    }
}

void receive_tables(bool quiet) {
    embedded::receive_tables([quiet](const embedded::Warning& warning) { tell_warnings({warning}, quiet); });
}

void tell_warnings(const embedded::Warnings& warnings, bool quiet) {
    if (quiet) return;
    for (const embedded::Warning& warning : warnings)
        std::cerr << "warning: " << one_line(warning.text) << '\n';
}

} // namespace tool
