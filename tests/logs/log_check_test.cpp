// What a check of logs finds, one thing at a time.

#include "formats/logs/log_check.h"
#include "formats/logs/log_table.h"
#include "logging/log_shot_list.h"
#include "quillbrook/logging_tables.h"
#include "tests/logs/log_texts.h"
#include "tests/support/recording_logger.h"

#include <rapidcheck.h>

using namespace formats;
using namespace log_texts;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

const Cells columns{"Name", "Tape", "Start", "End", "KN Start", "KN End", "KN Film"};
const Cells good{"a", "003", "01:00:00:00", "01:00:10:00", "KJ123456 1000+00", "KJ123456 1015+00", "35mm,4perf"};
const Cells next{"b", "003", "01:00:10:00", "01:00:20:00", "KJ123456 1015+00", "KJ123456 1030+00", "35mm,4perf"};
const Cells after{"c", "003", "01:00:20:00", "01:00:30:00", "KJ123456 1030+00", "KJ123456 1045+00", "35mm,4perf"};

std::vector<LogFinding> check(const std::vector<Cells>& rows, const std::string& rate = "24") {
    return check_log(read(ale({"FPS\t" + rate}, columns, rows)).rows);
}

Cells with(Cells cells, std::size_t column, const std::string& text) {
    cells[column] = text;
    return cells;
}

/// The second of three rows that are otherwise good, at line 9, is what is found.
void expect_found(const Cells& row, LogProblem problem, const std::string& text) {
    const std::vector<LogFinding> findings = check({good, row, after});
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].problem, problem);
    EXPECT_EQ(findings[0].line, 9);
    EXPECT_EQ(findings[0].file, "day.ale");
    EXPECT_THAT(findings[0].text, HasSubstr(text));
}

TEST(LogCheck, NothingIsWrongWithGoodRows) {
    EXPECT_THAT(check({good, next, after}), IsEmpty());
    EXPECT_THAT(check_log({}), IsEmpty());
}

TEST(LogCheck, AnInkNumberStandsInForAKeyNumber) {
    const Cells with_ink{"Name", "Tape", "Start", "End", "KN Start", "Ink Number"};
    const Cells keyed{"a", "003", "01:00:00:00", "01:00:10:00", "KJ123456 1000+00", ""};
    const Cells inked{"b", "003", "01:00:10:00", "01:00:20:00", "", "042 1234+05"};
    EXPECT_THAT(check_log(read(ale({"FPS\t24", "FILM_FORMAT\t35mm,4perf"}, with_ink, {keyed, inked})).rows), IsEmpty());
}

TEST(LogCheck, FaultyTimecodes) {
    expect_found(with(next, 2, "01:00:99:00"), LogProblem::faulty_timecode, "start \"01:00:99:00\"");
    expect_found(with(next, 3, "x"), LogProblem::faulty_timecode, "end \"x\"");
}

TEST(LogCheck, EndBeforeStart) {
    expect_found(with(next, 3, "01:00:09:23"), LogProblem::end_before_start,
                 "end 01:00:09:23 is before start 01:00:10:00");
}

TEST(LogCheck, ReelsThatBeginOtherReelsAtTheSameTimes) {
    const std::vector<LogFinding> findings = check({with(good, 1, "1"), with(next, 1, "10"), with(after, 1, "10")});
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].problem, LogProblem::reel_begins);
    EXPECT_EQ(findings[0].line, 9);
    EXPECT_EQ(findings[0].text,
              "reel \"10\" begins with reel \"1\" of line 8, which has the same times, so events may be "
              "listed with its film");
    EXPECT_THAT(check({with(good, 1, "1"), with(after, 1, "10")}), IsEmpty());
    EXPECT_THAT(check({with(good, 1, "1"), with(next, 1, "20")}), IsEmpty());
}

TEST(LogCheck, ARowWithoutARollAmongOthersThatHaveOne) {
    Cells with_roll = columns;
    with_roll.push_back("Camroll");
    const auto rolled = [](Cells cells, const std::string& roll) {
        cells.push_back(roll);
        return cells;
    };
    const auto findings_of = [&](const std::vector<Cells>& rows) {
        return check_log(read(ale({"FPS\t24"}, with_roll, rows)).rows);
    };
    const std::vector<LogFinding> findings = findings_of({rolled(good, "A1"), rolled(next, "")});
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].problem, LogProblem::no_roll);
    EXPECT_EQ(findings[0].line, 9);
    EXPECT_THAT(findings_of({rolled(good, ""), rolled(next, "")}), IsEmpty());
}

