#include "formats/log_doubts.h"

#include "formats/source_labels.h"

namespace formats {
namespace {

/// Whether the row of a last frame goes on with the film of the first one's.
bool goes_on(const LoggedFrame& begins, const LoggedFrame& ends, std::int64_t last, const embedded::Fraction& film) {
    const std::optional<LabelPoint> counted = moved(begins.key, (begins.into + film).floor());
    return counted && ends.start <= last && last < ends.end && *counted == ends.key;
}

} // namespace

void LogDoubts::note(const std::string& where, const std::string& reel, std::int64_t first, std::int64_t last,
                     const embedded::Fraction& share) {
    if (!log_) return;
    const auto begins = log_(reel, first, share), ends = log_(reel, last, share);
    if (!begins) {
        if (!reel.empty()) add(missing, where);
        return;
    }
    const embedded::Fraction film = embedded::Fraction(last - first) * share;
    if (first < begins->start || !ends || !goes_on(*begins, *ends, last, film)) add(beyond, where);
    if (begins->ambiguous || (ends && ends->ambiguous)) add(ambiguous, where);
}

void LogDoubts::add(Kind kind, const std::string& where) {
    if (doubts_[kind].count++ == 0) doubts_[kind].first = where;
}

void LogDoubts::tell(embedded::Warnings& warnings) const {
    constexpr std::array<const char*, kinds> texts = {
        "the log has no key number for it", "it reaches beyond its row of the log",
        "rows of the log name different film for it, and the first of them counts"};
    for (std::size_t kind = 0; kind < kinds; ++kind) {
        const Doubt& doubt = doubts_[kind];
        if (doubt.count == 0) continue;
        const std::string more = doubt.count > 1 ? " (" + std::to_string(doubt.count - 1) + " more)" : "";
        warnings.push_back({embedded::WarningKind::doubt, doubt.first + ": " + texts[kind] + more});
    }
}

} // namespace formats
