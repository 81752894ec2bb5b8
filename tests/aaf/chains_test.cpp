// The chain from a clip to tape and film: reels, timecode, key and ink numbers, columns of the bin.

#include "tests/aaf/aaf_edits.h"

#include <gmock/gmock.h>

using namespace aaf_edits;
using testing::HasSubstr;

namespace {

constexpr Rate ntsc{30000, 1001}, film_on_tape{24000, 1001};

/// Film A012, of which key number KJ291010 0000+00 is frame 0, in 2:3 on tape TK01 from its frame 0 on, and back to 24
/// frames in the file from tape frame `from` on.
Made telecine(Object segment, std::int64_t from = 0, int phase = 0, Rate tape_rate = ntsc) {
    Made made;
    made.mobs.push_back(composition(100, "Reel", {slot(1, {24}, std::move(segment))}));
    made.mobs.push_back(master(1, "A", {slot(1, {24}, clip(2, 0, 1000))},
                               {{"Scene", "12"}, {"take", "3"}, {"Labroll", "LR 7"}, {"Soundroll", "S4"}}));
    made.mobs.push_back(file_source(2, "a.mxf", {slot(1, {24}, pulldown(1000, true, clip(3, from, 1250), 0, phase))}));
    made.mobs.push_back(tape(3, "TK01",
                             {slot(1, tape_rate, pulldown(10000, false, clip(4, 0, 8000))),
                              slot(2, tape_rate, timecode(108000, 30, 10000), 1)}));
    made.mobs.push_back(film(4, "A012",
                             {slot(1, {24}, clip(0, 0, 8000)), slot(2, {24}, edge_code("KJ291010", 0, 8000), 1),
                              slot(3, {24}, edge_code("AA", 0, 8000, 2), 2)}));
    return made;
}

TEST(AafChains, LeadToTapeAndFilm) {
    const auto result = read(telecine(sequence({clip(1, 48, 24)})));
    ASSERT_EQ(result.error, "");
    const EditPtr source = source_of(result);
    EXPECT_EQ(reel(source, 1, 2), "TK01");
    EXPECT_EQ(reel(source, 2, 1), "A012");
    EXPECT_EQ(reel(source, 10, 1), "LR 7");
    EXPECT_EQ(reel(source, 4, 3), "S4");
    EXPECT_EQ(field(source, "scene"), "12");
    EXPECT_EQ(label_at(result, user_label_timecode), "01:00:02:00");
    EXPECT_EQ(label_at(result, user_label_key), "KJ2910100003+00");
    EXPECT_EQ(label_at(result, user_label_ink), "AA__0003+00");
    EXPECT_TRUE(result.warnings.empty());
}

// Video A B X C D, of which X shows film B and C; the film frame of each frame of a file made back to 24 is its own.
TEST(AafChains, EveryFrameOfAReversedPulldownIsItsOwnFilmFrame) {
    for (int frame = 0; frame < 9; ++frame) {
        const auto result = read(telecine(sequence({clip(1, frame, 1)})));
        const std::string expected = "KJ2910100000+0" + std::to_string(frame);
        EXPECT_EQ(label_at(result, user_label_key), expected) << frame;
        const int tape_frames[] = {0, 1, 3, 4};
        EXPECT_EQ(label_at(result, user_label_timecode),
                  "01:00:00:" + std::to_string(100 + 5 * (frame / 4) + tape_frames[frame % 4]).substr(1))
            << frame;
    }
}

TEST(AafChains, AFileThatBeginsOnAnyLetterOfTheCadenceKeepsItsFrames) {
    const int first_on_tape[] = {0, 1, 3, 4}; // the frames A, B, C, D of video
    for (int phase = 0; phase < 4; ++phase)
        for (int frame = 0; frame < 6; ++frame) {
            const auto result = read(telecine(sequence({clip(1, frame, 1)}), first_on_tape[phase], phase));
            EXPECT_EQ(label_at(result, user_label_key), "KJ2910100000+0" + std::to_string(phase + frame))
                << phase << " " << frame;
        }
}

TEST(AafChains, OneWriterCountsPhasesInFramesOfVideo) {
    Made made = telecine(sequence({clip(1, 3, 1)}), 3, 3);
    EXPECT_EQ(label_at(read(made), user_label_timecode), "01:00:00:07") << "film D and the three behind it";
    made.company = "Avid Technology, Inc.";
    EXPECT_EQ(label_at(read(made), user_label_timecode), "01:00:00:06") << "frame 3 of video is film C";
    EXPECT_EQ(label_at(read(made), user_label_key), "KJ2910100000+05");
}

// A tape that is cut as it is: the number is exact where each event begins, and counts on 4 frames in 5.
TEST(AafChains, TapesCutAsTheyAreBeginOnTheExactFilmFrame) {
    const int film_frames[] = {0, 1, 1, 2, 3, 4, 5, 5, 6, 7};
    for (int frame = 0; frame < 10; ++frame) {
        Made made = telecine(filler(1));
        made.mobs[0] = composition(100, "Reel", {slot(1, ntsc, sequence({clip(1, frame, 5)}))});
        made.mobs[1] = master(1, "A", {slot(1, ntsc, clip(3, 0, 1000))});
        EXPECT_EQ(label_at(read(made), user_label_key), "KJ2910100000+0" + std::to_string(film_frames[frame])) << frame;
        EXPECT_EQ(label_at(read(made), user_label_key, 0, 5),
                  "KJ2910100000+" + std::to_string(104 + film_frames[frame]).substr(1))
            << frame;
    }
}

/// Film A012 on a tape that is cut as it is.
Made tape_cut(Object segment) {
    Made made = telecine(filler(1));
    made.mobs[0] = composition(100, "Reel", {slot(1, ntsc, std::move(segment))});
    made.mobs[1] = master(1, "A", {slot(1, ntsc, clip(3, 0, 1000))});
    return made;
}

/// The film frame that a frame of tape shows, as a key number.
std::string key_of_tape(int frame) {
    const int in_a_cycle[] = {0, 1, 1, 2, 3};
    const int film_frame = frame / 5 * 4 + in_a_cycle[frame % 5];
    return "KJ291010000" + std::to_string(film_frame / 16) + "+" + std::to_string(100 + film_frame % 16).substr(1);
}

TEST(AafChains, TapesCutAsTheyAreAreExactWhereAListsEventBeginsBehindATransition) {
    for (int start = 20; start < 25; ++start)
        for (int length = 1; length < 9; ++length) {
            const auto result = read(tape_cut(
                sequence({clip(1, 500, 30), transition(length, length / 2), clip(1, start, 30)}, 60 - length)));
            EXPECT_EQ(label_at(result, user_label_key, 1), key_of_tape(start + length)) << start << " " << length;
        }
}

TEST(AafChains, TapesCutAsTheyAreAreExactWhereASubClipIsShown) {
    for (int start = 20; start < 25; ++start)
        for (int from = 0; from < 6; ++from) {
            Made made = tape_cut(sequence({clip(50, from, 10)}));
            made.mobs.push_back(sub_clip(50, "A.sub", {slot(1, ntsc, sequence({clip(1, start, 30)}))}));
            EXPECT_EQ(label_at(read(made), user_label_key), key_of_tape(start + from)) << start << " " << from;
        }
}

TEST(AafChains, TapesCutAsTheyAreAreExactWhereABackwardEventBegins) {
    for (int start = 20; start < 25; ++start)
        for (int length = 1; length < 6; ++length) {
            const Object backward =
                effect(speed_control, length, {clip(1, start, length)}, {constant(speed_ratio, -1)});
            EXPECT_EQ(label_at(read(tape_cut(backward)), user_label_key), key_of_tape(start + length - 1))
                << start << " " << length;
        }
    const Object behind = effect(speed_control, 20, {clip(1, 20, 20)}, {constant(speed_ratio, -1)});
    const auto result = read(tape_cut(sequence({clip(1, 500, 20), transition(6, 3), behind})));
    EXPECT_EQ(label_at(result, user_label_key, 1), key_of_tape(39 - 6)) << "behind a transition";
}

// Of the second clip a speed of 3 or -3 shows its frame 2 first, or that from its end.
TEST(AafChains, TapesCutAsTheyAreAreExactAtTheFirstFrameThatASpeedShows) {
    for (int start = 40; start < 45; ++start) {
        const Objects nest = {clip(1, 20, 10), clip(1, start, 11)};
        const auto forward = read(tape_cut(effect(speed_control, 7, {sequence(nest)}, {constant(speed_ratio, 1, 3)})));
        EXPECT_EQ(label_at(forward, user_label_key, 1), key_of_tape(start + 2)) << start;
        const Objects turned = {clip(1, start, 10), clip(1, 20, 11)};
        const auto backward =
            read(tape_cut(effect(speed_control, 7, {sequence(turned)}, {constant(speed_ratio, -1, 3)})));
        EXPECT_EQ(label_at(backward, user_label_key, 1), key_of_tape(start + 8)) << start;
    }
}

TEST(AafChains, TapesCutAsTheyAreAreExactAtTheFirstFrameThatASpeedInASpeedShows) {
    for (const int inner : {2, 3, 5, -1, -3})
        for (const int outer : {2, -1, -2})
            for (int first = 29; first < 34; ++first) {
                const int of_inner = 60 / std::abs(inner);
                const auto place = [&](int frame) {
                    return frame_played(inner, 60, frame_played(outer, of_inner, frame));
                };
                int second = 1; // the frame with which the second event begins
                while ((place(second) < first) == (place(0) < first))
                    ++second;
                const int in_clip = place(second) - (place(second) < first ? 0 : first);
                const Object nest = sequence({clip(1, 40, first), clip(1, 40, 60 - first)});
                const auto result = read(tape_cut(played(outer, of_inner, played(inner, 60, nest))));
                EXPECT_EQ(label_at(result, user_label_key, 1), key_of_tape(40 + in_clip))
                    << inner << " " << outer << " " << first;
            }
}

TEST(AafChains, WhatATransitionCoversOfAPartedEventMovesNoNumberBehindIt) {
    Made made = tape_cut(sequence({clip(1, 500, 30), transition(20, 2), clip(1, 20, 40)}));
    made.mobs[1] = master(1, "A", {slot(1, ntsc, sequence({clip(3, 0, 26), clip(3, 101, 900)}))});
    const auto result = read(made);
    EXPECT_EQ(drawn(result), "A 0-10 @500 | x 10-16 | A 16-16 @26 | A 16-50 @26")
        << "the event behind begins at its cut";
    EXPECT_EQ(label_at(result, user_label_key, 2), key_of_tape(101));
}

TEST(AafChains, TheTapeOfAFileMadeBackTo24IsExactBehindATransition) {
    const int tape_frames[] = {0, 1, 3, 4};
    for (int length = 1; length < 9; ++length) {
        const auto result =
            read(telecine(sequence({clip(1, 500, 30), transition(length, length / 2), clip(1, 20, 30)})));
        const int shown = 20 + length;
        EXPECT_EQ(label_at(result, user_label_timecode, 1),
                  "01:00:0" + std::to_string((shown / 4 * 5 + tape_frames[shown % 4]) / 30) + ":" +
                      std::to_string(100 + (shown / 4 * 5 + tape_frames[shown % 4]) % 30).substr(1))
            << length;
    }
}

TEST(AafChains, FilmAt24In25LosesAFrameEachSecond) {
    for (const auto& [frame, film_frame] :
         std::vector<std::pair<int, int>>{{0, 0}, {11, 11}, {12, 11}, {13, 12}, {24, 23}, {25, 24}}) {
        Made made;
        made.mobs.push_back(composition(100, "Reel", {slot(1, {25}, sequence({clip(1, frame, 10)}))}));
        made.mobs.push_back(master(1, "A", {slot(1, {25}, clip(3, 0, 1000))}));
        made.mobs.push_back(
            tape(3, "TK02",
                 {slot(1, {25}, pulldown(1000, false, clip(4, 0, 960), 1)), slot(2, {25}, timecode(90000, 25, 1000))}));
        made.mobs.push_back(
            film(4, "B001", {slot(1, {24}, clip(0, 0, 960)), slot(2, {24}, edge_code("KJ115500", 16, 960), 1)}));
        const int count = 16 + film_frame;
        const std::string offset = std::to_string(100 + count % 16).substr(1);
        EXPECT_EQ(label_at(read(made), user_label_key), "KJ115500000" + std::to_string(count / 16) + "+" + offset)
            << frame;
    }
}

TEST(AafChains, OtherPulldownsGoByTheirShares) {
    const auto key_of = [](int kind, Rate rate, int frame) {
        Made made;
        made.mobs.push_back(composition(100, "Reel", {slot(1, rate, sequence({clip(1, frame, 10)}))}));
        made.mobs.push_back(master(1, "A", {slot(1, rate, pulldown(1000, false, clip(4, 0, 960), kind))}));
        made.mobs.push_back(
            film(4, "B001", {slot(1, {24}, clip(0, 0, 960)), slot(2, {24}, edge_code("KJ115500", 0, 960), 1)}));
        return label_at(read(made), user_label_key);
    };
    EXPECT_EQ(key_of(2, ntsc, 7), "KJ1155000000+07");
    EXPECT_EQ(key_of(3, {25}, 7), "KJ1155000000+07");
    EXPECT_EQ(key_of(6, {60}, 7), "KJ1155000000+03");
    EXPECT_EQ(key_of(7, {48}, 7), "KJ1155000000+03");
    EXPECT_EQ(key_of(4, ntsc, 7), "-") << "a video tap tells no frames";
}

TEST(AafChains, RatesThatDifferAreScaledAndNearOnesAreNot) {
    // 23976/1000 counts frame for frame with 24/1.
    Made made = reel({slot(1, {24}, sequence({clip(1, 240, 24)}))}, {23976, 1000});
    EXPECT_EQ(label_at(read(made), user_label_timecode), "01:00:10:00");
    // 29.97 over 23.976: 300 frames here are 240 there.
    made = reel({slot(1, ntsc, sequence({clip(1, 300, 30)}))}, film_on_tape);
    EXPECT_EQ(label_at(read(made), user_label_timecode), "01:00:10:00");
    EXPECT_EQ(drawn(read(made)), "A 0-30 @300");
}

TEST(AafChains, ANestThatCountsNearlyAsTheEditScalesByItsOwnRate) {
    Made made = reel({slot(1, {24}, sequence({clip(50, 0, 24)}))}, {25});
    made.mobs.push_back(composition(50, "Nest", {slot(1, film_on_tape, clip(1, 10000, 48))}, false));
    const auto result = read(made);
    EXPECT_EQ(std::llround(material(result)[0].source_time * 25 - 0.5), 10427) << "10000 * 25 / 23.976, not / 24";
    EXPECT_EQ(label_at(result, user_label_timecode), "01:04:33:02");
}

TEST(AafChains, AnOriginMovesTheZeroOfItsSlot) {
    Made made = track(sequence({clip(1, 10, 24)}));
    made.mobs[1] = master(1, "A", {slot(1, {24}, clip(1001, 0, 10000), {}, 100)});
    EXPECT_EQ(label_at(read(made), user_label_timecode), "01:00:04:14");
    made.mobs[3] =
        tape(2001, "TA", {slot(1, {24}, clip(0, 0, 10000), {}, 24), slot(2, {24}, timecode(86400, 24, 10000))});
    EXPECT_EQ(label_at(read(made), user_label_timecode), "01:00:04:14") << "timecode counts from its own slot's zero";
}

TEST(AafChains, ThatLoopEndWithADoubt) {
    Made made = track(sequence({clip(1, 10, 24)}));
    made.mobs[2] = file_source(1001, "a.mxf", {slot(1, {24}, clip(1, 0, 10000))});
    const auto result = read(made);
    EXPECT_EQ(drawn(result), "A 0-24 @10");
    EXPECT_TRUE(warns_of(result, "slot 1, component 1: its chain of mobs loops at master \"A\""));
}

TEST(AafChains, ThatAreTooLongEndWithADoubt) {
    Made made = track(sequence({clip(1, 10, 24)}));
    for (int i = 0; i < 20; ++i)
        made.mobs.push_back(file_source(300 + i, "f", {slot(1, {24}, clip(301 + i, 0, 100))}));
    made.mobs[1] = master(1, "A", {slot(1, {24}, clip(300, 0, 10000))});
    EXPECT_TRUE(warns_of(read(made), "its chain of mobs is too long"));
}

TEST(AafChains, AMobThatIsMissingIsToldOf) {
    Made made = track(sequence({clip(77, 10, 24), clip(1, 0, 24)}));
    auto result = read(made);
    EXPECT_TRUE(warns_of(result, "component 1: its chain leads to a mob that isn't in the file, 0600000000"));
    EXPECT_EQ(drawn(result), "? 0-24 @0 | A 24-48 @0");
    made = track(sequence({clip(1, 10, 24)}));
    made.mobs.erase(made.mobs.begin() + 3);
    result = read(made);
    EXPECT_EQ(drawn(result), "A 0-24 @10") << "the tape is lost, the clip is not";
    EXPECT_TRUE(warns_of(result, "isn't in the file"));
}

TEST(AafChains, ASlotThatIsMissingIsToldOf) {
    EXPECT_TRUE(warns_of(read(track(clip(1, 0, 10, 9))), "a slot of master \"A\" that isn't there or has no rate"));
}

TEST(AafChains, PlacesOutsideOfTheMaterialAreToldOf) {
    EXPECT_TRUE(warns_of(read(track(clip(1, 9990, 24))), "runs past the end of its material"));
    const auto before = read(track(clip(1, -10, 24)));
    EXPECT_TRUE(warns_of(before, "begins ahead of its material"));
    EXPECT_EQ(label_at(before, user_label_timecode), "00:59:59:14");
}

TEST(AafChains, AClipOfNothingIsBlack) {
    const auto result = read(track(sequence({clip(0, 0, 10), clip(1, 0, 10)})));
    EXPECT_EQ(drawn(result), "b 0-10 | A 10-20 @0");
    EXPECT_TRUE(warns_of(result, "component 1: it refers to nothing"));
}

TEST(AafChains, WhereKeyNumbersJumpWithinAReelTheEventIsParted) {
    Made made = telecine(sequence({clip(1, 90, 24)}));
    made.mobs[4] = film(
        4, "A012",
        {slot(1, {24}, clip(0, 0, 8000)),
         slot(2, {24}, sequence({edge_code("KJ291010", 0, 100), edge_code("KJ291010", 5000, 7900)}, {}, edgecode_data),
              1)});
    const auto result = read(made);
    EXPECT_EQ(drawn(result), "A 0-10 @90 | A 10-24 @100");
    EXPECT_EQ(label_at(result, user_label_key, 0, 9), "KJ2910100006+03");
    EXPECT_EQ(label_at(result, user_label_key, 1), "KJ2910100312+08");
    EXPECT_TRUE(warns_of(result, "it is parted after 10 frames"));
}

TEST(AafChains, FilmThatChangesUnderATransitionIsToldOf) {
    const auto result_of = [](Objects parts) {
        Made made = telecine(sequence(std::move(parts)));
        made.mobs[1] = master(1, "A", {slot(1, {24}, sequence({clip(2, 0, 100), clip(2, 500, 100)}))});
        return read(made);
    };
    const char *tail = "component 1: at its tail it changes within what the transition shows of it",
               *head = "component 3: at its head it changes within what the transition shows of it";
    EXPECT_TRUE(warns_of(result_of({clip(1, 83, 20), transition(8, 3), clip(1, 5, 20)}), tail));
    EXPECT_FALSE(warns_of(result_of({clip(1, 80, 20), transition(8, 3), clip(1, 5, 20)}), "it changes"));
    EXPECT_TRUE(warns_of(result_of({clip(1, 5, 20), transition(10, 6), clip(1, 97, 20)}), head));
    EXPECT_FALSE(warns_of(result_of({clip(1, 5, 20), transition(10, 6), clip(1, 100, 20)}), "it changes"));
    EXPECT_FALSE(warns_of(result_of({clip(1, 70, 50), transition(8, 3), clip(1, 5, 20)}), "it changes"))
        << "the change is a cut of its own";
}

TEST(AafChains, WhereTimecodeJumpsTheEventIsPartedToo) {
    Made made = track(sequence({clip(1, 90, 24)}));
    made.mobs[3] =
        tape(2001, "TA",
             {slot(1, {24}, clip(0, 0, 10000)),
              slot(2, {24}, sequence({timecode(0, 24, 100), timecode(86400, 24, 9900)}, {}, timecode_data), 1)});
    const auto result = read(made);
    EXPECT_EQ(drawn(result), "A 0-10 @90 | A 10-24 @100");
    EXPECT_EQ(label_at(result, user_label_timecode, 1), "01:00:00:00");
}

TEST(AafChains, FilmThatBeginsBehindTheMaterialIsNumberedFromTheClip) {
    Made made = telecine(sequence({clip(1, 90, 24)}));
    made.mobs[4] = film(4, "A012",
                        {slot(1, {24}, clip(0, 0, 8000)),
                         slot(2, {24}, sequence({filler(80), edge_code("KJ291010", 2, 7900)}, {}, edgecode_data), 1)});
    EXPECT_EQ(label_at(read(made), user_label_key), "KJ2910100000+12");
}

TEST(AafChains, NumbersThatGoOnPartNothing) {
    const auto drawn_with = [](Object tape_timecode, Object key, Object more, Object stretches) {
        Made made = telecine(sequence({clip(1, 90, 24)}));
        made.mobs[1] = master(1, "A", {slot(1, {24}, std::move(stretches))});
        made.mobs[3] = tape(3, "TK01",
                            {slot(1, ntsc, pulldown(10000, false, clip(4, 0, 8000))),
                             slot(2, ntsc, std::move(tape_timecode), 1), slot(3, ntsc, more, 2)});
        made.mobs[4] =
            film(4, "A012",
                 {slot(1, {24}, clip(0, 0, 8000)), slot(2, {24}, std::move(key), 1),
                  slot(4, {24}, sequence({edge_code("A", 0, 95), edge_code("A", 7, 7000)}, {}, edgecode_data), 3)});
        return drawn(read(made));
    };
    const auto two = [](Object first, Object second, const Auid& data) {
        return sequence({std::move(first), std::move(second)}, {}, data);
    };
    const Object code = timecode(108000, 30, 10000), key = edge_code("KJ291010", 0, 8000);
    const Object jumps = two(timecode(0, 30, 120), timecode(900, 30, 9000), timecode_data), all = clip(2, 0, 1000);
    EXPECT_EQ(drawn_with(code, key, jumps, all), "A 0-24 @90") << "nor do tracks that aren't read";
    const Object goes_on = two(timecode(108000, 30, 120), timecode(108120, 30, 9880), timecode_data);
    EXPECT_EQ(drawn_with(goes_on, key, code, all), "A 0-24 @90");
    EXPECT_EQ(drawn_with(two(timecode(108000, 30, 120), timecode(108121, 30, 9880), timecode_data), key, code, all),
              "A 0-6 @90 | A 6-24 @96");
    EXPECT_EQ(
        drawn_with(code, two(edge_code("KJ291010", 0, 96), edge_code("KJ291010", 96, 7900), edgecode_data), code, all),
        "A 0-24 @90");
    EXPECT_EQ(
        drawn_with(code, two(edge_code("KJ291010", 0, 96), edge_code("KJ291011", 96, 7900), edgecode_data), code, all),
        "A 0-6 @90 | A 6-24 @96")
        << "another prefix";
    EXPECT_EQ(drawn_with(code, key, code, two(clip(2, 0, 100), clip(2, 100, 900), picture)), "A 0-24 @90");
    EXPECT_EQ(drawn_with(code, key, code, two(clip(2, 0, 100), clip(2, 101, 900), picture)),
              "A 0-10 @90 | A 10-24 @100");
}

TEST(AafChains, TimecodeThatCountsFasterThanItsTrackGoesOnByItsOwnCount) {
    const auto drawn_with = [](std::int64_t second) {
        Made made = track(clip(1, 90, 24));
        made.mobs[3] =
            tape(2001, "TA",
                 {slot(1, {24}, clip(0, 0, 10000)),
                  slot(2, {24}, sequence({timecode(0, 60, 100), timecode(second, 60, 900)}, {}, timecode_data), 1)});
        return drawn(read(made));
    };
    EXPECT_EQ(drawn_with(100), "A 0-10 @90 | A 10-24 @100") << "100 frames of 24 are 250 of 60";
}

struct Film {
    int perforations, format;
    const char* key;
};

TEST(AafChains, EachGaugeCountsItsFrames) {
    const Film films[] = {
        {4, 1, "KJ2910100001+04"}, {3, 1, "KJ2910100000+20"}, {2, 1, "KJ2910100000+20"}, {8, 1, "KJ2910100002+04"},
        {1, 2, "KJ2910100001+00"}, {0, 1, "KJ2910100001+04"}, {0, 2, "KJ2910100001+00"}, {0, 3, "-"}};
    for (const Film& each : films) {
        Made made = telecine(sequence({clip(1, 20, 24)}));
        made.mobs[4] =
            film(4, "A012", {slot(1, {24}, clip(0, 0, 8000)), slot(2, {24}, edge_code("KJ291010", 0, 8000), 1)},
                 each.perforations, each.format);
        EXPECT_EQ(label_at(read(made), user_label_key).substr(0, 15), each.key)
            << each.perforations << " " << each.format;
    }
}

TEST(AafChains, TracksOfEdgeNumbersWithoutNumberAreToldByTheirForm) {
    Made made = telecine(sequence({clip(1, 20, 24)}));
    made.mobs[4] = film(4, "A012",
                        {slot(1, {24}, clip(0, 0, 8000)), slot(2, {24}, edge_code("AA", 0, 8000, 2)),
                         slot(3, {24}, edge_code("KJ291010", 0, 8000, 1))});
    const auto result = read(made);
    EXPECT_EQ(label_at(result, user_label_key), "KJ2910100001+04");
    EXPECT_EQ(label_at(result, user_label_ink), "AA__0001+04");
}

TEST(AafChains, FrameNumbersOfAMasterAreNoKeyNumbers) {
    Made made = track(clip(1, 0, 10));
    made.mobs[1] =
        master(1, "A", {slot(1, {24}, clip(1001, 0, 10000)), slot(2, {24}, edge_code("", 101, 10000, 0), 5)});
    EXPECT_EQ(label_at(read(made), user_label_key), "-");
    made.mobs[1] =
        master(1, "A", {slot(1, {24}, clip(1001, 0, 10000)), slot(2, {24}, edge_code("KJ291010", 32, 10000, 1), 1)});
    EXPECT_EQ(label_at(read(made), user_label_key), "KJ2910100002+00") << "real ones count wherever they stand";
}

TEST(AafChains, KeyNumbersOfTheBinCountWhereTheChainHasNoFilm) {
    Made made = track(clip(1, 20, 10));
    made.mobs[1] = master(1, "A", {slot(1, {24}, clip(1001, 0, 10000))},
                          {{"KN Start", "KJ 29 1010 0003+04"}, {"Ink Number", "AB120001+00"}});
    const auto result = read(made);
    EXPECT_EQ(label_at(result, user_label_key), "KJ2910100004+08");
    EXPECT_TRUE(warns_of(result, "nothing tells the film of its key number: it counts as 35mm-4p"));
}

TEST(AafChains, ANumberOfASubClipCountsFromItsOwnStartAndThatOfTheMasterFirst) {
    const Comments key = {{"KN Start", "KJ 29 1010 0003+04"}};
    const auto read_with = [](Object segment, const Comments& of_sub, const Comments& of_master) {
        Made made = track(sequence({clip(50, 5, 10)}));
        made.mobs[1] = master(1, "A", {slot(1, {24}, clip(1001, 0, 10000))}, of_master);
        made.mobs.push_back(with_comments(sub_clip(50, "A.sub", {slot(1, {24}, std::move(segment))}), of_sub));
        return read(made);
    };
    EXPECT_EQ(label_at(read_with(sequence({clip(1, 20, 100)}), key, {}), user_label_key), "KJ2910100003+09");
    EXPECT_EQ(label_at(read_with(sequence({filler(3), clip(1, 20, 100)}), key, {}), user_label_key, 0),
              "KJ2910100003+09")
        << "what is ahead of the clip counts";
    EXPECT_EQ(
        label_at(read_with(sequence({clip(1, 20, 100)}), key, {{"KN Start", "KJ 29 1010 0001+00"}}), user_label_key),
        "KJ2910100002+09")
        << "of the master 25 frames in";
    const Comments low = {{"KN Start", "KJ 29 1010 0000+04"}};
    const auto ahead = read_with(sequence({clip(1, 20, 100)}), low, {});
    EXPECT_EQ(label_at(ahead, user_label_key), "-");
    EXPECT_TRUE(warns_of(ahead, "its key number begins behind its material, and is left out"));
    const auto fast = read_with(effect(speed_control, 50, {clip(1, 20, 100)}, {constant(speed_ratio, 1, 2)}), key, {});
    EXPECT_TRUE(
        warns_of(fast, "nothing tells where its sub-clip begins: the key number of that counts from the first"));
}

TEST(AafChains, HowFarApartNumbersOf65mmAreIsDoubtfulAndItsPerforationsAreNot) {
    Made made = telecine(sequence({clip(1, 20, 24)}));
    const auto doubts_with = [&](int perforations) {
        made.mobs[4] =
            film(4, "A012", {slot(1, {24}, clip(0, 0, 8000)), slot(2, {24}, edge_code("KJ291010", 0, 8000), 1)},
                 perforations, 4);
        return read(made);
    };
    EXPECT_TRUE(
        warns_of(doubts_with(5), "nothing tells how far apart the numbers of its film are: it counts as 65mm-5p120"));
    EXPECT_FALSE(warns_of(doubts_with(5), "perforations of its film"));
    EXPECT_TRUE(warns_of(doubts_with(0), "nothing tells the perforations of its film: it counts as 65mm-5p120"));
}

TEST(AafChains, TimecodeOfTrackOneIsTheReels) {
    Made made = track(clip(1, 20, 10));
    made.mobs[3] = tape(2001, "TA",
                        {slot(1, {24}, clip(0, 0, 10000)), slot(5, {24}, timecode(48, 24, 10000), 12),
                         slot(6, {24}, timecode(86400, 24, 10000), 1)});
    EXPECT_EQ(label_at(read(made), user_label_timecode), "01:00:00:20");
}

TEST(AafChains, TimecodeOfAnotherCountingGoesByItsShare) {
    Made made = track(clip(1, 24, 48));
    made.mobs[3] =
        tape(2001, "TA", {slot(1, {24}, clip(0, 0, 10000)), slot(2, {24}, timecode(3600 * 60, 60, 10000), 1)});
    EXPECT_EQ(label_at(read(made), user_label_timecode), "01:00:01:00");
    EXPECT_EQ(label_at(read(made), user_label_timecode, 0, 12), "01:00:01:30");
    made.mobs[3] = tape(2001, "TA", {slot(1, {24}, clip(0, 0, 10000)), slot(2, {24}, timecode(0, 100, 10000), 1)});
    EXPECT_TRUE(warns_of(read(made), "its timecode counts 100 frames a second"));
}

TEST(AafChains, TimecodeBehindAPulldownCountsItsVideo) {
    Made made = track(clip(1, 40, 48));
    made.mobs[3] = tape(
        2001, "TA",
        {slot(1, {24}, clip(0, 0, 10000)),
         slot(2, {24}, pulldown(10000, true, timecode(900, 30, 12500, true)).weak(pid::data_definition, timecode_data),
              1)});
    const auto result = read(made);
    EXPECT_EQ(label_at(result, user_label_timecode), "00:00:31;20");
    EXPECT_EQ(label_at(result, user_label_timecode, 0, 24), "00:00:32;20");
}

TEST(AafChains, DropTimecodeAt2997AndATapeOfTwelveHours) {
    Made made = reel({slot(1, ntsc, clip(1, 1800, 48))}, ntsc);
    made.mobs[3] =
        tape(2001, "TA", {slot(1, ntsc, clip(0, 0, 1294704)), slot(2, ntsc, timecode(0, 30, 1294704, true))});
    EXPECT_EQ(label_at(read(made), user_label_timecode), "00:01:00;02");
    made.mobs[1] = master(1, "A", {slot(1, ntsc, clip(1001, 1078920, 10000))});
    made.mobs[0] = composition(100, "Reel", {slot(1, ntsc, clip(1, 0, 48))});
    EXPECT_EQ(label_at(read(made), user_label_timecode), "10:00:00;00") << "the position is all";
}

TEST(AafChains, ColumnsOfASubClipCountBeforeThoseOfItsMaster) {
    Made made = track(clip(50, 0, 10));
    made.mobs[1] = master(1, "A", {slot(1, {24}, clip(1001, 0, 10000))}, {{"Scene", "1"}, {"Take", "2"}});
    Object sub = sub_clip(50, "A.sub", {slot(1, {24}, clip(1, 0, 100))});
    Objects tags;
    tags.push_back(Object(auid("0d010101-0101-3f00-060e-2b3402060101"))
                       .text(pid::tag_name, "SCENE")
                       .indirect_text(pid::tag_value, "9"));
    made.mobs.push_back(sub.vector(pid::mob_comments, std::move(tags)));
    const EditPtr source = source_of(read(made));
    ASSERT_TRUE(source);
    EXPECT_EQ(field(source, "scene"), "9");
    EXPECT_EQ(field(source, "take"), "2");
}

TEST(AafChains, MaterialWithoutTapeHasItsFilesTimecodeAndTheBinsReel) {
    Made made = track(clip(1, 20, 10));
    made.mobs[1] = master(1, "A", {slot(1, {24}, clip(1001, 0, 10000))}, {{"Tape", "B7"}});
    made.mobs[2] =
        file_source(1001, "a.mxf", {slot(1, {24}, clip(0, 0, 10000)), slot(2, {24}, timecode(172800, 24, 10000))});
    const auto result = read(made);
    EXPECT_EQ(reel(source_of(result), 1, 2), "B7");
    EXPECT_EQ(label_at(result, user_label_timecode), "02:00:00:20");
}

// Whatever lies around the clip on the way to the tape shows the same frame of it.
TEST(AafChains, LeadThroughScopesEffectsAndChoices) {
    const Object below_it = clip(1001, 0, 10000);
    for (const Object& around :
         {scope(10000, {filler(10000), below_it}), effect(dissolve, 10000, {filler(10000), below_it}),
          choices(10000, {below_it, filler(10000)}), selector(10000, scope(10000, {below_it}))}) {
        Made made = track(clip(1, 20, 10));
        made.mobs[1] = master(1, "A", {slot(1, {24}, around)});
        EXPECT_EQ(label_at(read(made), user_label_timecode), "01:00:00:20");
    }
}

TEST(AafChains, TransitionsOfAFileShortenWhatStandsAhead) {
    Made made = track(clip(1, 105, 3));
    made.mobs[2] = file_source(
        1001, "A.mxf", {slot(1, {24}, sequence({clip(2001, 0, 100), transition(10, 5), clip(2001, 500, 100)}))});
    EXPECT_EQ(label_at(read(made), user_label_timecode), "01:00:21:11") << "the 15th frame behind 500";
}

TEST(AafChains, PerforationsMayStandInTheWordsOfTheGauge) {
    for (const auto& [gauge, key] : {std::pair("35mm, 3perf", "KJ2910100000+20"),
                                     {"35mm 3-perf", "KJ2910100000+20"},
                                     {"35mm", "KJ2910100001+04"},
                                     {"perf", "KJ2910100001+04"}}) {
        Made made = telecine(sequence({clip(1, 20, 24)}));
        made.mobs[4].child(pid::essence_description,
                           Object(Class::film_descriptor).number(pid::film_format, 1, 1).text(pid::film_gauge, gauge));
        EXPECT_EQ(label_at(read(made), user_label_key).substr(0, 15), key) << gauge;
    }
}

TEST(AafChains, AKeyNumberOfFilmThatNoListKnowsIsLeftOutAndToldOf) {
    Made made = telecine(sequence({clip(1, 20, 24)}));
    made.mobs[4].child(
        pid::essence_description,
        Object(Class::film_descriptor).number(pid::film_format, 1, 1).text(pid::film_gauge, "35mm, 7perf"));
    const auto result = read(made);
    EXPECT_EQ(label_at(result, user_label_key), "-");
    EXPECT_TRUE(warns_of(result, "its key number is of a film (35mm-7p) that has none here"));
}

} // namespace
