#include "film/finding.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <tuple>
#include <utility>
#include <vector>

namespace film {
namespace {

constexpr CodeInfo infos[] = {
    {"reel-prefix", "give the log's row the whole reel name, or the reel rows of its own"},
    {"log-ambiguous", "take out of the log the row that doesn't hold, or mend its times"},
    {"log-overrun", "mend the times of the log's rows, or cut the event where its row ends"},
    {"key-conflict", "find out which number is on the film; lists of a run with a log name the log's"},
    {"outside-media", "mend the clip's source range, or the media's available range"},
    {"not-listed", "list that film apart, or bring the clip down to the lowest track"},
    {"dropped", "look at that place of the edit: what was left out is in no list"},
    {"replaced", "look at that place of the edit: the lists show what was put there"},
    {"reading", "look at that place of the file"},
    {"no-key", "give the shot a key number, by a log or in the edit, or find its film by the roll and timecode"},
    {"no-roll", "give the shot its camera roll"},
    {"no-log-row", "give the log a row that holds these frames, or mend the event's reel or timecode"},
    {"no-ink", "give the shot an ink number"},
    {"no-film", "find the film of this shot by hand"},
    {"optical-error", "move the effect over events of the lowest track that no other has"},
    {"used-twice", "order a duplicate of the film, or change one of the two places"},
    {"too-close", "leave more frames between the two, or order a duplicate"},
    {"transition-at-speed", "add these frames to the lists by hand"},
    {"from-zero", "add these frames to the lists by hand"},
    {"between-frames",
     "move the ends of the transition to whole frames of film, or add the frame to the lists by hand"},
    {"inexact", "look at the first and last frame by eye before the film is cut"},
    {"reverse", "look at the first frame by eye; --edl-reverse takes the source points the other way"},
    {"key-past-9999", "look at the film: the numbers begin again behind 9999"},
    {"film-kind", "give all rows of the log one kind of film, and make lists of other kinds by themselves"},
    {"name-cut", "give the two names that differ earlier"},
    {"bad-text", "mend the text in the edit or in the log"},
    {"rate", "give the rate with --rate, or make the log again at the rate of the edit"},
};

static_assert(std::size(infos) == static_cast<std::size_t>(Code::codes));

constexpr const char* severity_names[] = {"wrong", "doubt", "note"};

} // namespace

const CodeInfo& info_of(Code code) { return infos[static_cast<std::size_t>(code)]; }

const char* name_of(Severity severity) { return severity_names[static_cast<std::size_t>(severity)]; }

// They are large, so that their addresses are sorted in their stead.
void sort_findings(Findings& findings) {
    std::vector<Finding*> order;
    order.reserve(findings.size());
    for (Finding& finding : findings)
        order.push_back(&finding);
    std::stable_sort(order.begin(), order.end(), [](const Finding* a, const Finding* b) {
        return std::tuple(a->severity, a->place.frame, a->code) < std::tuple(b->severity, b->place.frame, b->code);
    });
    Findings sorted;
    sorted.reserve(findings.size());
    for (Finding* finding : order)
        sorted.push_back(std::move(*finding));
    findings = std::move(sorted);
}

std::string counted(std::int64_t number, const char* one, const char* many) {
    return std::to_string(number) + ' ' + (number == 1 ? one : many);
}

std::string frames_text(std::int64_t number) { return counted(number, "frame", "frames"); }

std::string fraction_text(const embedded::Fraction& value) {
    const auto text = [](embedded::Fraction::wide part) { return std::to_string(static_cast<long long>(part)); };
    constexpr int most_parts = 100000;
    if (value.den() == 1) return text(value.num());
    if (value.den() <= most_parts) return text(value.num()) + "/" + text(value.den());
    char decimal[32];
    std::snprintf(decimal, sizeof decimal, "%.9g", value.to_double());
    return decimal;
}

} // namespace film
