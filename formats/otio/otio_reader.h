#pragma once
// Reads OpenTimelineIO files as edits.

#include "embedded/rates.h"
#include "host/edit.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace formats {

struct ReadOptions {
    const embedded::RateInfo* rate = nullptr; ///< wins over the file's own; null leaves that
    bool all_effects = false;                 ///< every effect is the lab's
    bool unrender = false;                    ///< rendered clips as what they were rendered from
};

/// `edit` is empty and `error` set when the file can't be read. Messages name the file, the line and byte or the
/// object, and what is wrong.
struct ReadResult {
    EditPtr edit;
    std::vector<std::string> warnings;
    std::string error;
    bool rate_missing = false; ///< the error is that nothing tells the rate and the options don't either
};

ReadResult read_otio(const std::string& path, const ReadOptions& options = {});
/// The same of a text in memory. `file_time` is in seconds since the epoch; an edit that knows no other time of its
/// last change has this.
ReadResult read_otio_bytes(std::string_view bytes, const std::string& path_for_messages, std::int64_t file_time,
                           const ReadOptions& options = {});

} // namespace formats
