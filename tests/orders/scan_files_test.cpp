// Orders as files for scanners and programs that conform, read again by our own readers.

#include "tool/order_scans.h"

#include "embedded/services.h"
#include "formats/edl/edl_reader.h"
#include "formats/key_number.h"
#include "formats/logs/ale_reader.h"
#include "formats/otio/otio_reader.h"
#include "formats/scans/cut_file_writer.h"
#include "formats/text_lines.h"
#include "host/ascii_text.h"
#include "tests/orders/random_film.h"
#include "tool/tool_error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using namespace orders_test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using tool::ScanWriting;

namespace {

EditPtr read_edl(const std::string& text) { return formats::read_edl_texts({{text, "a.edl", 0}}, {}).edit; }
EditPtr read_otio(const std::string& text) { return formats::read_otio_bytes(text, "a.otio", 0).edit; }

bool has_timecode(const film::OrderToTell& order, const film::OrderPiece& piece) {
    return static_cast<bool>(film::timecode_of(order, piece).count);
}

ScanWriting any_writing() {
    ScanWriting writing;
    writing.keys =
        formats::key_spelling_named(*rc::gen::element<std::string>("plain", "dashed", "roll", "stock", "apart"));
    writing.numbers =
        *rc::gen::element(tool::FrameNumbers::timecode, tool::FrameNumbers::take, tool::FrameNumbers::key);
    return writing;
}

/// An edit list has one reel for a source, which is the roll. With pulldown its last frame may hold a part of the film
/// behind the piece, too.
Frames frames_of_edl(const EditPtr& edit) {
    FilmNeeds needs = needs_of(edit).needs;
    for (film::FilmNeed& need : needs) {
        need.run.roll = ascii::upper_case(need.strip.rolls.tape);
        need.frames.last -= need.strip.more_above;
    }
    return frames_of(needs);
}

/// The frames of a log's rows.
Frames frames_of_ale(const std::string& text) {
    const formats::Log log = formats::read_ale(formats::TextLines(text), "a.ale");
    RC_ASSERT(log.error.empty());
    Frames frames;
    for (const formats::LogRow& row : log.rows) {
        if (!row.key_start.is_useful()) continue;
        const int in_frame = row.key_start.cvt()->samples_per_frame();
        const film::FilmRun run{row[formats::LogField::cam_reel], row.key_start.type(), row.key_start.get_prefix(),
                                row.key_start.sample % in_frame};
        add_frames(run, {row.key_start.sample / in_frame, row.key_end.sample / in_frame - 1}, frames);
    }
    return frames;
}

film::OrderToTell any_order() {
    const RandomFilm random;
    return told_order(random.version(between(1, 3)), any_options(), random.rate());
}

std::int64_t ascii_lines(const std::string& text) { return std::count(text.begin(), text.end(), '\n'); }

film::FilmNeed plain_need(const std::string& roll, std::int64_t first, std::int64_t last, const std::string& name) {
    film::FilmNeed need;
    need.run = {roll, label_key_35mm_4p, "KJ123456", 0};
    need.frames = {first, last};
    need.strip.key = {label_key_35mm_4p, "KJ123456", Fraction(first), 1, 0};
    need.strip.timecode = {label_tc_24, "", Fraction(86400 + first), 1, 0};
    need.strip.rolls.tape = "T1";
    need.strip.rolls.lab = "L3";
    need.strip.name = name;
    need.strip.scene = "12";
    return need;
}

film::OrderToTell plain_order(const FilmNeeds& needs, int handles = 0) {
    film::OrderOptions options;
    options.handles = handles;
    film::OrderToTell order = told_order(needs, options, embedded::nearest_rate(24.0));
    order.reels.resize(1);
    return order;
}

} // namespace

