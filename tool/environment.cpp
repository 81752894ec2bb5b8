#include "tool/environment.h"

#include "tool/key_values.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace tool {
namespace {

template <class Number> bool is_number(std::string_view text) {
    Number value = 0;
    const auto [end, trouble] = std::from_chars(text.data(), text.data() + text.size(), value);
    return trouble == std::errc() && end == text.data() + text.size();
}

void check(const std::string& name, bool (*readable)(std::string_view), const char* wanted) {
    const char* value = std::getenv(name.c_str());
    if (value && !readable(value)) throw UsageError(name + ": \"" + one_line(value) + "\" is not " + wanted);
}

// An empty one counts as not set.
bool is_setting(std::string_view text) { return text.empty() || is_number<int>(text); }

std::string variable_of(const std::string& setting) {
    std::string name = "QUILLBROOK_";
    std::transform(setting.begin(), setting.end(), std::back_inserter(name),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return name;
}

} // namespace

void check_environment() {
    check("SOURCE_DATE_EPOCH", is_number<std::int64_t>, "a whole number of seconds");
    for (const std::string& setting : setting_keys)
        check(variable_of(setting), is_setting, "a whole number");
    check(variable_of("read_broken_tables"), is_setting, "a whole number");
}

} // namespace tool
