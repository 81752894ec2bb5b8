#include "reports/report.h"
#include "tests/support/environment.h"
#include "tests/support/memory_files.h"
#include "tests/support/plain_lines.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <string>

namespace {

class PageWriter : public testing::Test {
protected:
    const std::string& bytes() const { return contents.bytes; }
    std::string plain() const { return plain_lines(contents.bytes); }

    EnvironmentValue zone{"TZ", "UTC"};
    EnvironmentValue now{"SOURCE_DATE_EPOCH", "1000000000"};
    MemoryStream::Contents contents;
    report out{Qb::Ptr<stream>(new MemoryStream(contents))};
};

TEST_F(PageWriter, StartsOnTheFifthLineOfAnEndlessPage) {
    EXPECT_EQ(out.passthrough, 0);
    EXPECT_EQ(out.page_length, 2000);
    EXPECT_EQ(out.page_width, 130);
    EXPECT_EQ(out.top_margin, 4);
    EXPECT_EQ(out.bottom_margin, 4);
    EXPECT_EQ(out.page, 0);
    EXPECT_EQ(out.column, 0);
    EXPECT_EQ(out.line, 4);
    EXPECT_EQ(out.tab_index, 0);
    EXPECT_EQ(out.page_header, nullptr);
    EXPECT_STREQ(out.date.get_named_date(), "9 September 2001 01:46:40");
}

TEST_F(PageWriter, CountsWritersAndKeepsEveryFifthColumn) {
    const int built = report::reports_built;
    const report another{Qb::Ptr<stream>()};
    EXPECT_EQ(report::reports_built, built + 1);
    for (int stop = 0; stop < 20; ++stop)
        EXPECT_EQ(report::default_stops[stop], 5 * (stop + 1));
}

TEST_F(PageWriter, ClosesTheStreamWhenItGoes) {
    MemoryStream::Contents file;
    {
        const report other{Qb::Ptr<stream>(new MemoryStream(file))};
        EXPECT_FALSE(file.closed);
    }
    EXPECT_TRUE(file.closed);
}

TEST_F(PageWriter, LeavesASharedStreamOpen) {
    MemoryStream::Contents file;
    const Qb::Ptr<stream> shared(new MemoryStream(file));
    { const report other{shared}; }
    EXPECT_FALSE(file.closed);
}

TEST_F(PageWriter, WritesOneByteAtATime) {
    out.print_text("four");
    EXPECT_EQ(contents.writes, 4);
    EXPECT_EQ(contents.longest_write, 1U);
}

TEST_F(PageWriter, WithoutAStreamBytesVanish) {
    report silent{Qb::Ptr<stream>()};
    silent.print_text("nobody hears\n");
    EXPECT_EQ(silent.line, 5);
}

TEST_F(PageWriter, DropsWhatLiesBeyondTheWidthAndCountsOn) {
    static constexpr int stops[] = {135, 145, 0};
    out.tab_stops = stops;
    out.print_text(std::string(140, 'x').c_str());
    EXPECT_EQ(bytes(), std::string(130, 'x'));
    EXPECT_EQ(out.column, 140);
    out.put_char('\t');
    EXPECT_EQ(out.column, 140);
    out.put_char('\t');
    EXPECT_EQ(out.column, 145);
    EXPECT_EQ(bytes().size(), 130U);
}

TEST_F(PageWriter, PadsToTheStopsInTurn) {
    static constexpr int stops[] = {3, 6, 0};
    out.tab_stops = stops;
    out.print_text("a\tb\tc\n\td");
    EXPECT_EQ(bytes(), "a  b  c\r\n   d");
}

TEST_F(PageWriter, AStopThatIsPassedIsUsedUp) {
    static constexpr int stops[] = {3, 8, 0};
    out.tab_stops = stops;
    out.print_text("abcd\te\tf");
    EXPECT_EQ(bytes(), "abcde   f");
}

TEST_F(PageWriter, TabsBehindTheLastStopPadNothing) {
    static constexpr int stops[] = {3, 0};
    out.tab_stops = stops;
    out.print_text("a\tb\tc\td\te");
    EXPECT_EQ(bytes(), "a  bcde");
}

TEST_F(PageWriter, TabsWithoutATablePadNothing) {
    out.print_text("a\tb");
    EXPECT_EQ(bytes(), "ab");
}

TEST_F(PageWriter, LinesEndInCarriageReturnAndLineFeed) {
    out.print_text("a\r\nb\n");
    EXPECT_EQ(bytes(), "a\r\nb\r\n");
}

TEST_F(PageWriter, BlankLinesBehindAFormFeedAreLineFeedsAlone) {
    out.top_margin = 3;
    out.put_char('\f');
    EXPECT_EQ(bytes(), "\f\n\n\n");
    EXPECT_EQ(out.page, 1);
    EXPECT_EQ(out.line, 3);
}

TEST_F(PageWriter, OtherControlCharactersTakeNoColumn) {
    out.print_text("a\x01\x1b"
                   "b");
    EXPECT_EQ(bytes(), "a\x01\x1b"
                       "b");
    EXPECT_EQ(out.column, 2);
}

TEST_F(PageWriter, DeleteTakesAColumn) {
    out.put_char(127);
    EXPECT_EQ(out.column, 1);
}

TEST_F(PageWriter, BytesOfWideCharactersAreNeitherCutNorCounted) {
    out.page_width = 2;
    out.print_text("abc\xC3\xA9");
    EXPECT_EQ(bytes(), "ab\xC3\xA9");
    EXPECT_EQ(out.column, 3);
}

TEST_F(PageWriter, TheNewlineThatReachesTheFootStartsTheNextPage) {
    out.page_length = 60;
    out.top_margin = 2;
    out.bottom_margin = 1;
    out.page_width = 5;
    out.page_header = "HEAD |p";
    out.line = 57;
    out.put_char('\n');
    EXPECT_EQ(plain(), "\n");
    out.put_char('\n');
    EXPECT_EQ(plain(), "\n\n<FF>\n\nHEAD \n____\n") << "the page number lies beyond the width";
    EXPECT_EQ(out.page, 1);
    EXPECT_EQ(out.line, 4);
}

TEST_F(PageWriter, ANewPageWithoutAHeadingHasItsRule) {
    out.page_width = 4;
    out.top_margin = 1;
    out.new_page();
    EXPECT_EQ(plain(), "<FF>\n\n___\n");
}

TEST_F(PageWriter, PassthroughLeavesTheLayoutToTheReader) {
    static constexpr int stops[] = {8, 0};
    out.tab_stops = stops;
    out.passthrough = 1;
    out.print_text("a\tb");
    out.rule();
    out.new_page();
    EXPECT_EQ(bytes(), "a\tb\r\n");
    EXPECT_EQ(out.page, 0);
}

TEST_F(PageWriter, ARuleIsOneShortOfTheWidth) {
    out.rule();
    EXPECT_EQ(plain(), "\n" + std::string(129, '_') + "\n");
}

TEST_F(PageWriter, APlainRuleIgnoresPassthrough) {
    out.passthrough = 1;
    out.page_width = 4;
    out.plain_rule();
    EXPECT_EQ(plain(), "\n___\n");
}

TEST_F(PageWriter, APlainRuleOfNoWidthIsTwoNewlines) {
    out.page_width = 1;
    out.plain_rule();
    EXPECT_EQ(plain(), "\n\n");
}

TEST_F(PageWriter, BarWordsGiveThePageAndTheDate) {
    out.page = 6;
    out.print_text("|p of |d.");
    EXPECT_EQ(bytes(), "7 of 9 September 2001 01:46:40.");
}

TEST_F(PageWriter, TheDateIsThatOfTheMoment) {
    const EnvironmentValue later("SOURCE_DATE_EPOCH", "0");
    out.print_text("|d");
    EXPECT_EQ(bytes(), "1 January 1970 00:00:00");
}

TEST_F(PageWriter, ABarVanishesWithWhatFollowsIt) {
    out.print_text("a|xb||c|");
    EXPECT_EQ(bytes(), "abc");
}

TEST_F(PageWriter, BarWordsActInsideAField) {
    out.print("<%s>", "take|p");
    EXPECT_EQ(bytes(), "<take1>");
}

TEST_F(PageWriter, NullTextsPrintNothing) {
    out.print_text(nullptr);
    const char* format = nullptr;
    out.print(format, 1);
    EXPECT_EQ(bytes(), "");
}

TEST_F(PageWriter, ALongTextIsCut) {
    out.page_width = 5000;
    out.print("%s", std::string(3000, 'x').c_str());
    EXPECT_EQ(bytes(), std::string(1023, 'x'));
}

TEST_F(PageWriter, RoomEndsWhereTheBlockWouldTouchTheFoot) {
    out.page_length = 60;
    out.bottom_margin = 1;
    out.line = 54;
    out.need_lines(4);
    EXPECT_EQ(out.page, 0);
    out.need_lines(5);
    EXPECT_EQ(out.page, 1);
}

TEST_F(PageWriter, AListEndsWithARuleWhereThereIsRoom) {
    out.page_width = 3;
    out.top_margin = 1;
    out.end_list("\nEnd");
    EXPECT_EQ(plain(), "\nEnd\n__\n<FF>\n");
}

TEST_F(PageWriter, AListThatEndsAtTheFootHasNoRule) {
    out.page_length = 60;
    out.top_margin = out.bottom_margin = 1;
    out.line = 57;
    out.end_list("\nEnd");
    EXPECT_EQ(plain(), "\nEnd<FF>\n");
}

// Whatever is printed, no line is wider than the page and no page longer.
TEST_F(PageWriter, AnyTextKeepsWithinItsPages) {
    EXPECT_TRUE(rc::check([](const std::string& text) {
        MemoryStream::Contents file;
        report page{Qb::Ptr<stream>(new MemoryStream(file))};
        page.page_length = 12;
        page.page_width = 10;
        page.top_margin = page.bottom_margin = page.line = 1;
        page.print_text(text.c_str());
        int column = 0;
        int line = 1;
        for (const char c : file.bytes) {
            if (static_cast<signed char>(c) >= 32) ++column;
            if (c == '\n') {
                column = 0;
                ++line;
            }
            if (c == '\f') line = 0;
            RC_ASSERT(column <= 10);
            RC_ASSERT(line <= 11);
        }
    }));
}

} // namespace
