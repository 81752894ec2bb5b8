#pragma once
// Uses of film made by hand, and conflicts as short texts.

#include "film/conform.h"

#include <string>
#include <vector>

namespace conform_test {

inline film::FilmRun run_of(const std::string& kind, int perforation = 0, const std::string& prefix = "KJ123456") {
    return {"A001", edlstr_to_label_type(kind.c_str()), prefix, perforation};
}

/// Frames of 35mm with 4 perforations, from the edit's frame `start`.
inline film::CutUse use(std::int64_t first, std::int64_t last, std::int64_t start = 0,
                        const std::string& kind = "35mm-4p") {
    film::CutUse made;
    made.run = run_of(kind);
    made.frames = {first, last};
    made.start = start;
    made.end = start + made.frames.length();
    return made;
}

inline film::CutUse printed(std::int64_t first, std::int64_t last) {
    film::CutUse made = use(first, last);
    made.printed = true;
    return made;
}

inline film::SpliceRules rules(const std::string& loss) {
    film::SpliceRules made;
    made.own = film::splice_loss_of(loss);
    return made;
}

inline film::SpentFilm negative(const std::vector<film::CutUses>& cuts, const film::SpliceRules& rules) {
    film::SpentFilm spent(rules);
    for (const film::CutUses& cut : cuts)
        spent.carry_out(cut);
    return spent;
}

inline std::string drawn(const film::Mend& mend) {
    static constexpr const char* names[] = {"shorten", "duplicate", "print"};
    std::string text = std::string(names[static_cast<int>(mend.mending)]) + ' ' + std::to_string(mend.use);
    if (mend.head > 0) text += " head " + std::to_string(mend.head);
    if (mend.tail > 0) text += " tail " + std::to_string(mend.tail);
    return text;
}

/// "0 gone 148 at tail: shorten 0 tail 2, print 0".
inline std::string drawn(const film::Conflict& conflict) {
    static constexpr const char* names[] = {"gone", "twice", "close"};
    std::string text = std::to_string(conflict.use) + ' ' + names[static_cast<int>(conflict.trouble)];
    for (const film::FrameRange& frames : conflict.frames)
        text += ' ' + std::to_string(frames.first) +
                (frames.length() > 1 ? '-' + std::to_string(frames.last) : std::string());
    if (conflict.trouble == film::Trouble::close)
        text += std::string(conflict.side == film::Side::head ? " head" : " tail") + " lacks " +
                std::to_string(conflict.lacking);
    if (conflict.at_head) text += " at head";
    if (conflict.at_tail) text += " at tail";
    if (conflict.other != film::no_use) text += " with " + std::to_string(conflict.other);
    std::string mends;
    for (const film::Mend& mend : conflict.mends)
        mends += (mends.empty() ? ": " : ", ") + drawn(mend);
    return text + mends;
}

inline std::vector<std::string> drawn(const film::Conform& conform) {
    std::vector<std::string> texts;
    for (const film::Conflict& conflict : conform.conflicts)
        texts.push_back(drawn(conflict));
    return texts;
}

} // namespace conform_test
