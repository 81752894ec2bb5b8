// Text parted by tabs, commas or semicolons.

#include "tests/logs/log_texts.h"

using namespace formats;
using namespace log_texts;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

Log read_csv(const std::string& bytes, double rate = 24) {
    LogOptions options;
    options.rate = rate > 0 ? embedded::nearest_rate(rate) : nullptr;
    return read(bytes, "day.csv", options);
}

void expect_rows(const Log& log, std::size_t count) {
    EXPECT_EQ(log.error, "");
    EXPECT_THAT(log.warnings, IsEmpty());
    ASSERT_EQ(log.rows.size(), count);
}

TEST(Delimited, TabsCommasAndSemicolons) {
    for (const char* delimiter : {"\t", ",", ";"}) {
        const Log log =
            read_csv(joined({"Name", "Reel", "Start", "End", "Keycode"}, delimiter) + "\n" +
                     joined({"1-1", "003", "01:00:00:00", "01:00:10:00", "KJ12 3456 7890+12"}, delimiter) + "\n");
        ASSERT_NO_FATAL_FAILURE(expect_rows(log, 1));
        EXPECT_EQ(log.rows[0][LogField::reel], "003");
        EXPECT_EQ(log.rows[0][LogField::key_start], "KJ1234567890+12");
        EXPECT_EQ(log.rows[0].line, 2);
    }
}

TEST(Delimited, LinesAboveTheHeaderAreLeftOut) {
    const Log log = read_csv("Dailies of day 3\n\nstart time,end time\n01:00:00:00,01:00:01:00\n");
    ASSERT_NO_FATAL_FAILURE(expect_rows(log, 1));
    EXPECT_EQ(log.rows[0].line, 4);
}

TEST(Delimited, NamesOfLoggingTablesAreRead) {
    const Log log =
        read_csv("name,reel,start time,end time,label_std,cam reel,start keycode,film label_std,lab reel,shot\n"
                 "a,1,01:00:00;00,01:00:01;00,29.97df,A7,KJ1234567890+12.2,35mm-3p,L1,4\n",
                 0);
    ASSERT_NO_FATAL_FAILURE(expect_rows(log, 1));
    EXPECT_EQ(log.rows[0].standard.rate, 5);
    EXPECT_TRUE(log.rows[0].standard.drop);
    EXPECT_EQ(log.rows[0].film, 12);
    EXPECT_EQ(log.rows[0][LogField::take], "4");
    EXPECT_EQ(log.rows[0][LogField::key_start], "KJ1234567890+12.2");
}

TEST(Delimited, QuotedCellsHoldDelimitersQuotesAndLineEnds) {
    const Log log = read_csv("Name,Start,End,Notes\n"
                             "\"a, b\",01:00:00:00,01:00:01:00,\"says \"\"no\"\"\"\n"
                             "c,01:00:02:00,01:00:03:00,\"two\nlines\"\n"
                             "d,01:00:04:00,01:00:05:00,\n");
    ASSERT_NO_FATAL_FAILURE(expect_rows(log, 3));
    EXPECT_EQ(log.rows[0][LogField::name], "a, b");
    EXPECT_EQ(log.rows[0][LogField::notes], "says \"no\"");
    EXPECT_EQ(log.rows[1][LogField::notes], "two lines");
    EXPECT_EQ(log.rows[2].line, 5);
}

TEST(Delimited, AColumnThatStandsTwiceIsToldAtTheHeader) {
    const Log log = read_csv("Name,Start,End,Start TC,Start\na,01:00:00:00,01:00:01:00,,\n");
    EXPECT_THAT(log.warnings, ElementsAre(HasSubstr("day.csv:1:1: column \"Start\" stands twice")));
}

TEST(Delimited, TheRateOfARowSaysThatItDropsFrames) {
    const std::string rows = "Name,Start,End,FPS\na,01:00:00:02,01:00:01:00,29.97df\nb,01:00:02:00,01:00:03:00,29.97\n";
    const Log own = read(rows, "day.csv");
    ASSERT_EQ(own.rows.size(), 2u);
    EXPECT_TRUE(own.rows[0].standard.drop);
    EXPECT_FALSE(own.rows[1].standard.drop);
    LogOptions options;
    options.rate = embedded::nearest_rate(29.97);
    const Log told = read(rows, "day.csv", options);
    ASSERT_EQ(told.rows.size(), 2u);
    EXPECT_FALSE(told.rows[0].standard.drop) << "who is told the rate asks no row for it";
}