RC_GTEST_PROP(ScanFiles, AnEditListReadAgainNamesTheSameFilm, ()) {
    const film::OrderToTell order = any_order();
    RC_PRE(!order.pieces.empty());
    const formats::Written written = tool::edl_of_order(order, any_writing());
    RC_LOG() << written.text;
    RC_ASSERT(written.error.empty());
    const EditPtr again = read_edl(written.text);
    RC_ASSERT(static_cast<bool>(again));
    RC_ASSERT(frames_of_edl(again) == frames_of(order.pieces));
}

RC_GTEST_PROP(ScanFiles, ALogReadAgainNamesTheSameFilm, ()) {
    const film::OrderToTell order = any_order();
    Frames expected;
    bool any = false;
    for (const film::OrderPiece& piece : order.pieces) {
        any = any || has_timecode(order, piece);
        if (piece.run.has_key() && has_timecode(order, piece)) add_frames(piece.run, piece.frames, expected);
    }
    RC_PRE(any);
    const formats::Written written = tool::ale_of_order(order, any_writing());
    RC_LOG() << written.text;
    RC_ASSERT(written.error.empty());
    RC_ASSERT(frames_of_ale(written.text) == expected);
}

RC_GTEST_PROP(ScanFiles, AnOtioFileReadAgainNamesWhatIsNeededAndThePiece, ()) {
    const film::OrderToTell order = any_order();
    RC_PRE(!order.pieces.empty());
    const formats::Written written = tool::otio_of_order(order, any_writing());
    RC_LOG() << written.text;
    const EditPtr again = read_otio(written.text);
    RC_ASSERT(static_cast<bool>(again));
    const FilmNeeds needs = needs_of(again).needs;
    RC_ASSERT(needs.size() == order.pieces.size());
    for (std::size_t i = 0; i < needs.size(); ++i) {
        RC_ASSERT(needs[i].run == order.pieces[i].run);
        RC_ASSERT(needs[i].frames == order.pieces[i].needed);
        if (needs[i].run.has_key()) RC_ASSERT(needs[i].take == order.pieces[i].frames);
    }
}

TEST(ScanFiles, OfAnEditListHaveBothKeyNumbersAndTheRollOrTape) {
    const film::OrderToTell order = plain_order({plain_need("A1", 16, 31, "Shot")}, 8);
    ScanWriting writing;
    const std::string event = "01:00:00:08 01:00:01:16 01:00:00:00 01:00:01:08\n";
    EXPECT_EQ(tool::edl_of_order(order, writing).text,
              "TITLE: Order for Reel 1\nFCM: NON-DROP FRAME\n* FRAME RATE: 24\n"
              "001  A1       V     C        " +
                  event +
                  "* FROM CLIP NAME: Shot\n* KEY NUMBER: KJ1234560000+08 35mm-4p\n* KEY OUT: KJ1234560002+07\n");
    writing.edl_reel = tool::OrderEditing::Reel::tape;
    EXPECT_THAT(tool::edl_of_order(order, writing).text, HasSubstr("001  T1  "));
    writing.edl_reel = tool::OrderEditing::Reel::lab;
    writing.keys = formats::key_spelling_named("apart");
    EXPECT_THAT(tool::edl_of_order(order, writing).text, HasSubstr("001  L3  "));
    EXPECT_THAT(tool::edl_of_order(order, writing).text, HasSubstr("* KEY NUMBER: KJ 12 3456 0000 +08 35mm-4p\n"));
}

// The reader takes the first key number that it finds.
TEST(ScanFiles, OfShotsThatAreCalledLikeKeyNumbersKeepTheirFilm) {
    const film::OrderToTell order = plain_order({plain_need("A1", 16, 31, "KZ 99 8888 7777+01")});
    const formats::Written written = tool::edl_of_order(order, {});
    EXPECT_THAT(written.warnings, IsEmpty());
    EXPECT_EQ(frames_of_edl(read_edl(written.text)), frames_of(order.pieces));
}

