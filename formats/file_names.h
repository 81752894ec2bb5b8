#pragma once
// Names out of paths.

#include <string>
#include <string_view>

namespace formats {

/// "A012" of "shots/A012.mov": the last part of a path without its extension. A point that opens the name hides a file
/// and begins no extension. `separators` part folders; lists of other systems also part them by "\\".
inline std::string_view stem_in(std::string_view path, std::string_view separators = "/") {
    const std::string_view name = path.substr(path.find_last_of(separators) + 1);
    const std::size_t point = name.rfind('.');
    return name.substr(0, point == 0 ? std::string_view::npos : point);
}
inline std::string stem_of(std::string_view path, std::string_view separators = "/") {
    return std::string(stem_in(path, separators));
}

} // namespace formats
