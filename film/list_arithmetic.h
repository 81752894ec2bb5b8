#pragma once
// How lists count film, from their documented rules: what an entry prints where that isn't simply the number of its
// first and last frames.

#include "film/film_pieces.h"

#include <optional>
#include <string>
#include <string_view>

namespace film {

/// What of a transition an entry takes in.
enum class Share { none, half, whole };

struct Shares {
    Share in = Share::none, out = Share::none;
};

/// Frames of the edit that these are of the piece. The odd frame of halves goes to the event ahead.
std::int64_t in_frames(const Piece& piece, const Shares& shares);
std::int64_t out_frames(const Piece& piece, const Shares& shares);

/// The shares that a list may give an event: halves in a cutting copy, but for those to and from black.
std::vector<Shares> shares_of(const Piece& piece, bool halves);

/// A stretch of film as an entry names it, in samples of its kind.
struct Codes {
    label_t kind = label_none;
    std::string prefix;
    std::int64_t first = 0, last = 0;
    bool from_zero = false; ///< the count can't go back before its first number
    explicit operator bool() const { return kind != label_none; }
};

/// What a list prints for an event with these shares. `slack` samples are added before the last frame's are cut.
Codes listed_codes(const Piece& piece, Count Strip::*number, const Shares& shares, int handles, double slack = 0.0);
/// Frames of the film that so many frames of a transition take, as lists count them.
std::int64_t listed_film_frames(double frames, double speed);
/// The sample of the first frame of an event without its transitions.
std::int64_t cut_in_sample(const Piece& piece, Count Strip::*number);

/// A strip of which an entry doesn't name all the film that it should, and of what part of it.
struct Unnamed {
    const Strip* strip;
    std::int64_t first, last; ///< frames of the edit, as far as the entry takes the strip in
    std::int64_t by;          ///< frames of film beyond what the entry names; 0 or below where it names another strand
    bool elsewhere;           ///< on another roll, or under another prefix

    std::string film(const Count& number) const;
    /// The strip's numbers may be off by as much.
    bool unsure() const { return strip->sureness == Sureness::within && by <= strip->off; }
};

std::vector<Unnamed> unnamed_by(const Codes& codes, const Piece& piece, Count Strip::*number, const Shares& shares);

std::string code_of(label_t kind, const std::string& prefix, std::int64_t sample);
/// The same without its prefix.
std::string count_of(label_t kind, const std::string& prefix, std::int64_t sample);
/// "KE4312073306+08 to 3310+16".
std::string range_text(const Codes& codes);
/// The sample of a printed code, with its prefix or without; nothing where the text isn't as codes are written.
std::optional<std::int64_t> sample_of(label_t kind, const std::string& prefix, std::string_view text);

/// The frame of film in which a sample lies, counted as `number` counts.
std::int64_t frame_of_sample(const Count& number, std::int64_t sample);

/// Positions and lengths of a report: feet and frames of one film, or frames.
class ReelUnits {
public:
    explicit ReelUnits(label_t film);
    std::optional<std::int64_t> frame_of(std::string_view text) const;
    std::optional<std::int64_t> length_of(std::string_view text) const;
    /// As a report with texts like `like` would print it.
    std::string text_of(std::int64_t frame, std::string_view like) const;

private:
    label_t foot_;
};

} // namespace film
