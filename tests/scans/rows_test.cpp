// Sequences of scanned pictures as rows of a log.

#include "formats/scans/scan_reader.h"
#include "formats/scans/scan_rhythm.h"
#include "formats/scans/scan_stretches.h"
#include "tests/support/scan_writer.h"
#include "tests/support/scratch_directory.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <filesystem>

using namespace formats;
using namespace scan_writer;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// The header of a frame that lies so many perforations behind count 0000, with so many from count to count.
Dpx at_perforation(int perforation, int in_count = 64) {
    Dpx header;
    header.count = digits(perforation / in_count, 4);
    header.offset = digits(perforation % in_count, 2);
    return header;
}

/// Roll A012 from KJ 29 1010 5867+14 at 01:00:00:00, 35mm with 4 perforations, 24 frames a second.
Dpx frame_of_roll(int frame) {
    Dpx header = at_perforation(5867 * 64 + 14 * 4 + 4 * frame);
    header.timecode = coded_time(1, 0, frame / 24, frame % 24);
    header.position = static_cast<std::uint32_t>(frame);
    return header;
}

class ScanRows : public testing::Test {
protected:
    ScanRows() { options_.letters = {{"0274", "KJ"}}; }

    void put(const std::string& name, const std::string& bytes) {
        std::filesystem::create_directories(std::filesystem::path(scratch_.file(name)).parent_path());
        put_bytes(scratch_.file(name), bytes);
    }
    void put_frame(int number, const Dpx& header) { put("A012/A012." + digits(number, 4) + ".dpx", bytes_of(header)); }
    void put_roll(int frames) {
        for (int i = 0; i < frames; ++i)
            put_frame(i + 1, frame_of_roll(i));
    }

    Log read() const { return read_scans({scratch_.path()}, options_); }
    std::vector<std::string> told(const Log& log) const {
        std::vector<std::string> lines;
        for (const std::string& line : log.warnings)
            lines.push_back(line.substr(scratch_.path().size() + 1));
        return lines;
    }
    /// "start end key", a row.
    static std::vector<std::string> rows(const Log& log) {
        std::vector<std::string> lines;
        for (const LogRow& row : log.rows)
            lines.push_back(row[LogField::start] + " " + row[LogField::end] + " " + row[LogField::key_start]);
        return lines;
    }

    ScratchDirectory scratch_;
    ScanOptions options_;
};

TEST_F(ScanRows, RollThatRunsOnIsOneRow) {
    put_roll(50);
    const Log log = read();
    EXPECT_EQ(log.error, "");
    EXPECT_THAT(log.warnings, IsEmpty());
    EXPECT_THAT(rows(log), ElementsAre("01:00:00:00 01:00:02:02 KJ2910105867+14"));
    const LogRow& row = log.rows.at(0);
    EXPECT_EQ(row[LogField::name], "A012");
    EXPECT_EQ(row[LogField::reel], "A012");
    EXPECT_EQ(row[LogField::cam_reel], "A012");
    EXPECT_EQ(row[LogField::notes], "A012.[0001-0050].dpx");
    EXPECT_EQ(row[LogField::duration], "00:00:02:02");
    EXPECT_EQ(row.film, label_key_35mm_4p);
    EXPECT_FALSE(row.pulldown);
}

TEST_F(ScanRows, BreaksAreWhereFilesKeysTimesOrPositionsJump) {
    put_roll(20);
    std::filesystem::remove(scratch_.file("A012/A012.0005.dpx"));
    std::filesystem::remove(scratch_.file("A012/A012.0006.dpx"));
    for (int i = 9; i < 20; ++i) {
        Dpx header = frame_of_roll(i + 7);
        header.timecode = frame_of_roll(i + (i < 12 ? 0 : 24)).timecode;
        header.position = static_cast<std::uint32_t>(i < 15 ? i : i + 100);
        put_frame(i + 1, header);
    }
    const Log log = read();
    // Frames 0 to 3, 6 to 8, 9 to 11, 12 to 14 and 15 to 19. Film: 6 is +14 and 6 on, which is 5868+04; 9 is 16 on,
    // 5868+14; 12 is 19 on, 5869+01; 15 is 22 on, 5869+04.
    EXPECT_THAT(rows(log),
                ElementsAre("01:00:00:00 01:00:00:04 KJ2910105867+14", "01:00:00:06 01:00:00:09 KJ2910105868+04",
                            "01:00:00:09 01:00:00:12 KJ2910105868+14", "01:00:01:12 01:00:01:15 KJ2910105869+01",
                            "01:00:01:15 01:00:01:20 KJ2910105869+04"));
    EXPECT_THAT(
        told(log),
        ElementsAre("A012/A012.0007.dpx: the 2 frames before it are missing; a row begins here",
                    "A012/A012.0010.dpx: its key number is KJ2910105868+14 behind KJ2910105868+06; a row begins here",
                    "A012/A012.0013.dpx: its timecode is 01:00:01:12 behind 01:00:00:11; a row begins here",
                    "A012/A012.0016.dpx: its frame position is 115 behind 14; a row begins here"));
    EXPECT_EQ(log.rows.at(1)[LogField::name], "A012-2");
    EXPECT_EQ(log.rows.at(4)[LogField::notes], "A012.[0016-0020].dpx");
}