TEST(ScanFiles, KeepFilmOfOddNamesOrSayThatTheyCant) {
    for (const std::string odd : {"A 01", "BL", "AX", "=1+1", "R\"1\"", "a,b;c", "\xC3\x84 7", "{roll}", "A*", "../x",
                                  "001", "M2", "V C 01:00:00:00", "TITLE:"}) {
        const film::OrderToTell order =
            plain_order({plain_need(ascii::upper_case(odd), 16, 31, odd), plain_need("B2", 100, 120, "Next")}, 2);
        const formats::Written edl = tool::edl_of_order(order, {}), ale = tool::ale_of_order(order, {}),
                               otio = tool::otio_of_order(order, {});
        const Frames wanted = frames_of(order.pieces);
        const EditPtr of_edl = read_edl(edl.text);
        ASSERT_TRUE(of_edl) << odd << edl.text;
        if (edl.warnings.empty()) {
            EXPECT_EQ(frames_of_edl(of_edl), wanted) << odd << edl.text;
        }
        if (ale.warnings.empty()) {
            EXPECT_EQ(frames_of_ale(ale.text), wanted) << odd << ale.text;
        }
        const FilmNeeds of_otio = needs_of(read_otio(otio.text)).needs;
        ASSERT_EQ(of_otio.size(), 2U) << odd;
        for (std::size_t i = 0; i < 2; ++i) {
            EXPECT_TRUE(of_otio[i].run == order.pieces[i].run) << odd;
            EXPECT_EQ(of_otio[i].take, order.pieces[i].frames) << odd;
        }
    }
}

TEST(ScanFiles, AreNamedByAPatternAndNumberedAsAsked) {
    film::FilmNeed need = plain_need("A/1", 16, 31, "Shot");
    need.take = film::FrameRange{10, 100};
    const film::OrderToTell order = plain_order({need});
    EXPECT_EQ(tool::FileNames().name_of(order, 0), "A_1_{frame}.dpx");
    const tool::FileNames names("/scans/{tape}/{scan}-{scene}.{frame:9}.exr");
    EXPECT_EQ(names.name_of(order, 0), "/scans/T1/001-12.{frame}.exr");
    EXPECT_EQ(names.digits(), 9);
    std::string fault;
    EXPECT_EQ(tool::first_number_of(order, order.pieces[0], tool::FrameNumbers::timecode, fault), 86416);
    EXPECT_EQ(tool::first_number_of(order, order.pieces[0], tool::FrameNumbers::take, fault), 6);
    EXPECT_EQ(tool::first_number_of(order, order.pieces[0], tool::FrameNumbers::key, fault), 16);
    EXPECT_EQ(fault, "");
    ScanWriting writing;
    writing.files = names;
    EXPECT_THAT(tool::otio_of_order(order, writing).text,
                testing::AllOf(HasSubstr("\"target_url_base\": \"/scans/T1/\""),
                               HasSubstr("\"name_prefix\": \"001-12.\""), HasSubstr("\"name_suffix\": \".exr\""),
                               HasSubstr("\"start_frame\": 86416"), HasSubstr("\"frame_zero_padding\": 9"),
                               HasSubstr("\"cmx_3600\"")));
}

TEST(ScanFiles, OfFilmWithoutATimecodeCountFromTheRollAndSaySo) {
    film::FilmNeed need = plain_need("A1", 16, 31, "Shot");
    need.strip.timecode = {};
    const film::OrderToTell order = plain_order({need}, 8);
    const formats::Written written = tool::otio_of_order(order, {});
    std::vector<std::string> told;
    for (const embedded::Warning& warning : written.warnings)
        told.push_back(warning.text);
    EXPECT_THAT(told, ElementsAre("piece 1: without a timecode; times count from 0",
                                  "piece 1: there is no timecode, so files count from number 0 of the roll's prefix"));
    EXPECT_THAT(written.text, HasSubstr("\"start_frame\": 8"));
    const FilmNeeds needs = needs_of(read_otio(written.text)).needs;
    ASSERT_EQ(needs.size(), 1U);
    EXPECT_EQ(needs[0].frames, (film::FrameRange{16, 31}));
    EXPECT_EQ(needs[0].take, (film::FrameRange{8, 39}));
}

