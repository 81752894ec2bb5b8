#pragma once
// The values of film logs in the spellings that people and programs write.

#include "host/labels.h"

#include <string>
#include <string_view>

namespace formats {

/// The key kind of "35mm,4perf", "35 mm, 3 perf", "35.3", "16mm", "65mm 5p", "35mm-4p" or "3 perf"; none for
/// anything else. 35mm alone has 4 perforations, 65mm alone 5; 65mm is numbered every 120 perforations.
label_t film_kind_of_text(std::string_view text);

/// What became of a key or ink number; the point is useful unless it is empty or bad.
enum class FilmNumber {
    empty,
    good,
    bad,
    mid_foot,        ///< "+32" is the mark half way to the next count, in perforations, and was read as that
    beyond_count,    ///< more frames than a count has; carried into the next counts
    bad_perforation, ///< a perforation that no frame of this film has; left out
};

/// Reads a key number of a key kind. `perforation` is that of the frame on which the dot lies, as a text of its
/// own or empty; it counts where the number doesn't name one.
FilmNumber read_key_number(std::string_view text, std::string_view perforation, label_t kind, LabelPoint& point);

/// An ink number as labels read it, a prefix of four characters filled up with "_", the count, "+" and frames;
/// empty for what is none.
std::string plain_ink_number(std::string_view text);

/// Film frames of a length as "0070+00" (feet and frames of a film kind's feet) or "1120"; -1 for anything else.
int film_length(std::string_view text, label_t kind);

/// 0 to 4 for A, B, X, C, D, also behind or before a field number ("A1"); -1 for anything else.
int pulldown_phase(std::string_view text);

/// What a logging table says of pulldown, by its first character: Y or 1, N or 0, or neither.
bool says_pulldown(std::string_view text);
bool says_no_pulldown(std::string_view text);

/// Texts that stand for nothing: "-", "--", "n/a", "none" and the like.
bool says_nothing(std::string_view text);

} // namespace formats
