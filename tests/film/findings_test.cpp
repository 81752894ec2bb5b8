// Each kind of finding on a small edit.

#include "tests/film/findings_fixture.h"

#include <gmock/gmock.h>

using namespace film_test;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

const auto first_minute = row("VT1", "01:00:00:00", "01:01:00:00", "A001", "KJ1234560100+00");
const auto second_minute = row("VT1", "01:01:00:00", "01:02:00:00", "A002", "KJ9876540500+00");

struct FilmFindings : testing::Test, Checked {
    /// What the only finding says.
    std::string only(const Findings& findings) {
        EXPECT_EQ(findings.size(), 1U) << testing::PrintToString(drawn(findings));
        return findings.empty() ? "" : findings[0].what;
    }
};

TEST_F(FilmFindings, NothingIsSaidOfAnEventInsideItsRow) {
    play("vt1", 24, 48);
    EXPECT_THAT(drawn(run({first_minute, second_minute})), IsEmpty());
}

TEST_F(FilmFindings, TapeTenIsListedWithTheFilmOfTapeOne) {
    const auto one = row("1", "01:00:00:00", "01:01:00:00", "A001", "KJ1111110100+00");
    const auto ten = row("10", "01:00:00:00", "01:01:00:00", "A010", "KJ1010100100+00");
    play("10", 24, 48);
    const Findings found = run({one, ten});
    EXPECT_THAT(drawn(found), ElementsAre("wrong reel-prefix 0", "wrong log-overrun 0"));
    EXPECT_EQ(found[0].what,
              "reel \"10\" is listed with the film of show.rdb line 9, as the row's reel \"1\" begins it; the "
              "log has rows of its own for it");
    EXPECT_EQ(found[0].place.event, 1);
    EXPECT_EQ(found[0].place.timecode, "00:00:00:00");
}

TEST_F(FilmFindings, AReelWithoutRowsOfItsOwnIsADoubt) {
    play("vt12", 24, 48);
    EXPECT_THAT(drawn(run({first_minute})), ElementsAre("doubt reel-prefix 0"));
}

TEST_F(FilmFindings, FramesPastARowLieInTheNextOne) {
    play("vt1", 1440 - 48, 77);
    const Findings found = run({first_minute, second_minute});
    EXPECT_THAT(drawn(found), ElementsAre("wrong log-overrun 48"));
    EXPECT_EQ(found[0].what, "29 of 77 frames lie outside show.rdb line 9, in show.rdb line 10: their film is A002 "
                             "KJ9876540500+00, and they are listed as A001");
    EXPECT_EQ(found[0].place.timecode, "00:00:02:00");
}

TEST_F(FilmFindings, FramesPastARowMayLieInNoOther) {
    play("vt1", 1440 - 48, 60);
    EXPECT_THAT(only(run({first_minute})), HasSubstr("12 of 60 frames lie outside show.rdb line 9, in no other row"));
}

TEST_F(FilmFindings, RowsThatGoOnWithTheSameFilmAreAsGoodAsOne) {
    const auto same = row("VT1", "01:01:00:00", "01:02:00:00", "A001", "KJ1234560190+00");
    play("vt1", 1440 - 48, 77);
    EXPECT_THAT(drawn(run({first_minute, same})), IsEmpty());
}

TEST_F(FilmFindings, AShortEventInsideTheSlackIsListedWithTheRowBefore) {
    play("vt1", 1440 + 2, 20);
    EXPECT_THAT(drawn(run({first_minute, second_minute})), ElementsAre("wrong log-overrun 0"));
}

TEST_F(FilmFindings, TwoRowsThatHoldTheSameFramesAreAmbiguous) {
    const auto other = row("VT1", "01:00:30:00", "01:01:30:00", "A003", "KJ3333330100+00");
    play("vt1", 700, 48);
    const Findings found = run({first_minute, other});
    EXPECT_THAT(drawn(found), ElementsAre("doubt log-ambiguous 20"));
    EXPECT_THAT(found[0].what, HasSubstr("28 frames lie in show.rdb line 9 and in show.rdb line 10"));
}

TEST_F(FilmFindings, TheEditsOwnKeyNumberAndTheLogsDisagree) {
    builder.add_event(v1, event_of(builder.add_source(keyed("vt1", "KJ1234560100+01")), 24, 48));
    EXPECT_EQ(only(run({first_minute})),
              "the key number is KJ1234560101+09 in the edit and KJ1234560101+08 in show.rdb line 9");
}