// Video timecode of 30 counts four of five as film, but where each of its frames is one.
TEST(ScanFiles, OfFilmThatIsFrameForFrameWithItsTimecodeSaySo) {
    film::FilmNeed need = plain_need("A1", 16, 31, "Shot");
    need.strip.timecode = {edlstr_to_label_type("30fps"), "", Fraction(108000 + 16), 1, 0};
    film::OrderToTell order = told_order({need}, {}, embedded::nearest_rate(30.0));
    order.reels.resize(1);
    const formats::Written written = tool::otio_of_order(order, {});
    EXPECT_THAT(written.text, HasSubstr("\"film_rate\": \"30/1\""));
    const FilmNeeds needs = needs_of(read_otio(written.text)).needs;
    ASSERT_EQ(needs.size(), 1U);
    EXPECT_EQ(needs[0].frames, (film::FrameRange{16, 31}));
}

TEST(ScanFiles, OfOtherPatternsAreRefused) {
    for (const char* pattern : {"{roll}.dpx", "{frame}{frame}", "{frame}/{roll}", "{colour}{frame}", "{frame:0}",
                                "{frame:x}", "{frame:13}", "{frame", "a{"})
        EXPECT_THROW(tool::FileNames{pattern}, tool::UsageError) << pattern;
    EXPECT_EQ(tool::FileNames("{frame:12}").digits(), 12);
}

TEST(ScanFiles, AreNotBrokenByControlCharacters) {
    const film::OrderToTell order =
        plain_order({plain_need("A\t1\n2", 16, 31, "B\n001  C V C"), plain_need("B2", 100, 120, "Next")});
    EXPECT_EQ(needs_of(read_edl(tool::edl_of_order(order, {}).text)).needs.size(), 2U);
    EXPECT_EQ(needs_of(read_otio(tool::otio_of_order(order, {}).text)).needs.size(), 2U);
    EXPECT_EQ(frames_of_ale(tool::ale_of_order(order, {}).text).size(), 37U);
    EXPECT_EQ(ascii_lines(tool::cut_file_of_order(order, {}).text), 6);
}

TEST(ScanFiles, OfSeveralRatesAreNoEditList) {
    film::FilmNeed other = plain_need("B2", 100, 120, "Next");
    other.strip.timecode.kind = static_cast<label_t>(4);
    const film::OrderToTell order = plain_order({plain_need("A1", 16, 31, "Shot"), other});
    EXPECT_THROW(tool::edl_of_order(order, {}), tool::JobError);
    EXPECT_EQ(frames_of_ale(tool::ale_of_order(order, {}).text), frames_of(order.pieces));
}

TEST(ScanFiles, TellOfFilmThatTwoTapesHold) {
    film::FilmNeed other = plain_need("A1", 40, 50, "Again");
    other.strip.rolls.tape = "T2";
    const film::OrderToTell order = plain_order({plain_need("A1", 16, 39, "Shot"), other});
    ASSERT_EQ(order.pieces.size(), 1U);
    ASSERT_EQ(tool::edl_of_order(order, {}).warnings.size(), 1U);
    EXPECT_THAT(tool::edl_of_order(order, {}).warnings[0].text,
                HasSubstr("piece 1: the shots name different timecodes"));
}

// In fixed columns; out is the frame behind the last, and footage runs on.
TEST(CutFiles, StandInTheirColumns) {
    film::OrderToTell order =
        plain_order({plain_need("A1", 16020, 16037, "Shot"), plain_need("A1", 17000, 17007, "Shot")}, 0);
    EXPECT_EQ(tool::cut_file_of_order(order, {}).text,
              "Title: Order for Reel 1\n"
              "**************************************************************\n"
              "The cut list in construction order:\n"
              "Shot Footage  Length    Keycode     In Frame  Out Frame  Roll\n"
              "001  0000+00  0001+02   KJ 12 3456  1001+04   1002+06    A1\n"
              "002  0001+02  0000+08   KJ 12 3456  1062+08   1063+00    A1\n");
}

