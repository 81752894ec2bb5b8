#pragma once
// Keylog files, put together byte by byte.

#include <string>
#include <utility>
#include <vector>

namespace keylog {

inline const std::string header_line =
    "Record#  EVENT CAMROLL SOUNDROLL DOP      SCENE  TAKE VTTC_IN     VTTC_OUT    DURATION NAGRA_IN    "
    "VTTC_DROP NAGRA_DROP KEYIN          KEYOUT         PULLIN PULLOUT FOOTAGE  "
    "DESCRIPT                            COMMENTS";

using Place = std::pair<std::size_t, std::string>;

/// A line of blanks with texts at their places; at least `length` long.
inline std::string line_of(const std::vector<Place>& places, std::size_t length) {
    std::string line(length, ' ');
    for (const auto& [at, text] : places) {
        if (line.size() < at + text.size()) line.resize(at + text.size(), ' ');
        line.replace(at, text.size(), text);
    }
    return line;
}

constexpr std::size_t camroll = 15, soundroll = 23, scene = 42, take = 49, vttc_in = 54, vttc_out = 66, nagra_in = 87,
                      vttc_drop = 99, nagra_drop = 109, keyin = 120, pullin = 150, descript = 174, comments = 210;

/// The file's columns behind the comments, in one line with them.
constexpr std::size_t printed = 240, load = 248, loaded = 253, dur_frames = 260, perfin = 271, ink_in = 278,
                      labroll = 294, dlyroll = 302, slate = 310;

inline std::string full_header() {
    return line_of({{0, header_line},
                    {printed, "PRINTED"},
                    {load, "LOAD"},
                    {loaded, "LOADED"},
                    {dur_frames, "DUR_FRAMES"},
                    {perfin, "PERFIN"},
                    {ink_in, "INK_IN"},
                    {labroll, "LABROLL"},
                    {dlyroll, "DLYROLL"},
                    {slate, "SLATE"}},
                   0);
}

/// The line that names gauge, standard and reel.
inline std::string standards(const std::string& gauge, const std::string& perforations, const std::string& standard,
                             const std::string& reel) {
    return line_of({{descript, gauge}, {descript + 5, perforations}, {descript + 17, standard}, {comments, reel}}, 320);
}

inline std::string file_of(const std::vector<std::string>& lines, const std::string& line_end = "\n") {
    std::string bytes;
    for (const std::string& line : lines)
        bytes += line + line_end;
    return bytes;
}

} // namespace keylog
