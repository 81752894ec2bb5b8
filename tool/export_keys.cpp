#include "tool/export_keys.h"

namespace tool {

using embedded::Fraction;
using formats::LoggedFrame;

formats::LogLookup lookup_in(const film::LogRows* log) {
    if (!log) return {};
    return [log](const std::string& reel, std::int64_t frame, const Fraction& share) -> std::optional<LoggedFrame> {
        constexpr int most_overrun = 30;
        const film::RowAt found = log->at(reel, frame);
        const film::LogRow* row = found.row;
        if (!row) row = log->nearest(reel, frame, most_overrun);
        if (!row || !row->key.is_useful()) return std::nullopt;
        const auto film_at = [&](std::int64_t at) {
            return (Fraction(at - row->start) + film::inside_frame(share)) * share;
        };
        const auto key_at = [&](std::int64_t at) {
            LabelPoint key = row->key;
            key += static_cast<int>(film_at(at).floor() * key.cvt()->samples_per_frame());
            return key;
        };
        LoggedFrame logged;
        logged.key = key_at(frame);
        logged.into = film_at(frame) - Fraction(film_at(frame).floor());
        logged.row = static_cast<std::size_t>(row - log->rows().data());
        logged.start = row->start;
        logged.end = row->end;
        logged.ambiguous = found.other != nullptr;
        const auto length = static_cast<std::int64_t>(share.den());
        logged.cycle = row->start + Fraction(frame - row->start, length).floor() * length;
        logged.cycle_key = key_at(logged.cycle);
        return logged;
    };
}

} // namespace tool