TEST_F(ScanRows, FilmIsTakenFromItsSteps) {
    struct Case {
        int in_frame, in_count;
        const char* film;
        const char* key; ///< of a frame at count 100 and 60 perforations, or where that isn't one the counts before
    };
    // 3 perforations: the dot of 101 is 4 perforations on, on the second frame's first, so this frame is 100+20.1.
    // 65mm: perforation 60 of 80 is frame 12 of 5.
    for (const Case& film : {Case{4, 64, "35mm-4p", "KJ2910100100+15"}, Case{3, 64, "35mm-3p", "KJ2910100100+20.1"},
                             Case{2, 64, "35mm-2p", "KJ2910100100+30"}, Case{5, 80, "65mm-5p80", "KJ2910100100+12"}}) {
        for (int i = 0; i < 40; ++i)
            put_frame(i, at_perforation(100 * film.in_count + 60 + i * film.in_frame, film.in_count));
        const Log log = read();
        ASSERT_EQ(log.rows.size(), 1u) << film.film;
        EXPECT_STREQ(label_type_to_edlstr(log.rows[0].film), film.film);
        EXPECT_EQ(log.rows[0][LogField::key_start], film.key);
    }
}

TEST_F(ScanRows, SixteenMillimetresCountTwentyFrames) {
    for (int i = 0; i < 45; ++i)
        put_frame(i, at_perforation(2000 * 20 + 18 + i, 20));
    const Log log = read();
    ASSERT_EQ(log.rows.size(), 1u);
    EXPECT_STREQ(label_type_to_edlstr(log.rows[0].film), "16mm-1p");
    EXPECT_EQ(log.rows[0][LogField::key_start], "KJ2910102000+18");
}

TEST_F(ScanRows, StepsThatSeveralFilmsHaveNeedACount) {
    for (int i = 0; i < 3; ++i)
        put_frame(i, at_perforation(100 * 120 + 5 * i, 120));
    Log log = read();
    EXPECT_THAT(rows(log), ElementsAre("  "));
    EXPECT_EQ(told(log).at(0), "A012/A012.0000.dpx: key numbers step by 5 perforations, which doesn't tell the kind of "
                               "film; key numbers are left out; name it with --film");
    options_.film = static_cast<label_t>(36);
    log = read();
    EXPECT_THAT(rows(log), ElementsAre("  KJ2910100100+00"));
}

TEST_F(ScanRows, FormatOfAHeaderCountsWhereKeyNumbersDontSpeakAgainstIt) {
    Dpx header = frame_of_roll(0);
    header.format = "35mm,4perf";
    put_frame(1, header);
    EXPECT_THAT(rows(read()), ElementsAre("01:00:00:00 01:00:00:01 KJ2910105867+14"));
    for (int i = 0; i < 30; ++i) {
        header = at_perforation(100 * 64 + 3 * i);
        header.format = "35mm";
        put_frame(i, header);
    }
    EXPECT_THAT(rows(read()), ElementsAre("  KJ2910100100+00.1"));
}

TEST_F(ScanRows, OneFrameAloneNeedsItsFilmNamed) {
    put_frame(1, frame_of_roll(0));
    EXPECT_THAT(rows(read()), ElementsAre("01:00:00:00 01:00:00:01 "));
    options_.film = label_key_35mm_4p;
    EXPECT_THAT(rows(read()), ElementsAre("01:00:00:00 01:00:00:01 KJ2910105867+14"));
}

