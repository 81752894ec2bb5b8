#pragma once
// All kinds of labels, as data.

#include "host/labels.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace embedded {

/// What a kind is used for.
enum class LabelUse { none, key, foot, ink, frames, timecode };

/// Kinds of one film: its key, foot and ink kinds belong together.
enum class FilmFamily { none, f35_4p, f16_1p, f35_3p, f35_2p, f35_8p, f65 };

struct LabelKind {
    label_t type;
    const char* text; ///< at most 11 characters
    LabelUse use;
    FilmFamily family;
    int samples_per_frame; ///< perforations of a frame of film; 1 for the others
    int samples_per_count; ///< perforations between two numbers; 1 for what isn't film
    int digits;            ///< of the count
    int prefix_length;
};

/// Timecode counting. `skipped` numbers are left out at the start of each minute but every tenth.
struct TimecodeBase {
    label_t type;
    int count; ///< frames counted in a second
    int skipped;
    int rate_num; ///< true frames a second where no edit says otherwise
    int rate_den;

    constexpr int plain_minute() const { return 60 * count; }
    constexpr int minute() const { return plain_minute() - skipped; }
    constexpr int ten_minutes() const { return 10 * plain_minute() - 9 * skipped; }
    constexpr int day() const { return 6 * 24 * ten_minutes(); }
};

/// Characters of the prefix of a key or ink number.
constexpr std::size_t longest_prefix = 8;
/// Kinds are numbered below this.
constexpr int kind_numbers = 48;

/// Numbers that name no kind have the kind of `label_none`.
extern const std::array<const LabelKind*, kind_numbers> kinds_by_number;
/// The same for any number.
inline const LabelKind& label_kind(label_t type) {
    const auto number = static_cast<std::size_t>(type);
    return *kinds_by_number[number < kinds_by_number.size() ? number : 0];
}
/// Without regard to case; the kind of `label_none` when the text is unknown.
const LabelKind& label_kind_of_text(std::string_view text);
/// Null for what isn't timecode.
const TimecodeBase* timecode_base(label_t type);
/// One sample on the position scale of a label made without an edit: seconds, or film frames.
double default_posn_step(label_t type);
/// The kind of the same family with that many digits; `type` itself where there is none.
label_t with_count_digits(label_t type, int digits);

} // namespace embedded
