#pragma once
// Frame rates and gauges of the embedded host: the tables behind labels and edits.

#include "embedded/fraction.h"
#include "host/labels.h"

#include <optional>
#include <vector>

namespace embedded {

/// One frame rate that edits can have.
struct RateInfo {
    Qb::FrameRate code;
    std::int64_t num; ///< true frames a second: num / den
    std::int64_t den;
    int nominal;           ///< frames that timecode counts in a second
    label_t timecode;      ///< kind without drop-frame
    label_t drop_timecode; ///< kind with drop-frame; the same where the rate can't drop
    const char* name;      ///< text of the standard without its "fps" or "df"
    bool can_drop() const { return timecode != drop_timecode; }
    Fraction rate() const { return {num, den}; }
};

/// Null for 0 and for unknown codes.
const RateInfo* rate_info(Qb::FrameRate code);
/// The rates whose timecode is of that kind, with drop-frame or without, in the order of their codes.
std::vector<const RateInfo*> rates_counting(label_t timecode);
/// The listed rate within 0.01 of `frames_per_second`, the nearest of several; null if there is none.
const RateInfo* nearest_rate(double frames_per_second);
/// Film frames of one frame at a counting of 24, 25, 30, 48, 50 or 60; 1 at others.
Fraction film_share(int counting);
/// Film frames a second of material at that rate: frame for frame at 24 and 25 counting, 4/5 at 30 (2:3
/// pulldown), 1/2 at 48 and 50, 2/5 at 60.
Fraction film_rate_of(const RateInfo& rate);

} // namespace embedded