TEST(LogCheck, ARowThatReachesTooFarHidesNoOther) {
    const Cells far = with(good, 3, "01:59:00:00");
    const std::vector<LogFinding> findings =
        check({with(far, 5, ""), with(next, 3, "01:00:25:00"), with(with(after, 4, "KJ123456 1040+00"), 5, "")});
    const auto overlaps = std::count_if(findings.begin(), findings.end(), [](const LogFinding& finding) {
        return finding.problem == LogProblem::overlap && finding.line == 10;
    });
    EXPECT_EQ(overlaps, 2);
}

TEST(LogCheck, ZeroLength) { expect_found(with(next, 3, "01:00:10:00"), LogProblem::zero_length, "01:00:10:00"); }

TEST(LogCheck, VeryLong) {
    Cells row{"b", "004", "01:00:00:00", "02:15:00:01", "KJ123456 1000+00", "", "35mm,4perf"};
    expect_found(row, LogProblem::very_long, "over 108000 frames");
    EXPECT_THAT(check({good, with(row, 3, "02:15:00:00")}), IsEmpty());
}

TEST(LogCheck, OverlapOnAReel) {
    const std::vector<LogFinding> findings =
        check({good, {"b", "003", "01:00:05:00", "01:00:06:00", "KJ123456 2000+00", "", ""}});
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].problem, LogProblem::overlap);
    EXPECT_EQ(findings[0].line, 9);
    EXPECT_THAT(findings[0].text, HasSubstr("overlaps line 8 on reel \"003\""));
}

TEST(LogCheck, OneReelCountedInTwoWays) {
    std::vector<LogRow> rows = read(ale({"FPS\t24"}, columns, {good, next})).rows;
    const std::vector<Cells> others{{"x", "003", "02:00:00:00", "02:00:10:00", "KJ123456 2000+00", "", ""},
                                    {"y", "003", "02:00:10:00", "02:00:20:00", "KJ123456 3000+00", "", ""},
                                    {"z", "004", "02:00:00:00", "02:00:10:00", "KJ123456 4000+00", "", ""}};
    for (const LogRow& row : read(ale({"FPS\t25"}, columns, others)).rows)
        rows.push_back(row);
    const std::vector<LogFinding> findings = check_log(rows);
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].problem, LogProblem::standard_differs);
    EXPECT_THAT(findings[0].text, HasSubstr("reel \"003\" counts 25fps here and 24fps in line 8"));
}

TEST(LogCheck, OverlapBehindAShorterShotIsFoundToo) {
    const std::vector<LogFinding> findings =
        check({{"a", "R", "01:00:00:00", "01:01:00:00", "KJ123456 1000+00", "", ""},
               {"b", "r", "01:00:05:00", "01:00:06:00", "KJ123456 2000+00", "", ""},
               {"c", "R", "01:00:50:00", "01:02:00:00", "KJ123456 3000+00", "", ""}});
    ASSERT_EQ(findings.size(), 2u);
    EXPECT_THAT(findings[1].text, HasSubstr("overlaps line 8"));
}

TEST(LogCheck, OtherReelsDoNotOverlap) {
    EXPECT_THAT(check({good, with(with(next, 1, "004"), 2, "01:00:10:00")}), IsEmpty());
}

TEST(LogCheck, DoubledRows) {
    const std::vector<LogFinding> findings = check({good, next, good});
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].problem, LogProblem::doubled);
    EXPECT_EQ(findings[0].line, 10);
    EXPECT_EQ(findings[0].text, "the same as line 8");
}

TEST(LogCheck, FindingsNameTheOtherFile) {
    std::vector<LogRow> rows = read(ale({"FPS\t24"}, columns, {good}), "one.ale").rows;
    const std::vector<LogRow> more = read(ale({"FPS\t24"}, columns, {good}), "two.ale").rows;
    rows.insert(rows.end(), more.begin(), more.end());
    const std::vector<LogFinding> findings = check_log(rows);
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].file, "two.ale");
    EXPECT_EQ(findings[0].text, "the same as line 8 of one.ale");
}

TEST(LogCheck, NoReel) { expect_found(with(next, 1, ""), LogProblem::no_reel, "no reel"); }

