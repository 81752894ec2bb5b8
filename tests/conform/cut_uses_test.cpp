// What of an edit's film is cut, and what is printed.

#include "film/cut_uses.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using film::CutMethod;
using film::EditFilm;
using film::Fraction;
using film::Role;
using film::Strip;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

Strip strip(int item, std::int64_t start, std::int64_t end, std::int64_t first, Fraction step = 1) {
    Strip made;
    made.item = item;
    made.event = item + 1;
    made.start = start;
    made.end = end;
    made.rolls.listed = "A1";
    made.rolls.tape = "T1";
    made.key.kind = label_key_35mm_4p;
    made.key.prefix = "KJ123456";
    made.key.first = first;
    made.key.step = step;
    made.source.kind = label_frames;
    made.source.step = step;
    return made;
}

Strip with(Strip made, int optical, Role role = Role::cut) {
    made.optical = optical;
    made.role = role;
    return made;
}

Strip by_timecode(Strip made, Fraction step) {
    made.timecode = made.key;
    made.timecode.kind = label_tc_24;
    made.timecode.prefix.clear();
    made.timecode.step = step;
    made.key = {};
    return made;
}

EditFilm edit(std::vector<Strip> strips, std::vector<int> effects = {}) {
    EditFilm made;
    made.strips = std::move(strips);
    film::sort_strips(made.strips);
    made.effects = std::move(effects);
    return made;
}

/// "1-2 100-147 at 0-48", printed ones with a "p"; what can't be held as "? 0-48".
std::vector<std::string> cut(const EditFilm& film, CutMethod method = CutMethod::ab) {
    film::CutFilm all;
    film::add_cut(film, nullptr, method, 0, all);
    std::vector<std::string> texts;
    const auto range = [](std::int64_t a, std::int64_t b) { return std::to_string(a) + '-' + std::to_string(b); };
    for (const film::CutUse& use : all.uses)
        texts.push_back((use.printed ? "p" : "") + range(use.event, use.last_event) + ' ' +
                        range(use.frames.first, use.frames.last) + " at " + range(use.start, use.end));
    for (const film::UnknownFilm& unheld : all.unheld)
        texts.push_back("? " + range(unheld.strip.start, unheld.strip.end));
    return texts;
}

TEST(CutUses, AreJoinedOverACutThatIsNone) {
    EXPECT_THAT(cut(edit({strip(0, 0, 48, 100), strip(1, 48, 60, 148)})), ElementsAre("1-2 100-159 at 0-60"));
    EXPECT_THAT(cut(edit({strip(0, 0, 48, 100), strip(1, 48, 60, 149)})),
                ElementsAre("1-1 100-147 at 0-48", "2-2 149-160 at 48-60"));
    EXPECT_THAT(cut(edit({strip(0, 0, 48, 100), strip(1, 50, 60, 148)})),
                ElementsAre("1-1 100-147 at 0-48", "2-2 148-157 at 50-60"))
        << "something lies between them";
    EXPECT_THAT(cut(edit({strip(0, 12, 60, 100), strip(1, 0, 12, 148)})),
                ElementsAre("2-2 148-159 at 0-12", "1-1 100-147 at 12-60"))
        << "the other way round";
}

TEST(CutUses, OfReelsAreNeverJoined) {
    film::CutFilm all;
    film::add_cut(edit({strip(0, 0, 48, 100)}), nullptr, CutMethod::ab, 0, all);
    film::add_cut(edit({strip(0, 48, 60, 148)}), nullptr, CutMethod::ab, 1, all);
    EXPECT_EQ(all.uses.size(), 2U);
    EXPECT_EQ(all.uses[1].reel, 1);
}

TEST(CutUses, HoldBothSidesOfATransitionOnABRolls) {
    const EditFilm film = edit({with(strip(0, 0, 40, 100), 1), with(strip(0, 40, 48, 140), 1, Role::outgoing),
                                with(strip(1, 40, 48, 500), 1, Role::incoming), with(strip(1, 48, 60, 508), 1)});
    EXPECT_THAT(cut(film), ElementsAre("1-1 100-147 at 0-48", "2-2 500-519 at 40-60"));
    for (const CutMethod method : {CutMethod::single, CutMethod::ultrasonic})
        EXPECT_THAT(cut(film, method), ElementsAre("p1-1 100-147 at 0-48", "p2-2 500-519 at 40-60"));
}

TEST(CutUses, OfEffectsUpperTracksAndOtherSpeedsArePrinted) {
    Strip upper = strip(4, 0, 10, 700);
    upper.layer = 1;
    EXPECT_THAT(cut(edit({with(strip(0, 0, 10, 100), 2), strip(1, 10, 20, 300, 2), strip(2, 20, 30, 400, -1),
                          strip(3, 30, 40, 600, 0), upper},
                         {2})),
                ElementsAre("p1-1 100-109 at 0-10", "p2-2 300-318 at 10-20", "p3-3 391-400 at 20-30",
                            "p4-4 600-600 at 30-40", "p5-5 700-709 at 0-10"));
}

TEST(CutUses, OfFilmWithoutKeyNumbersGoByATimecodeThatCountsItsFrames) {
    EXPECT_THAT(cut(edit({by_timecode(strip(0, 0, 10, 86400), 1)})), ElementsAre("1-1 86400-86409 at 0-10"));
    EXPECT_THAT(cut(edit({by_timecode(strip(0, 0, 10, 86400), Fraction(5, 4))})), ElementsAre("? 0-10"));
    Strip nothing = strip(0, 0, 10, 0);
    nothing.key = {};
    EXPECT_THAT(cut(edit({nothing})), ElementsAre("? 0-10"));
    nothing.black = true;
    EXPECT_THAT(cut(edit({nothing})), IsEmpty());
}

} // namespace