TEST_F(ScanRows, OffsetsInFramesAreTakenAsThatWhereTheFilmIsNamed) {
    for (int i = 0; i < 20; ++i)
        put_frame(i, at_perforation(5867 * 16 + 14 + i, 16));
    Log log = read();
    EXPECT_THAT(rows(log), ElementsAre("  "));
    options_.film = label_key_35mm_4p;
    log = read();
    EXPECT_THAT(rows(log), ElementsAre("  KJ2910105867+14"));
    EXPECT_EQ(told(log).at(0),
              "A012/A012.0000.dpx: offsets of key numbers count frames in place of perforations; taken as that");
}

TEST_F(ScanRows, KeysThatDontCountAsTheNamedFilmAreLeftOut) {
    put_roll(20);
    options_.film = static_cast<label_t>(12);
    const Log log = read();
    EXPECT_THAT(rows(log), ElementsAre("01:00:00:00 01:00:00:20 "));
    EXPECT_THAT(told(log), ElementsAre("A012/A012.0001.dpx: key numbers step by 4 perforations a frame and 64 a count, "
                                       "not by 3 and 64 as 35mm-3p; key numbers are left out"));
}

TEST_F(ScanRows, KeysThatStandStillOrRunBackAreLeftOut) {
    for (int i = 0; i < 5; ++i)
        put_frame(i, at_perforation(5867 * 64));
    EXPECT_THAT(rows(read()), ElementsAre("  "));
    options_.film = label_key_35mm_4p;
    EXPECT_THAT(rows(read()), ElementsAre("  "));
    for (int i = 0; i < 5; ++i)
        put_frame(i, at_perforation(5867 * 64 + 40 - 4 * i));
    EXPECT_THAT(rows(read()), ElementsAre("  "));
}

TEST_F(ScanRows, DigitsWithoutLettersLeaveKeysOutAndAreToldOnce) {
    put_roll(3);
    put("B001/B001.1.dpx", bytes_of(frame_of_roll(0)));
    put("B001/B001.2.dpx", bytes_of(frame_of_roll(1)));
    options_.letters = {{"0275", "KJ"}};
    const Log log = read();
    EXPECT_THAT(rows(log), ElementsAre("01:00:00:00 01:00:00:03 ", "01:00:00:00 01:00:00:02 "));
    EXPECT_THAT(told(log), ElementsAre("A012/A012.0001.dpx: maker and stock 0274 are digits; name their letters with "
                                       "--letters, as 0274=KJ"));
    options_.letters[""] = "EN";
    EXPECT_EQ(rows(read()).at(1), "01:00:00:00 01:00:00:02 EN2910105867+14");
}

TEST_F(ScanRows, LettersOfHeadersNeedNobody) {
    options_.letters.clear();
    for (int i = 0; i < 3; ++i) {
        Dpx header = frame_of_roll(i);
        header.maker = "K";
        header.stock = "U";
        put_frame(i, header);
    }
    EXPECT_THAT(rows(read()), ElementsAre("01:00:00:00 01:00:00:03 KU2910105867+14"));
}

TEST_F(ScanRows, HeadersWithoutMakerAndStockTakeTheLettersOfAllOthers) {
    for (int i = 0; i < 3; ++i) {
        Dpx header = frame_of_roll(i);
        header.maker = header.stock = "";
        put_frame(i, header);
    }
    EXPECT_THAT(told(read()), ElementsAre("A012/A012.0000.dpx: the header names neither maker nor stock; name their "
                                          "letters with --letters, as KJ"));
    options_.letters[""] = "KJ";
    EXPECT_THAT(rows(read()), ElementsAre("01:00:00:00 01:00:00:03 KJ2910105867+14"));
}

TEST_F(ScanRows, OddNeighboursDontMakeTheRhythm) {
    for (int i = 0; i < 30; ++i) {
        Dpx header = frame_of_roll(i < 15 ? i : i + 3);
        if (i % 10 == 9) header.prefix = "291011";
        put_frame(i, header);
    }
    const Log log = read();
    EXPECT_EQ(log.rows.size(), 7u);
    EXPECT_EQ(log.rows[0].film, label_key_35mm_4p);
}

TEST(ScanRhythm, PairsOfOtherFilmOrPrefixDontCount) {
    const HeaderKey key{"0274", "291010", 100, 10}, other_film{"0275", "291010", 100, 11};
    const HeaderKey other_prefix{"0274", "291011", 100, 11}, next{"0274", "291010", 100, 14};
    RhythmTaker taker;
    taker.take(key, other_film);
    taker.take(key, other_film);
    taker.take(key, other_prefix);
    EXPECT_FALSE(taker.rhythm().step);
    taker.take(key, next);
    EXPECT_EQ(taker.rhythm().step, 4);
    EXPECT_FALSE(taker.rhythm().count);
}

