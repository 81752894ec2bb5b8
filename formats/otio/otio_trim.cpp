#include "formats/otio/otio_items.h"

namespace formats::otio {

Stretch stretch_of_track(const Place& track, const Fraction& content, const Context& context) {
    const Stretch whole{Fraction(0), content};
    const std::optional<Range> range = read_range(track, "source_range");
    if (!range) return whole;
    const Fraction from = range->start ? range->start->seconds_on(*context.rate) : Fraction(0);
    const Fraction to = range->duration ? from + range->duration->seconds_on(*context.rate) : content;
    if (to <= Fraction(0) || content <= from) {
        if (Fraction(0) < content)
            context.warn_dropped(track, "its source_range meets none of its content and is left out");
        return whole;
    }
    return {from, to};
}

} // namespace formats::otio