TEST_F(FilmFindings, TheSameKeyNumberInBothIsNoConflict) {
    builder.add_event(v1, event_of(builder.add_source(keyed("vt1", "KJ1234560100+00")), 24, 48));
    EXPECT_THAT(drawn(run({first_minute})), IsEmpty());
}

TEST_F(FilmFindings, WithoutARowThereIsNoFilm) {
    play("vt9", 0, 48);
    EXPECT_THAT(drawn(run({first_minute})), ElementsAre("doubt no-log-row 0"));
}

TEST_F(FilmFindings, ARowOfAnotherCountingNamesWrongFilm) {
    auto at_25 = first_minute;
    const MadeTable table({{"FILMDB", "Rev 16"}, {"label_std", "25fps"}}, log_columns(), {at_25});
    const film::LogRows log(table, 9);
    play("vt1", 24 + 3600, 48);
    EXPECT_THAT(drawn(film::check_edit(builder.finish(), options, &log, {})), Contains("wrong rate 0"));
}

TEST_F(FilmFindings, FramesOutsideTheMediaAreCounted) {
    SourceDescription source = keyed("vt1", "KJ1234560100+00");
    source.length = frames(100);
    builder.add_event(v1, event_of(builder.add_source(source), 80, 48));
    EXPECT_EQ(only(run()), "28 of 48 frames lie outside the media: it holds 100 frames, and frames 80 to 127 are used, "
                           "counted from 0");
}

TEST_F(FilmFindings, FramesBeforeTheMediaAreOutsideToo) {
    SourceDescription source = keyed("vt1", "KJ1234560100+00");
    source.length = frames(100);
    builder.add_event(v1, event_of(builder.add_source(source), -5, 10, -1));
    EXPECT_THAT(only(run()), HasSubstr("5 of 10 frames lie outside the media"));
}

TEST_F(FilmFindings, AFreezeBeforeOrBehindTheMediaIsOutsideIt) {
    SourceDescription source = keyed("vt1", "KJ1234560100+00");
    source.length = frames(100);
    const SourceId id = builder.add_source(source);
    builder.add_event(v1, event_of(id, -1, 10, 0));
    builder.add_event(v1, event_of(id, 99, 10, 0));
    builder.add_event(v1, event_of(id, 100, 10, 0));
    std::vector<std::int64_t> places;
    for (const Finding& finding : run())
        if (finding.code == Code::outside_media) places.push_back(finding.place.frame);
    EXPECT_THAT(places, ElementsAre(0, 20));
}

TEST_F(FilmFindings, AClipAboveTheLowestTrackIsInNoList) {
    const int v2 = builder.add_channel(1);
    builder.add_event(v1, event_of(builder.add_source(keyed("a", "KJ1111110100+00")), 0, 48));
    builder.add_gap(v2, frames(10));
    builder.add_event(v2, event_of(builder.add_source(keyed("b", "KJ2222220100+00")), 0, 20));
    const Findings found = run();
    EXPECT_THAT(drawn(found), ElementsAre("wrong not-listed 10"));
    EXPECT_EQ(found[0].place.channel, "V2");
    EXPECT_EQ(found[0].place.event, 0);
    EXPECT_EQ(found[0].what, "20 frames on V2, roll A001, from KJ2222220100+00, are in no list: no optical with a "
                             "number draws on that track");
}

TEST_F(FilmFindings, FilmWithoutANumberOrARoll) {
    SourceDescription bare = tape("vt1");
    bare.reels.erase({2, 1});
    builder.add_event(v1, event_of(builder.add_source(bare), 0, 48));
    options.ink = film::InkNeed::all;
    const Findings found = run();
    EXPECT_THAT(drawn(found), ElementsAre("doubt no-key 0", "doubt no-roll 0", "doubt no-ink 0"));
    EXPECT_EQ(found[0].what, "48 frames of tape vt1 from 01:00:00:00 have no key number");
}

