#include "formats/sequence_choice.h"

#include <algorithm>

namespace formats {
namespace {

/// More of them are counted, not named.
constexpr std::size_t most_named = 40;

std::optional<std::size_t> none(ReadResult& result, const std::string& error) {
    result.error = error;
    result.sequence_missing = true;
    return std::nullopt;
}

/// A name that tells it from others of its name.
std::string with_place(const Sequence& sequence) { return sequence.name + " (" + sequence.place + ")"; }

} // namespace

std::string names_of(const std::vector<Sequence>& all) {
    std::string text;
    for (std::size_t i = 0; i < std::min(all.size(), most_named); ++i) {
        text += (i ? ", \"" : "\"") + all[i].name + '"';
        if (!all[i].place.empty()) text += " (" + all[i].place + ")";
    }
    return all.size() <= most_named ? text : text + " and " + std::to_string(all.size() - most_named) + " more";
}

std::optional<std::size_t> choose_sequence(const std::vector<Sequence>& all, const ReadOptions& options,
                                           const std::string& path, ReadResult& result) {
    if (all.empty()) {
        result.error = path + ": holds no sequence";
        return std::nullopt;
    }
    const std::string& wanted = options.sequence;
    if (wanted.empty()) {
        if (all.size() == 1) return 0;
        return none(result, path + ": holds " + std::to_string(all.size()) + " sequences: " + names_of(all));
    }
    const auto is_wanted = [&](const Sequence& sequence) {
        return sequence.name == wanted || with_place(sequence) == wanted;
    };
    const auto found = std::find_if(all.begin(), all.end(), is_wanted);
    if (found == all.end()) return none(result, path + ": holds no sequence \"" + wanted + "\", but " + names_of(all));
    if (std::any_of(found + 1, all.end(), is_wanted)) {
        result.error = path + ": holds several sequences \"" + wanted + "\": " + names_of(all);
        if (!found->place.empty()) result.error += "; name one as \"" + with_place(*found) + "\"";
        return std::nullopt;
    }
    result.sequence_chosen = true;
    return static_cast<std::size_t>(found - all.begin());
}

} // namespace formats
