#pragma once
// Edits that programs write as folders: the file that counts, with media beside it.

#include <string>

namespace formats {

/// The file inside, where a path is such a folder: "a.fcpxmld/Info.fcpxml" of "a.fcpxmld", "b.otiod/content.otio" of
/// "b.otiod". Any other path as it is.
std::string file_of_bundle(const std::string& path);

} // namespace formats