TEST_F(FilmFindings, InkNumbersAreMissedWhereOthersOfTheRollHaveThem) {
    SourceDescription inked = keyed("vt1", "KJ1234560100+00"), bare = keyed("vt2", "KJ2222220100+00");
    inked.ink = LabelDescription{label_t_to_ink_label_t(label_key_35mm_4p), "AA121000+00", {}, {}};
    SourceDescription other = keyed("vt3", "KJ3333330100+00");
    other.reels[{2, 1}] = "A002";
    const auto add = [this](int chan, const SourceDescription& source) {
        builder.add_event(chan, event_of(builder.add_source(source), 0, 48));
    };
    for (const SourceDescription* source : {&inked, &bare, &other})
        add(v1, *source);
    const EditPtr edit = builder.finish();
    const auto check = [&](film::InkNeed need) {
        options.ink = need;
        return drawn(film::check_edit(edit, options, nullptr, {}));
    };
    EXPECT_THAT(check(film::InkNeed::none), IsEmpty());
    EXPECT_THAT(check(film::InkNeed::where_used), ElementsAre("doubt no-ink 48")) << "the roll of the first event";
    EXPECT_THAT(check(film::InkNeed::all), ElementsAre("doubt no-ink 48", "doubt no-ink 96"));
}

TEST_F(FilmFindings, TellTheRollTapeAndTimecodeOfTheFilm) {
    play("vt1", 1440 - 48, 77);
    const Findings found = run({first_minute, second_minute});
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].place.roll, "A002") << "of the film there, not of the row that is listed";
    EXPECT_EQ(found[0].place.tape, "vt1");
    EXPECT_EQ(found[0].place.source_timecode, "01:01:00:00");
}

TEST_F(FilmFindings, ALogRowWithoutARollListsItsTape) {
    play("vt1", 0, 48);
    EXPECT_THAT(only(run({row("VT1", "01:00:00:00", "01:01:00:00", "", "KJ1234560100+00")})),
                HasSubstr("no camera roll, and the tape is listed in its place"));
}

TEST_F(FilmFindings, LostAndRenderedMediaHasNoFilm) {
    SourceDescription lost = tape("vt1");
    lost.opens = false;
    builder.add_event(v1, event_of(builder.add_source(lost), 0, 10));
    SourceDescription rendered = tape("vt1");
    rendered.rendered = true;
    builder.add_event(v1, event_of(builder.add_source(rendered), 0, 10));
    EXPECT_THAT(drawn(run()), ElementsAre("doubt no-film 0", "doubt no-film 10"));
}

TEST_F(FilmFindings, AnOpticalBeforeTheFirstEventCantBeDescribed) {
    const int fx = builder.add_channel(1, 8);
    builder.add_gap(v1, frames(20));
    builder.add_event(v1, event_of(builder.add_source(keyed("a", "KJ1111110100+00")), 0, 48));
    embedded::EffectDescription blur;
    blur.name = "Blur";
    blur.for_the_lab = true;
    blur.tracks = {v1};
    builder.add_gap(fx, frames(10), {blur});
    const Findings found = run();
    EXPECT_THAT(drawn(found), ElementsAre("doubt optical-error 0"));
    EXPECT_EQ(found[0].place.name, "Blur");
}

TEST_F(FilmFindings, FilmUsedTwiceNamesBothPlaces) {
    const SourceId source = builder.add_source(keyed("a", "KJ1111110100+00"));
    builder.add_event(v1, event_of(source, 0, 48));
    builder.add_event(v1, event_of(builder.add_source(keyed("b", "KJ2222220100+00")), 0, 20));
    builder.add_event(v1, event_of(source, 40, 20));
    const Findings found = run();
    EXPECT_THAT(drawn(found), ElementsAre("doubt used-twice 68"));
    EXPECT_EQ(found[0].what,
              "8 frames of its film, which it uses from KJ1111110102+08 on, are used in event 1 of V1 at "
              "00:00:00:00 too");
}

TEST_F(FilmFindings, PiecesOfOneTakeNeedASpliceBetweenThem) {
    const SourceId source = builder.add_source(keyed("a", "KJ1111110100+00"));
    builder.add_event(v1, event_of(source, 48, 20));
    builder.add_event(v1, event_of(source, 0, 48));
    const Findings found = run();
    EXPECT_THAT(drawn(found), ElementsAre("doubt too-close 20"));
    EXPECT_EQ(found[0].what,
              "on the negative 0 frames lie between it and event 1 of V1 at 00:00:00:00, and a splice needs 1");
}

