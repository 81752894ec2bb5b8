// Strips of film behave as lists of single frames do.

#include "changelist/proof/film_strips.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <vector>

namespace {

using Strip = FilmStrips::Strip;
using Frames = std::vector<std::int64_t>;

Frames frames_of(const FilmStrips& strips, Strip strip) {
    Frames frames;
    for (const FilmStretch& stretch : strips.stretches(strip)) {
        for (std::int64_t frame = 0; frame < stretch.length; ++frame)
            frames.push_back(static_cast<std::int64_t>(stretch.film) * 1000 + stretch.offset + frame);
    }
    return frames;
}

TEST(FilmStrips, CutAndSpliceAsFramesDo) {
    EXPECT_TRUE(rc::check([] {
        FilmStrips strips;
        Strip strip = FilmStrips::no_film;
        Frames frames;
        for (std::size_t film = 1; film < 30; ++film) {
            const std::int64_t length = *rc::gen::inRange(1, 9);
            const std::int64_t at = *rc::gen::inRange<std::int64_t>(0, static_cast<std::int64_t>(frames.size()) + 1);
            const std::int64_t turn = *rc::gen::inRange<std::int64_t>(0, static_cast<std::int64_t>(frames.size()) + 1);
            const FilmStrips::Halves halves = strips.cut(strip, at);
            strip = strips.splice(strips.splice(halves.head, strips.make({film, 7, length, 0})), halves.tail);
            for (std::int64_t frame = 0; frame < length; ++frame)
                frames.insert(frames.begin() + at + frame, static_cast<std::int64_t>(film) * 1000 + 7 + frame);
            const FilmStrips::Halves turned = strips.cut(strip, turn);
            strip = strips.splice(turned.tail, turned.head);
            std::rotate(frames.begin(), frames.begin() + turn, frames.end());
            RC_ASSERT(strips.length(strip) == static_cast<std::int64_t>(frames.size()));
        }
        RC_ASSERT(frames_of(strips, strip) == frames);
    }));
}

TEST(FilmStrips, MarkAllFilmOfAStrip) {
    FilmStrips strips;
    const Strip strip = strips.splice(strips.make({1, 0, 5, 0}), strips.make({2, 0, 5, 0}));
    const FilmStrips::Halves halves = strips.cut(strip, 3);
    strips.mark(halves.tail, 9);
    EXPECT_EQ(strips.stretches(halves.head).front().step, 0);
    for (const FilmStretch& stretch : strips.stretches(halves.tail))
        EXPECT_EQ(stretch.step, 9);
}

TEST(FilmStrips, OfNoFilmAreEmpty) {
    FilmStrips strips;
    const FilmStrips::Halves halves = strips.cut(FilmStrips::no_film, 0);
    EXPECT_EQ(strips.splice(halves.head, halves.tail), FilmStrips::no_film);
    EXPECT_TRUE(strips.stretches(FilmStrips::no_film).empty());
}

} // namespace