TEST(CutFiles, LeaveOutAndTellWhatTheColumnsDontHold) {
    LabelPoint wide(0, label_key_35mm_4p), near_end(0, label_key_35mm_4p);
    wide.set_sample("KJ12345610000+00");
    near_end.set_sample("KJ1234569999+15");
    const formats::Written written = formats::write_cut_file(
        "T\nx", {{wide, 4, "A1", 1}, {near_end, 1, "A1", 2}, {LabelPoint(64, label_key_35mm_4p), 2, "A LONG ROLL", 3}});
    std::vector<std::string> told;
    for (const embedded::Warning& warning : written.warnings)
        told.push_back(warning.text);
    EXPECT_THAT(told, ElementsAre("piece 1: left out, as the columns don't hold the numbers",
                                  "piece 2: left out, as the columns don't hold the numbers",
                                  "piece 3: left out, as the columns don't hold the numbers"))
        << written.text;
    EXPECT_THAT(written.text, testing::StartsWith("Title: T x\n"));
}

TEST(CutFiles, AreOfOneGaugeThatHasFeet) {
    LabelPoint a(64, label_key_35mm_4p), b(64, edlstr_to_label_type("16mm-1p"));
    a.set_prefix("KJ123456");
    b.set_prefix("KJ123456");
    EXPECT_EQ(formats::write_cut_file("T", {{a, 4, "A1", 1}, {b, 4, "A1", 2}}).error, "its film is of several gauges");
    EXPECT_EQ(formats::write_cut_file("T", {{LabelPoint(0, edlstr_to_label_type("65mm-5p80")), 4, "A", 1}}).error,
              "its film isn't counted in feet");
    EXPECT_EQ(formats::write_cut_file("T", {{a, 4, "A LONG ROLL", 1}}).warnings.at(0).text,
              "piece 1: the roll is longer than its column");
}

TEST(KeySpellings, AllAreReadAgain) {
    for (const char* name : {"plain", "dashed", "roll", "stock", "apart"})
        for (const char* kind : {"35mm-4p", "35mm-3p", "16mm-1p"}) {
            LabelPoint key(1201, edlstr_to_label_type(kind));
            key.set_prefix("KJ123456");
            LabelPoint again(0, key.type());
            const std::string text = formats::spelled(key, *formats::key_spelling_named(name));
            again.set_sample(formats::plain_key_number(text).c_str());
            LabelPoint plain(0, key.type());
            plain.set_sample(key.get_string());
            EXPECT_TRUE(again == plain) << text;
        }
    LabelPoint key(1201 * 4, label_key_35mm_4p);
    key.set_prefix("KJ123456");
    EXPECT_EQ(formats::spelled(key, *formats::key_spelling_named("dashed")), "KJ 12 3456-0075+01");
    EXPECT_EQ(formats::spelled(key, *formats::key_spelling_named("roll")), "KJ123456 0075+01");
    EXPECT_EQ(formats::spelled(key, *formats::key_spelling_named("stock")), "KJ12 3456 0075+01");
    EXPECT_EQ(formats::spelled(key, *formats::key_spelling_named("apart")), "KJ 12 3456 0075 +01");
    EXPECT_EQ(formats::key_spelling_named("loud"), nullptr);
    LabelPoint three(16 * 3, edlstr_to_label_type("35mm-3p"));
    three.set_prefix("KJ123456");
    EXPECT_EQ(formats::spelled(three, formats::plain_spelling()), "KJ1234560000+16.1");
    EXPECT_EQ(formats::spelled(three, *formats::key_spelling_named("roll")), "KJ123456 0000+16(1)");
}