TEST_F(FilmFindings, AFrameBetweenTwoPiecesIsEnoughUnlessMoreAreWanted) {
    const SourceId source = builder.add_source(keyed("a", "KJ1111110100+00"));
    builder.add_event(v1, event_of(source, 49, 20));
    builder.add_event(v1, event_of(source, 0, 48));
    EXPECT_THAT(drawn(run()), IsEmpty());
    Checked stricter;
    const SourceId again = stricter.builder.add_source(keyed("a", "KJ1111110100+00"));
    stricter.builder.add_event(stricter.v1, event_of(again, 49, 20));
    stricter.builder.add_event(stricter.v1, event_of(again, 0, 48));
    stricter.options.splice_frames = 2;
    EXPECT_THAT(drawn(stricter.run()), ElementsAre("doubt too-close 20"));
}

TEST_F(FilmFindings, AShotThatGoesOnOverACutNeedsNoSplice) {
    const SourceId source = builder.add_source(keyed("a", "KJ1111110100+00"));
    builder.add_event(v1, event_of(source, 0, 48));
    builder.add_event(v1, event_of(source, 48, 20));
    EXPECT_THAT(drawn(run()), IsEmpty());
}

TEST_F(FilmFindings, AnUnevenSpeedIsInexact) {
    builder.add_event(v1, event_of(builder.add_source(keyed("a", "KJ1111110100+00")), 0, 48, Fraction(3, 2)));
    EXPECT_EQ(only(run()), "its film may be off by 1 frame, as it runs at 3/2 times play-speed");
}

TEST_F(FilmFindings, AReverseShotOfAnEditListTellsHowItWasTaken) {
    options.edl = true;
    play("vt1", 100, 48, -1);
    const Findings found = run({first_minute});
    EXPECT_THAT(drawn(found), ElementsAre("note reverse 0"));
    EXPECT_THAT(found[0].what, HasSubstr("taken for the lowest frame: frames 01:00:04:04 to 01:00:06:03"));
}

TEST_F(FilmFindings, AReverseShotThatOnlyTheOtherWayLiesInTheLogIsADoubt) {
    options.edl = true;
    play("vt1", 1430, 20, -1);
    EXPECT_THAT(drawn(run({first_minute})), Contains("doubt reverse 0"));
}

TEST_F(FilmFindings, AReverseShotIsADoubtUpToTheLastFrameOfTheRow) {
    options.edl = true;
    play("vt1", 1439, 20, -1);
    play("vt1", 1440, 20, -1);
    const std::vector<std::string> found = drawn(run({first_minute}));
    EXPECT_THAT(found, Contains("doubt reverse 0"));
    EXPECT_THAT(found, Contains("note reverse 20"));
}

TEST_F(FilmFindings, BackwardFramesOutsideBothEndsOfTheMediaAreCounted) {
    SourceDescription source = keyed("vt1", "KJ1234560100+00");
    source.length = frames(100);
    const SourceId id = builder.add_source(source);
    builder.add_event(v1, event_of(id, -5, 110, -1));
    builder.add_event(v1, event_of(id, 95, 10, -1));
    std::vector<std::string> outside;
    for (const Finding& finding : run())
        if (finding.code == Code::outside_media) outside.push_back(finding.what.substr(0, finding.what.find(':')));
    EXPECT_THAT(outside, ElementsAre("10 of 110 frames lie outside the media", "5 of 10 frames lie outside the media"));
}

TEST_F(FilmFindings, KeyNumbersRunPast9999) {
    builder.add_event(v1, event_of(builder.add_source(keyed("a", "KJ1111119999+00")), 0, 48));
    EXPECT_EQ(only(run()), "its key numbers run from KJ1111119999+00 to KJ11111110001+15, past 9999");
}

TEST_F(FilmFindings, RowsOfAnotherKindOfFilmAreCountedAsTheFirst) {
    const Params params = {{"FILMDB", "Rev 16"}, {"label_std", "24fps"}, {"film label_std", "35mm-4p"}};
    Columns columns = log_columns();
    columns.push_back("film label_std");
    auto first = first_minute, second = second_minute;
    first.push_back("");
    second.push_back("16mm-1p");
    const MadeTable table(params, columns, {first, second});
    const film::LogRows log(table, 9);
    play("vt1", 1500, 48);
    EXPECT_THAT(drawn(film::check_edit(builder.finish(), options, &log, {})), ElementsAre("wrong film-kind 0"));
}

