#pragma once
// The headers of a sequence as counts: what film it is, and where on it and on its tape each frame lies.

#include "formats/scans/scan_files.h"
#include "formats/scans/scan_header.h"
#include "host/labels.h"

#include <map>
#include <optional>
#include <set>

namespace formats {

/// What the caller knows better than the headers, or what they can't tell.
struct ScanOptions {
    const embedded::RateInfo* rate = nullptr;   ///< wins over the headers' own
    label_t film = label_none;                  ///< likewise
    std::string reel;                           ///< likewise
    std::map<std::string, std::string> letters; ///< of key numbers, by the digits of maker and stock; "" for all others
    bool time_from_names = false;               ///< the number of a file is its timecode, counted in frames
};

/// One frame of a sequence. Counts that aren't there weren't told, or couldn't be read.
struct ScanFrame {
    std::size_t file; ///< of the sequence
    std::optional<std::int64_t> key;
    std::optional<std::int64_t> time;
    std::optional<std::int64_t> position;
    TCInf standard; ///< of the time
};

/// Perforations between the counts of two prefixes, more than any prefix holds: one number tells a key number whole.
constexpr std::int64_t prefix_span = std::int64_t{1} << 32;

struct ScanFrames {
    std::vector<ScanFrame> frames; ///< by their number
    std::vector<std::string> prefixes;
    label_t film = label_none;
    int frame_perforations = 0;
    std::string reel, slate; ///< of the first header that tells

    LabelPoint key_point(std::int64_t key) const;
};

/// What was told already of all sequences, and isn't told again.
struct ScanTold {
    std::set<std::string> film_without_letters;
};

/// Reads all headers of a sequence. `why` is empty unless nothing can come of it.
ScanFrames read_frames(const ScanFiles& files, const ScanOptions& options, ScanTold& told, embedded::Warnings& warnings,
                       std::string& why);

/// The header of a file.
HeaderReading read_header(const std::string& path, ScanKind kind, std::string& why);

} // namespace formats
