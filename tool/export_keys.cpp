#include "tool/export_keys.h"

namespace tool {

using embedded::Fraction;
using formats::LoggedFrame;

formats::LogLookup lookup_in(const film::LogRows* log) {
    if (!log) return {};
    return [log](const std::string& reel, std::int64_t frame, const Fraction& share) -> std::optional<LoggedFrame> {
        constexpr int most_overrun = 30;
        const film::LogRow* row = log->at(reel, frame).row;
        if (!row) row = log->nearest(reel, frame, most_overrun);
        if (!row || !row->key.is_useful()) return std::nullopt;
        const auto key_at = [&](std::int64_t at) {
            const Fraction film = (Fraction(at - row->start) + film::inside_frame(share)) * share;
            LabelPoint key = row->key;
            key += static_cast<int>(film.floor() * key.cvt()->samples_per_frame());
            return key;
        };
        const auto length = static_cast<std::int64_t>(share.den());
        const std::int64_t cycle = row->start + Fraction(frame - row->start, length).floor() * length;
        return LoggedFrame{key_at(frame), static_cast<std::size_t>(row - log->rows().data()), cycle, key_at(cycle)};
    };
}

} // namespace tool