TEST_F(FilmFindings, RollsThatAreCutToTheSameTextAreTold) {
    SourceDescription a = keyed("a", "KJ1111110100+00"), b = keyed("b", "KJ2222220100+00");
    a.reels[{2, 1}] = "NIGHTROLL1";
    b.reels[{2, 1}] = "NIGHTROLL2";
    builder.add_event(v1, event_of(builder.add_source(a), 0, 10));
    builder.add_event(v1, event_of(builder.add_source(b), 0, 10));
    EXPECT_EQ(only(run()), "roll \"NIGHTROLL2\" is printed like \"NIGHTROLL1\", as lists keep 8 bytes of it");
}

TEST_F(FilmFindings, TextsThatCantBePrintedAreTold) {
    SourceDescription a = keyed("a", "KJ1111110100+00");
    a.name = "b\xFFy";
    a.scene = "1\x01";
    builder.add_event(v1, event_of(builder.add_source(a), 0, 10));
    const Findings found = run();
    EXPECT_THAT(drawn(found), ElementsAre("note bad-text -1", "note bad-text 0"));
    EXPECT_EQ(found[0].what, "scene \"1\xE2\x90\x81\": control characters are shown by signs in their place");
    EXPECT_EQ(found[1].what, "\"b?y\" holds bytes that aren't UTF-8");
}

TEST_F(FilmFindings, WhatAReaderLeftOutIsAmongThem) {
    const embedded::Warnings warnings = {{embedded::WarningKind::dropped, "a: left out"},
                                         {embedded::WarningKind::replaced, "b: black"},
                                         {embedded::WarningKind::rate, "c: rates"},
                                         {embedded::WarningKind::note, "d: known"}};
    const Findings found = film::check_edit(builder.finish(), options, nullptr, warnings);
    EXPECT_THAT(drawn(found), ElementsAre("doubt dropped -1", "doubt replaced -1", "doubt rate -1", "note reading -1"));
    EXPECT_EQ(found[0].what, "a: left out");
}

// V2: a dissolve of 3 and 5 frames into a clip of 5.
TEST_F(FilmFindings, AClipThatLiesInATransitionAsAWholeIsInNoListEither) {
    const int v2 = builder.add_channel(1);
    builder.add_event(v1, event_of(builder.add_source(keyed("a", "KJ1111110100+00")), 0, 48));
    builder.add_event(v2, event_of(builder.add_source(keyed("b", "KJ2222220100+00")), 0, 20));
    TransitionDescription dissolve;
    dissolve.in_offset = frames(3);
    dissolve.out_offset = frames(5);
    builder.add_transition(v2, dissolve);
    SourceDescription source = keyed("c", "KJ3333330100+00");
    source.length = frames(3);
    builder.add_event(v2, event_of(builder.add_source(source), 0, 5));
    const Findings found = run();
    EXPECT_THAT(drawn(found), ElementsAre("wrong not-listed 0", "wrong outside-media 25", "wrong not-listed 25"));
    EXPECT_THAT(found.at(1).what, HasSubstr("5 of 8 frames lie outside the media: it holds 3 frames, and frames -3 to "
                                            "4 are used"));
    EXPECT_THAT(found.at(2).what, HasSubstr("8 frames on V2"));
}

TEST_F(FilmFindings, ASpeedThatAFileHoldsAsADecimalNumberIsToldAsThat) {
    builder.add_event(v1, event_of(builder.add_source(keyed("a", "KJ1111110100+00")), 0, 48, Fraction::exactly(1.004)));
    EXPECT_EQ(only(run()), "its film may be off by 1 frame, as it runs at 1.004 times play-speed");
}

TEST_F(FilmFindings, AnEventOfLessThanAFrameIsTold) {
    EventDescription event = event_of(builder.add_source(keyed("b", "KJ1111110100+00")), 0, 1);
    builder.add_event(v1, event_of(builder.add_source(keyed("a", "KJ2222220100+00")), 0, 10));
    event.duration = Fraction(1, 48);
    builder.add_event(v1, event);
    EXPECT_EQ(only(run()), "it is shown for less than a frame of film, and the lists give it none");
}

} // namespace
