#include "tool/environment.h"

#include "host/decimal_number.h"
#include "tool/key_values.h"
#include "tool/suggestion.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <unistd.h>

namespace tool {
namespace {

template <class Number> bool is_number(std::string_view text) {
    Number value = 0;
    const auto [end, trouble] = decimal::read(text.data(), text.data() + text.size(), value);
    return trouble == std::errc() && end == text.data() + text.size();
}

void check(const std::string& name, bool (*readable)(std::string_view), const char* wanted) {
    const char* value = std::getenv(name.c_str());
    if (value && !readable(value)) throw UsageError(name + ": \"" + one_line(value) + "\" is not " + wanted);
}

// An empty one counts as not set.
bool is_setting(std::string_view text) { return text.empty() || is_number<int>(text); }

constexpr std::string_view prefix = "QUILLBROOK_";

std::string variable_of(const std::string& setting) {
    std::string name(prefix);
    std::transform(setting.begin(), setting.end(), std::back_inserter(name),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return name;
}

/// Those of the settings that `--config` takes, and those that only a variable can name.
std::vector<std::string> known_variables() {
    std::vector<std::string> names;
    for (const std::string& setting : setting_keys)
        names.push_back(variable_of(setting));
    for (const char* setting : {"wait_for_outputs", "read_broken_tables"})
        names.push_back(variable_of(setting));
    return names;
}

/// The names in the environment that begin as ours do.
std::vector<std::string> names_like_ours() {
    std::vector<std::string> names;
    for (char** variable = environ; variable && *variable; ++variable) {
        const std::string_view text = *variable;
        if (text.substr(0, prefix.size()) == prefix) names.emplace_back(text.substr(0, text.find('=')));
    }
    return names;
}

} // namespace

void check_environment() {
    check("SOURCE_DATE_EPOCH", is_number<std::int64_t>, "a whole number of seconds");
    for (const std::string& name : known_variables())
        check(name, is_setting, "a whole number");
}

// No error: programs around this one may have variables of that name.
void tell_unknown_variables() {
    const std::vector<std::string> known = known_variables();
    for (const std::string& name : names_like_ours())
        if (std::find(known.begin(), known.end(), name) == known.end())
            tell_warnings({name + ": there is no such variable; it says nothing" + suggestion(name, known)}, false);
}

} // namespace tool
