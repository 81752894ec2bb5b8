#include "formats/bundle/otio_bundle.h"

#include "formats/bundle/zip_entry.h"
#include "formats/otio/otio_reader.h"

namespace formats {

bool is_otioz(std::string_view archive) { return bundle::holds_entry(archive, bundled_edit); }

ReadResult read_otioz_bytes(std::string_view archive, const std::string& path_for_messages, std::int64_t file_time,
                            const ReadOptions& options) {
    std::string why;
    if (const auto text = bundle::entry_of(archive, bundled_edit, why))
        return read_otio_bytes(*text, path_for_messages, file_time, options);
    ReadResult result;
    result.error = path_for_messages + ": " + std::string(bundled_edit) + " " + why;
    return result;
}

ReadResult read_otioz(const std::string& path, const ReadOptions& options) {
    return read_whole(read_otioz_bytes, path, path, options);
}

} // namespace formats
