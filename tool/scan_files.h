#pragma once
// What the scans of an order's pieces are called, and how they are numbered.

#include "film/order_facts.h"

#include <cstdint>
#include <string>
#include <utility>

namespace tool {

/// What the numbers in names of files count.
enum class FrameNumbers : unsigned char {
    timecode, ///< of the tape, as conform programs read them; of film that isn't frame for frame with it as `key`
    take,     ///< from the start of the log's row or the media
    key,      ///< from number 0 of the roll's prefix
};

inline constexpr std::pair<const char*, FrameNumbers> frame_numberings[] = {
    {"timecode", FrameNumbers::timecode}, {"take", FrameNumbers::take}, {"key", FrameNumbers::key}};

/// A name of files, "scans/{roll}/{roll}_{frame}.dpx".
class FileNames {
public:
    FileNames();
    /// Throws `UsageError` for a word in braces that isn't known, and where there isn't one {frame} in the last part.
    explicit FileNames(const std::string& pattern);

    /// With everything put in but the number, whose place stays "{frame}". What would be no part of a name of a file is
    /// "_".
    std::string name_of(const film::OrderToTell& order, std::size_t place) const;
    int digits() const { return digits_; }

private:
    std::string pattern_;
    int digits_ = 7;
};

/// The number of a piece's first file; `fault` says why it isn't as asked.
std::int64_t first_number_of(const film::OrderToTell& order, const film::OrderPiece& piece, FrameNumbers numbers,
                             std::string& fault);

} // namespace tool
