#pragma once
// How much film a splice spends.
//
//     roll   - - - x|a . . . . . b|x - - -      x: film beyond the cut that the splice takes, on either side

#include "host/labels.h"

#include <optional>
#include <string>
#include <utility>

namespace film {

/// How a negative is put together.
enum class CutMethod : unsigned char {
    ab,         ///< A and B rolls: cemented, and transitions are printed from both rolls
    single,     ///< a single strand, cemented; transitions are opticals
    ultrasonic, ///< a single strand, welded
};

/// As command lines and documents name them.
inline constexpr std::pair<const char*, CutMethod> cut_methods[] = {
    {"ab", CutMethod::ab}, {"single", CutMethod::single}, {"ultrasonic", CutMethod::ultrasonic}};

const char* name_of(CutMethod method);

/// On one side of a cut.
struct SpliceLoss {
    int count = 0;
    bool perforations = false; ///< else frames
};

/// "2", "3p"; nothing for what is no such number.
std::optional<SpliceLoss> splice_loss_of(const std::string& text);

/// What splices spend, by kind of film.
struct SpliceRules {
    CutMethod method = CutMethod::ab;
    std::optional<SpliceLoss> own; ///< the lab's figure, for all kinds; none: the one that is usual

    SpliceLoss loss_of(label_t kind) const;
    /// The same in the perforations of the kind; of timecode in frames, whose perforations aren't known.
    int spent_on_a_side(label_t kind) const;
    /// Where the figure comes from, in a few words.
    const char* source_of(label_t kind) const;
};

} // namespace film