TEST(LogCheck, ReelsThatAreTheSameInWhatIsCompared) {
    const std::vector<LogFinding> findings = check(
        {with(good, 1, "A_0076C001_230511_x"), with(next, 1, "A_0076C001_230512_y"), with(after, 1, "A_0076C001")});
    ASSERT_EQ(findings.size(), 2u);
    EXPECT_EQ(findings[0].problem, LogProblem::reel_cut);
    EXPECT_EQ(findings[0].line, 9);
    EXPECT_THAT(findings[0].text, HasSubstr("in its first 15 characters"));
    EXPECT_EQ(findings[1].problem, LogProblem::reel_begins);
}

TEST(LogCheck, MissingKeys) {
    expect_found(with(with(next, 4, ""), 5, ""), LogProblem::no_key, "no key number");
    const std::vector<LogFinding> findings = check({with(with(good, 4, ""), 5, ""), with(with(next, 4, ""), 5, "")});
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].text, "no row has a key number or an ink number");
}

TEST(LogCheck, BadKeys) { expect_found(with(next, 4, "KX65-99"), LogProblem::bad_key, "\"KX65-99\" can't be read"); }

TEST(LogCheck, PrefixThatChangesInsideATake) {
    expect_found(with(next, 5, "KJ123457 1030+00"), LogProblem::prefix_changes, "KJ1234561015+00 to KJ1234571030+00");
}

TEST(LogCheck, KeyNumbersThatRunBackwards) {
    expect_found(with(next, 5, "KJ123456 1014+00"), LogProblem::key_end_before_start, "backwards");
}

TEST(LogCheck, LengthsMustBeTheSameFrameForFrame) {
    expect_found(with(next, 5, "KJ123456 1030+01"), LogProblem::length_differs,
                 "240 frames of film by timecode and 241");
}

TEST(LogCheck, InclusiveKeyEndsAreNoDifference) {
    EXPECT_THAT(check({with(good, 5, "KJ123456 1014+15"), with(next, 5, "KJ123456 1029+15")}), IsEmpty());
}

TEST(LogCheck, PulldownIsTolerated) {
    const auto off_by = [](const std::string& end) {
        return check({{"a", "003", "01:00:00:00", "01:00:10:00", "KJ123456 1000+00", end, "35mm,4perf"},
                      {"b", "003", "01:00:10:00", "01:00:20:00", "KJ123456 1015+00", "KJ123456 1030+00", "35mm,4perf"}},
                     "29.97");
    };
    EXPECT_THAT(off_by("KJ123456 1015+00"), IsEmpty());
    EXPECT_THAT(off_by("KJ123456 1015+02"), IsEmpty());
    EXPECT_THAT(off_by("KJ123456 1014+14"), IsEmpty());
    EXPECT_EQ(off_by("KJ123456 1015+03").size(), 1u);
    EXPECT_EQ(off_by("KJ123456 1014+13").size(), 1u);
}

TEST(LogCheck, FilmOfAnotherKindThanTheFirstRow) {
    expect_found(with(with(next, 5, ""), 6, "16mm"), LogProblem::film_differs, "its film is 16mm-1p");
}

TEST(LogCheck, AgreesWithTheListOfShotsOnWhichRowsAreRejected) {
    EXPECT_TRUE(rc::check([] {
        const auto time = rc::gen::map(rc::gen::inRange(-3, 40), [](int n) {
            return n < 0 ? std::string(n == -1 ? "" : "bad")
                         : "01:00:00:" + std::string(n < 10 ? "0" : "") + std::to_string(n);
        });
        std::vector<Cells> rows;
        for (int i = *rc::gen::inRange(1, 8); i > 0; --i)
            rows.push_back({"a", std::to_string(i), *time, *time, "KJ123456 1000+00", "", ""});
        const Log log = read(ale({"FPS\t24"}, columns, rows));
        RC_ASSERT(log.rows.size() == rows.size());
        int rejected = 0;
        for (const LogFinding& finding : check_log(log.rows))
            rejected += finding.problem <= LogProblem::zero_length;
        filmdb table;
        fill_table(table, log.rows);
        RecordingLogger logger;
        const LogShotList list(table, -1, logger, 2);
        RC_ASSERT(list.num_bad == rejected);
    }));
}

} // namespace
