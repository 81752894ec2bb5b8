#include "tool/key_values.h"

#include "host/decimal_number.h"
#include "quillbrook/changelist.h"
#include "quillbrook/cutlist.h"
#include "tool/suggestion.h"
#include "tool/tool_error.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace tool {
namespace {

/// No list has columns for longer lengths, and no roll holds so much.
constexpr int most_frames = 10000;
constexpr int most_channel = 9999;

template <class Number> std::optional<Number> parse_number(std::string_view text) {
    Number value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, trouble] = decimal::read(text.data(), end, value);
    if (text.empty() || trouble != std::errc() || stop != end) return std::nullopt;
    return value;
}

std::pair<std::string, std::string> split_pair(const char* option, const std::string& text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0)
        throw UsageError(std::string(option) + ": \"" + text + "\" is not KEY=VALUE");
    return {text.substr(0, equals), text.substr(equals + 1)};
}

int parse_integer(const char* option, const std::string& key, const std::string& value) {
    const std::optional<int> number = parse_number<int>(value);
    if (!number) throw UsageError(std::string(option) + ' ' + key + ": \"" + value + "\" is not a whole number");
    return *number;
}

/// Options beyond whose limits lengths don't fit the columns of a list, or channels can't be counted.
struct Limits {
    std::string_view key;
    int least, most;
};

constexpr Limits limits[] = {{"pull_handle", -most_frames, most_frames},
                             {"butt", -most_frames, most_frames},
                             {"chan_num", 0, most_channel},
                             {"CHAN_NUM", 0, most_channel}};

void check_limits(const std::string& key, int value) {
    for (const Limits& limit : limits)
        if (key == limit.key && (value < limit.least || value > limit.most))
            throw UsageError("--set " + key + ": " + std::to_string(value) + " isn't within " +
                             std::to_string(limit.least) + " to " + std::to_string(limit.most));
}

std::string parse_number_of_key(const std::string& key, const std::string& text) {
    const int number = parse_integer("--set", key, text);
    check_limits(key, number);
    return std::to_string(number);
}

template <class Key> std::vector<std::string> names_of(const Key* key) {
    std::vector<std::string> names;
    for (; key->name; ++key)
        names.emplace_back(key->name);
    return names;
}

/// A pair for one of the keys of a table that ends with a nameless one, its value checked.
template <class Key> std::pair<std::string, std::string> parse_option(const Key* keys, const std::string& pair) {
    const auto [name, value] = split_pair("--set", pair);
    const Key* key = keys;
    while (key->name && name != key->name)
        ++key;
    if (!key->name) throw UsageError("--set: there is no option \"" + name + '"' + suggestion(name, names_of(keys)));
    return {name, key->is_text ? value : parse_number_of_key(name, value)};
}

} // namespace

const std::vector<std::string> setting_keys{"allow_auto_unrender", "audio_cutlist_24P",
                                            "audio_cutlist_by_timecode_test"};

ChannelName parse_channel(const std::string& text) {
    const char letter = text.empty() ? '\0' : text[0];
    const bool picture = letter == 'V' || letter == 'v';
    const bool sound = letter == 'A' || letter == 'a';
    const std::optional<int> number =
        picture || sound ? parse_number<int>(std::string_view(text).substr(1)) : std::nullopt;
    if (!number || *number < 1)
        throw UsageError("--channel: \"" + text + "\" is not a channel; name one as V1 (picture) or A1 (sound)");
    return {picture ? picture_kind : sound_kind, *number};
}

const embedded::RateInfo* parse_rate(const std::string& text) {
    const std::optional<double> number = parse_number<double>(text);
    const embedded::RateInfo* rate = number ? embedded::nearest_rate(*number) : nullptr;
    if (!rate)
        throw UsageError("--rate: \"" + text +
                         "\" is not one of 23.976, 23.98, 24, 25, 29.97, 30, 47.952, 48, 50, 59.94, 60");
    return rate;
}

std::string parse_frames(const char* option, const std::string& text) {
    const std::optional<int> number = parse_number<int>(text);
    if (!number || *number < 0 || *number > most_frames)
        throw UsageError(std::string(option) + ": \"" + text + "\" is not a whole number of frames from 0 to " +
                         std::to_string(most_frames));
    return std::to_string(*number);
}

std::map<std::string, std::string> parse_options(const std::vector<std::string>& pairs) {
    std::map<std::string, std::string> options;
    for (const std::string& pair : pairs) {
        const auto [key, value] = parse_option(cutlist_option_keys(), pair);
        if (key == "output_file") throw UsageError("--set output_file: the report is named by -o");
        if (key == "log_file") throw UsageError("--set log_file: the logging table is named by --log");
        options[key] = value;
    }
    return options;
}

std::map<std::string, std::string> parse_change_options(const std::vector<std::string>& pairs) {
    std::map<std::string, std::string> options;
    for (const std::string& pair : pairs) {
        const auto [key, value] = parse_option(changelist_option_keys(), pair);
        options[key] = value;
    }
    return options;
}

Settings parse_settings(const std::vector<std::string>& pairs) {
    Settings settings;
    for (const std::string& pair : pairs) {
        const auto [key, value] = split_pair("--config", pair);
        if (std::find(setting_keys.begin(), setting_keys.end(), key) == setting_keys.end())
            throw UsageError("--config: there is no setting \"" + key + '"' + suggestion(key, setting_keys));
        settings[key] = parse_integer("--config", key, value);
    }
    return settings;
}

} // namespace tool