TEST_F(ScanRows, ControlCharactersOfHeadersBecomeSigns) {
    Dpx header = frame_of_roll(0);
    header.slate = "12\n3";
    put_frame(1, header);
    options_.film = label_key_35mm_4p;
    const Log log = read();
    EXPECT_EQ(log.rows.at(0)[LogField::description], "12\u240a3");
    EXPECT_EQ(log.warnings.size(), 1u);
}

TEST_F(ScanRows, AFewHeadersWithoutACountAreFilledInBetweenThoseThatAgree) {
    put_roll(10);
    for (const int i : {3, 4}) {
        Dpx header = frame_of_roll(i);
        header.offset = header.prefix = header.count = "";
        put_frame(i + 1, header);
    }
    Dpx header = frame_of_roll(7);
    header.timecode = 0xFFFFFFFF;
    put_frame(8, header);
    const Log log = read();
    EXPECT_THAT(rows(log), ElementsAre("01:00:00:00 01:00:00:10 KJ2910105867+14"));
    EXPECT_THAT(told(log),
                ElementsAre("A012/A012.0004.dpx: has no key number, nor has the one behind it; counted on, as "
                            "those around agree",
                            "A012/A012.0008.dpx: has no timecode; counted on, as those around agree"));
}

TEST_F(ScanRows, WhatEndsWithoutACountIsARowOfItsOwn) {
    put_roll(10);
    for (const int i : {0, 8, 9}) {
        Dpx header = frame_of_roll(i);
        header.count = "?";
        put_frame(i + 1, header);
    }
    const Log log = read();
    EXPECT_THAT(rows(log), ElementsAre("01:00:00:00 01:00:00:01 ", "01:00:00:01 01:00:00:08 KJ2910105867+15",
                                       "01:00:00:08 01:00:00:10 "));
    EXPECT_THAT(told(log),
                ElementsAre("A012/A012.0001.dpx: has a key number that can't be read, as have 2 others; left out",
                            "A012/A012.0002.dpx: key numbers begin; a row begins here",
                            "A012/A012.0009.dpx: key numbers end; a row begins here"));
}

TEST_F(ScanRows, HeadersThatDisagreeInTheMiddleBreakTheRow) {
    put_roll(10);
    Dpx header = frame_of_roll(4);
    header.offset = "";
    put_frame(5, header);
    for (int i = 5; i < 10; ++i) {
        Dpx later = frame_of_roll(i + 1);
        later.timecode = frame_of_roll(i).timecode;
        put_frame(i + 1, later);
    }
    EXPECT_THAT(rows(read()), ElementsAre("01:00:00:00 01:00:00:04 KJ2910105867+14", "01:00:00:04 01:00:00:05 ",
                                          "01:00:00:05 01:00:00:10 KJ2910105868+04"));
}

TEST_F(ScanRows, CountsThatTurnOverBeginARow) {
    for (int i = 0; i < 20; ++i)
        put_frame(i, at_perforation((9999 * 64 + 4 * i) % (10000 * 64)));
    EXPECT_THAT(rows(read()), ElementsAre("  KJ2910109999+00", "  KJ2910100000+00"));
}

TEST_F(ScanRows, AnotherPrefixBeginsARowThoughTheCountRunsOn) {
    for (int i = 0; i < 20; ++i) {
        Dpx header = at_perforation(5867 * 64 + 4 * i);
        if (i >= 10) header.prefix = "291011";
        put_frame(i, header);
    }
    EXPECT_THAT(rows(read()), ElementsAre("  KJ2910105867+00", "  KJ2910115867+10"));
}

TEST_F(ScanRows, TimecodeThatStandsStillIsLeftOut) {
    for (int i = 0; i < 4; ++i) {
        Dpx header = frame_of_roll(i);
        header.timecode = 0;
        put_frame(i, header);
    }
    const Log log = read();
    EXPECT_THAT(rows(log), ElementsAre("  KJ2910105867+14"));
    EXPECT_THAT(told(log), ElementsAre("A012/A012.0000.dpx: timecodes step by 0 frames from file to file; left out",
                                       "A012/A012.0000.dpx: no timecode; the row has no start"));
}