TEST(Delimited, ARowWithoutAnEndIsToldWhereItsEndWouldStand) {
    const Log log = read_csv("Name,Start,End\na,01:00:00:00,\n");
    EXPECT_THAT(log.warnings, ElementsAre(HasSubstr("day.csv:2:15: the row has neither end nor duration")));
}

TEST(Delimited, ColumnsOfMessagesCountQuotesToo) {
    const Log log = read_csv("Name,Start,End,Keycode\n\"a, b\",01:00:00:00,01:00:01:00,nonsense\n");
    EXPECT_THAT(log.warnings, ElementsAre(HasSubstr("day.csv:2:32: key number \"nonsense\"")));
}

TEST(Delimited, QuoteThatIsNotClosedIsToldAndKeepsItsRow) {
    const Log log = read_csv("Name,Start,End\n\"6 foot,01:00:00:00,01:00:01:00\nb,01:00:02:00,01:00:03:00\n");
    EXPECT_THAT(log.warnings, ElementsAre(HasSubstr("day.csv:2:1: a quote isn't closed")));
    ASSERT_EQ(log.rows.size(), 2u);
    EXPECT_EQ(log.rows[0][LogField::name], "\"6 foot");
    EXPECT_EQ(log.rows[0][LogField::start], "01:00:00:00");
}

TEST(Delimited, InchMarkInsideACellIsText) {
    const Log log = read_csv("Name,Start,End\n6\" lens,01:00:00:00,01:00:01:00\n");
    ASSERT_NO_FATAL_FAILURE(expect_rows(log, 1));
    EXPECT_EQ(log.rows[0][LogField::name], "6\" lens");
}

TEST(Delimited, RowsOfDelimitersAloneAreNone) {
    expect_rows(read_csv("Name,Start,End\n,,\na,01:00:00:00,01:00:01:00\n , ,\n"), 1);
}

TEST(Delimited, DurationInFrames) {
    const Log log = read_csv("Start,Frames\n01:00:00:00,36\n");
    ASSERT_NO_FATAL_FAILURE(expect_rows(log, 1));
    EXPECT_EQ(log.rows[0][LogField::end], "01:00:01:12");
}

TEST(Delimited, BadCellsAreToldByCharacters) {
    const Log log = read_csv("Name,Start,End,KeyIn\n\xC3\xA9t\xC3\xA9,01:00:00:00,01:00:01:00,nonsense\n");
    EXPECT_THAT(log.warnings, ElementsAre(HasSubstr("day.csv:2:29: key number \"nonsense\"")));
}

TEST(Delimited, RowWithoutItsEndIsKept) {
    const Log log = read_csv("Name,Start,End\na,01:00:00:00\n");
    EXPECT_THAT(log.warnings, ElementsAre(HasSubstr("neither end nor duration")));
    EXPECT_EQ(log.rows.size(), 1u);
}

TEST(Delimited, FilesThatCanNotBeUsedAreRefused) {
    EXPECT_THAT(read_csv("a,b\nc,d\n").error, HasSubstr("day.csv:1: no header row"));
    EXPECT_THAT(read_csv("").error, HasSubstr("day.csv: no header row"));
    EXPECT_THAT(read_csv("Name,Start\na,01:00:00:00\n").error, HasSubstr("day.csv:1: no column for the end"));
    EXPECT_THAT(read_csv("Start,End\n01:00:00:00,01:00:01:00\n", 0).error, HasSubstr("name it with --rate"));
    EXPECT_THAT(read_csv("Start,End\n").error, HasSubstr("holds no rows"));
}

TEST(Delimited, CellsBehindTheLastColumnAreTold) {
    const Log log = read_csv("Name,Start,End\na,01:00:00:00,01:00:01:00,more\n");
    EXPECT_THAT(log.warnings, ElementsAre(HasSubstr("day.csv:2:")));
    EXPECT_THAT(log.warnings, ElementsAre(HasSubstr("more cells than there are columns; left out")));
    EXPECT_EQ(log.rows.size(), 1u);
}

} // namespace
