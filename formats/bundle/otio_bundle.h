#pragma once
// Archives that hold an .otio edit with its media (.otioz).

#include "formats/edit_reading.h"

#include <string>
#include <string_view>

namespace formats {

/// What the edit of a bundle is called in it.
constexpr std::string_view bundled_edit = "content.otio";

/// An archive with that edit. Its media aren't looked at.
ReadResult read_otioz(const std::string& path, const ReadOptions& options = {});
ReadResult read_otioz_bytes(std::string_view archive, const std::string& path_for_messages, std::int64_t file_time,
                            const ReadOptions& options = {});
/// Whether an archive holds an edit.
bool is_otioz(std::string_view archive);

} // namespace formats