TEST_F(ScanRows, DropFrameIsToldByABitThatSlowFramesDontNeed) {
    for (int i = 0; i < 4; ++i) {
        Dpx header = frame_of_roll(i);
        header.film_rate = 29.97F;
        // 00:00:59:28, :29, then 00:01:00:02: the minute leaves two numbers out.
        header.timecode = (i < 2 ? coded_time(0, 0, 59, 28 + i) : coded_time(0, 1, 0, i)) | 0x40;
        put_frame(i, header);
    }
    EXPECT_THAT(rows(read()), ElementsAre("00:00:59;28 00:01:00;04 KJ2910105867+14"));
}

TEST_F(ScanRows, TimecodeBeyondItsRateOrTheDayIsFaulty) {
    Dpx late = frame_of_roll(0);
    late.timecode = coded_time(24, 0, 0, 0);
    put_frame(1, late);
    late.timecode = coded_time(1, 0, 0, 24);
    put_frame(2, late);
    const Log log = read();
    EXPECT_EQ(rows(log).at(0).substr(0, 2), "  ");
    EXPECT_EQ(told(log).back(), "A012/A012.0001.dpx: no timecode; the row has no start");
    EXPECT_THAT(told(log),
                testing::Contains("A012/A012.0001.dpx: has a timecode that can't be read, as has another; left out"));
}

TEST_F(ScanRows, TimesFromNames) {
    for (int i = 0; i < 3; ++i) {
        Dpx header = frame_of_roll(i);
        header.film_rate = 25;
        put_frame(90000 + i, header);
    }
    options_.time_from_names = true;
    EXPECT_THAT(rows(read()), ElementsAre("01:00:00:00 01:00:00:03 KJ2910105867+14"));
}

TEST_F(ScanRows, RateIsAskedForWhereNoHeaderHasOne) {
    Dpx header = frame_of_roll(0);
    header.film_rate = 0;
    put_frame(1, header);
    EXPECT_EQ(read().error, scratch_.path() + "/A012/A012.0001.dpx: no frame rate in the header; name it with --rate");
    EXPECT_THAT(read().rows, IsEmpty());
    options_.rate = embedded::nearest_rate(25);
    EXPECT_EQ(read().error, "");
    EXPECT_EQ(read().rows.at(0).standard.rate, Qb::frame_rate_25);
}

TEST_F(ScanRows, ReelIsWhatIsAskedForElseTheHeadersElseTheStemsElseTheFolders) {
    const auto exr_frame = [](const std::vector<ExrAttribute>& more) {
        std::vector<ExrAttribute> all{frames_per_second(24, 1), time_code(0x01000000)};
        all.insert(all.end(), more.begin(), more.end());
        return exr_bytes(all);
    };
    put("B7/0001.exr", exr_frame({}));
    put("B8/C9_0001.exr", exr_frame({}));
    put("B9/C9_0001.exr", exr_frame({reel_name("D10")}));
    Log log = read();
    ASSERT_EQ(log.rows.size(), 3u);
    EXPECT_EQ(log.rows[0][LogField::reel], "B7");
    EXPECT_EQ(log.rows[1][LogField::reel], "C9");
    EXPECT_EQ(log.rows[2][LogField::reel], "D10");
    options_.reel = "E11";
    EXPECT_EQ(read().rows.at(2)[LogField::reel], "E11");
}

TEST_F(ScanRows, ExrNamesItsFilmAndOneFrameIsEnough) {
    put("x.1.exr", exr_bytes({frames_per_second(24, 1), preview(9000), key_code({2, 74, 291010, 5867, 56, 8, 64})}));
    const Log log = read();
    ASSERT_EQ(log.rows.size(), 1u);
    EXPECT_STREQ(label_type_to_edlstr(log.rows[0].film), "35mm-8p");
    EXPECT_EQ(log.rows[0][LogField::key_start], "KJ2910105867+07");
}

TEST_F(ScanRows, DamagedPicturesAreLeftOutAndLeaveAGap) {
    put_roll(5);
    put("A012/A012.0003.dpx", "SDPX");
    const Log log = read();
    EXPECT_THAT(rows(log),
                ElementsAre("01:00:00:00 01:00:00:02 KJ2910105867+14", "01:00:00:03 01:00:00:05 KJ2910105868+01"));
    EXPECT_THAT(told(log), ElementsAre("A012/A012.0003.dpx: ends inside its header; left out",
                                       "A012/A012.0004.dpx: the 1 frame before it is missing; a row begins here"));
}

TEST_F(ScanRows, FoldersWithoutPicturesAreRefused) {
    EXPECT_EQ(read().error, scratch_.path() + ": holds no DPX or OpenEXR pictures");
    put("A.1.exr", "v");
    EXPECT_EQ(read().error, scratch_.path() + ": holds no picture that can be used");
}

