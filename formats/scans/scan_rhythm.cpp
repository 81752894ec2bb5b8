#include "formats/scans/scan_rhythm.h"

#include "embedded/label_kinds.h"
#include "formats/scans/most_frequent.h"

namespace formats {
namespace {

/// Whether a figure was shown and is another one.
bool differs(const std::optional<int>& shown, int figure) { return shown && *shown != figure; }

} // namespace

void RhythmTaker::take(const HeaderKey& key, const HeaderKey& next) {
    if (key.film != next.film || key.prefix != next.prefix) return;
    if (key.count == next.count) ++steps_[next.offset - key.offset];
    if (key.count + 1 == next.count) ++falls_[key.offset - next.offset];
}

ScanRhythm RhythmTaker::rhythm() const {
    ScanRhythm rhythm;
    rhythm.step = most_frequent(steps_);
    if (!rhythm.step) return rhythm;
    // A jump over a count is none of any film.
    std::map<int, int> counts, of_films;
    for (const auto& [fall, times] : falls_) {
        counts[fall + *rhythm.step] = times;
        if (film_of_rhythm({rhythm.step, fall + *rhythm.step})) of_films[fall + *rhythm.step] = times;
    }
    // So is one that was seen alone; where numbers step by 1 it may count frames.
    const bool one_jump = of_films.empty() && falls_.size() == 1 && falls_.begin()->second == 1 && *rhythm.step != 1;
    if (!one_jump) rhythm.count = most_frequent(of_films.empty() ? counts : of_films);
    return rhythm;
}

label_t film_of_rhythm(const ScanRhythm& rhythm) {
    label_t found = label_none;
    for (int number = 0; number < embedded::kind_numbers; ++number) {
        const embedded::LabelKind& kind = embedded::label_kind(static_cast<label_t>(number));
        const bool fits = kind.use == embedded::LabelUse::key && rhythm.step == kind.samples_per_frame &&
                          !differs(rhythm.count, kind.samples_per_count);
        if (!fits) continue;
        if (!found)
            found = kind.type;
        else if (embedded::label_kind(found).samples_per_count != kind.samples_per_count)
            return label_none;
    }
    return found;
}

OffsetUnit offset_unit(const ScanRhythm& rhythm, label_t film) {
    const embedded::LabelKind& kind = embedded::label_kind(film);
    const int frame = kind.samples_per_frame, count = kind.samples_per_count;
    if (!differs(rhythm.step, frame) && !differs(rhythm.count, count)) return OffsetUnit::perforations;
    const bool counts_frames = rhythm.step == 1 && count % frame == 0 && !differs(rhythm.count, count / frame);
    return counts_frames ? OffsetUnit::frames : OffsetUnit::neither;
}

} // namespace formats
