#pragma once
// The two kinds of channel, and how people name channels.

#include "host/channel_kinds.h"

#include <optional>
#include <string>

namespace tool {

/// As the options of the library and the edit count them.
enum ChannelKind : int { picture_kind = picture_channel, sound_kind = sound_channel };

constexpr char letter_of(ChannelKind kind) { return kind == sound_kind ? 'A' : 'V'; }
constexpr const char* word_of(ChannelKind kind) { return kind == sound_kind ? "sound" : "picture"; }

/// "V1" is the first picture channel, "A2" the second sound channel.
struct ChannelName {
    ChannelKind kind = picture_kind;
    int number = 1; ///< from 1, among the channels of that kind
};

inline std::string text_of(const ChannelName& channel) {
    return letter_of(channel.kind) + std::to_string(channel.number);
}

/// Of a channel as tables name it, of which all but "V" are sound; nothing where there is no name.
inline std::optional<ChannelKind> kind_of_channel(const std::string& name) {
    if (name.empty()) return std::nullopt;
    return name[0] == 'V' || name[0] == 'v' ? picture_kind : sound_kind;
}

} // namespace tool
