#include "film/strip_frames.h"

#include <algorithm>

namespace film {
namespace {

std::int64_t last_frame_ahead_of(const Fraction& end) { return -whole_frame(-end) - 1; }

/// Frames that a frame of film takes: of key numbers one, of timecode more where film goes to tape by pulldown.
/// Backwards a strip counts from the last of them.
Fraction width_of(const Strip& strip) {
    const bool counts_up = strip.speed > Fraction(0) && strip.timecode.step > Fraction(0);
    return strip.key || !counts_up ? Fraction(1) : strip.timecode.step / strip.speed;
}

} // namespace

const Count& told_by(const Strip& strip) { return strip.key ? strip.key : strip.timecode; }

FrameRange named_frames(const Strip& strip) {
    const Count& count = told_by(strip);
    const Fraction begin = count.at(0), end = count.at(strip.length() - 1), width = width_of(strip);
    const Fraction last = std::max(begin, end);
    return {whole_frame(std::min(begin, end)),
            width > Fraction(1) ? last_frame_ahead_of(last + width) : whole_frame(last)};
}

void note_more(const Fraction& picture, Strip& strip) {
    const Count& count = told_by(strip);
    const bool frame_for_frame = strip.lead == Fraction(0) && strip.tail == Fraction(0) && picture == Fraction(1);
    // At other speeds the film that stands at each frame is all that is shown.
    if (!count || (frame_for_frame && !(count.step == Fraction(1)))) return;
    const Fraction length = Fraction(strip.length()) + strip.tail - strip.lead;
    const Fraction begin = count.first + strip.lead * count.step;
    const Fraction end = begin + std::max(length - picture, Fraction(0)) * count.step;
    const Fraction shown = strip.key ? picture - strip.pushed : Fraction(1);
    const FrameRange named = named_frames(strip);
    strip.more_below = std::max<std::int64_t>(named.first - whole_frame(std::min(begin, end)), 0);
    strip.more_above = std::max<std::int64_t>(last_frame_ahead_of(std::max(begin, end) + shown) - named.last, 0);
}

} // namespace film
