#include "tool/export_keys.h"

namespace tool {

using embedded::Fraction;

formats::KeyOfFrame keys_of_log(const film::LogRows* log) {
    if (!log) return {};
    return [log](const std::string& reel, std::int64_t frame, const Fraction& share) -> std::optional<LabelPoint> {
        constexpr int most_overrun = 30;
        const film::LogRow* row = log->at(reel, frame).row;
        if (!row) row = log->nearest(reel, frame, most_overrun);
        if (!row || !row->key.is_useful()) return std::nullopt;
        LabelPoint key = row->key;
        const std::int64_t film_frames = ((Fraction(frame - row->start) + film::inside_frame(share)) * share).floor();
        key += static_cast<int>(film_frames * key.cvt()->samples_per_frame());
        return key;
    };
}

} // namespace tool