TEST_F(ScanRows, ManyBreaksAreToldInFewLines) {
    for (int i = 0; i < 50; ++i)
        put_frame(2 * i, frame_of_roll(2 * i));
    options_.film = label_key_35mm_4p;
    const Log log = read();
    EXPECT_EQ(log.rows.size(), 50u);
    ASSERT_EQ(log.warnings.size(), 21u);
    EXPECT_EQ(told(log).back(), "A012/A012.0000.dpx: 29 more rows begin in this sequence");
}

// Any frames: stretches hold each of them once and in order, and each frame of one lies where the first one says; where
// the next one begins, the counts say why.
RC_GTEST_PROP(ScanStretches, RunOnInsideAndBreakBetween, ()) {
    ScanFiles files{"f", "A", ScanKind::dpx, {}};
    ScanFrames scan;
    scan.film = label_key_35mm_4p;
    scan.frame_perforations = 4;
    scan.prefixes = {"KJ291010"};
    const int count = *rc::gen::inRange(1, 40);
    std::uint64_t number = 1;
    std::int64_t key = 1000, time = 500, position = 3;
    const auto jump = [](int usual) { return *rc::gen::weightedElement<int>({{12, usual}, {1, usual + 3}, {1, 1}}); };
    const auto known = [](std::int64_t value) {
        return *rc::gen::weightedElement<bool>({{9, true}, {1, false}}) ? std::optional(value) : std::nullopt;
    };
    for (int i = 0; i < count; ++i) {
        files.files.push_back({number, "A." + std::to_string(number) + ".dpx"});
        scan.frames.push_back({static_cast<std::size_t>(i),
                               known(key),
                               known(time),
                               known(position),
                               {embedded::nearest_rate(24)->code, 0}});
        number += static_cast<std::uint64_t>(jump(1)), key += jump(4), time += jump(1), position += jump(1);
    }
    embedded::Warnings warnings;
    const std::vector<ScanFrame> before = scan.frames;
    const std::vector<Stretch> stretches = stretches_of(files, scan, warnings);
    std::size_t next = 0;
    for (const Stretch& stretch : stretches) {
        RC_ASSERT(stretch.first == next);
        RC_ASSERT(stretch.last >= stretch.first && stretch.last < before.size());
        next = stretch.last + 1;
        const ScanFrame& first = scan.frames[stretch.first];
        for (std::size_t i = stretch.first; i <= stretch.last; ++i) {
            const auto way = static_cast<std::int64_t>(i - stretch.first);
            RC_ASSERT(files.files[i].number == files.files[stretch.first].number + i - stretch.first);
            if (before[i].key) RC_ASSERT(first.key && *before[i].key == *first.key + 4 * way);
            if (before[i].time) RC_ASSERT(first.time && *before[i].time == *first.time + way);
        }
    }
    RC_ASSERT(next == before.size());
    for (std::size_t s = 1; s < stretches.size(); ++s) {
        const ScanFrame &a = scan.frames[stretches[s].first - 1], &b = scan.frames[stretches[s].first];
        const bool runs_on = files.files[b.file].number == files.files[a.file].number + 1 && !a.key == !b.key &&
                             (!a.key || *b.key == *a.key + 4) && !a.time == !b.time &&
                             (!a.time || *b.time == *a.time + 1) &&
                             (!a.position || !b.position || *b.position == *a.position + 1);
        RC_ASSERT(!runs_on);
    }
}

// From 5867+14 to 5868+01, then to 5869+08.
TEST_F(ScanRows, AJumpOverACountEndsARowToo) {
    for (const label_t film : {label_none, label_key_35mm_4p}) {
        for (int i = 0; i < 6; ++i) {
            Dpx header = frame_of_roll(i);
            const int perforation = i < 2 ? 5867 * 64 + 14 * 4 + 4 * i : 5868 * 64 + 7 * 4 + 4 * i;
            const Dpx key = at_perforation(perforation);
            header.offset = key.offset;
            header.count = key.count;
            put_frame(i + 1, header);
        }
        options_.film = film;
        const Log log = read();
        EXPECT_THAT(rows(log),
                    ElementsAre("01:00:00:00 01:00:00:02 KJ2910105867+14", "01:00:00:02 01:00:00:06 KJ2910105868+09"));
        EXPECT_THAT(told(log), ElementsAre("A012/A012.0003.dpx: its key number is KJ2910105868+09 behind "
                                           "KJ2910105867+15; a row begins here"));
    }
}

} // namespace
