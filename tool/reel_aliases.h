#pragma once
// Names that reels were given on the way from the log to the edit.

#include <map>
#include <string>
#include <string_view>

namespace tool {

/// What the edit calls a reel, in lower case, and what the log calls it.
using ReelAliases = std::map<std::string, std::string>;

/// Of a text with a line for each: `EDIT = LOG`, the two parted by a tab, or two words. Blank lines and those that
/// begin with `#` count for nothing. Throws `JobError` with `path` and the line.
ReelAliases parse_aliases(std::string_view bytes, const std::string& path);

/// The same of a file.
ReelAliases read_aliases(const std::string& path);

} // namespace tool
