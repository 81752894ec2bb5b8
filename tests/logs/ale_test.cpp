// ALE logs: what is read of them, and what becomes of those that break the rules.

#include "tests/logs/log_texts.h"

using namespace formats;
using namespace log_texts;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

const Cells plain_heading{"FIELD_DELIM\tTABS", "FPS\t24", "FILM_FORMAT\t35mm,4perf", "TAPE\tT01"};
const Cells plain_columns{"Name", "Tape", "Start", "End", "KN Start", "KN End"};
const Cells plain_row{"1-1", "003", "01:00:00:00", "01:00:10:00", "KJ123456-1234+05", "KJ123456-1249+05"};

std::string plain_ale(const std::string& end = "\n") { return ale(plain_heading, plain_columns, {plain_row}, end); }

/// The only row of a log without a word against it.
LogRow only_row(const std::string& bytes, const LogOptions& options = {}) {
    const Log log = read(bytes, "day.ale", options);
    EXPECT_EQ(log.error, "");
    EXPECT_THAT(log.warnings, IsEmpty());
    EXPECT_EQ(log.rows.size(), 1u);
    return log.rows.empty() ? LogRow() : log.rows[0];
}

LogRow row_of(const Cells& heading, const Cells& columns, const Cells& cells) {
    return only_row(ale(heading, columns, {cells}));
}

void expect_plain_row(const LogRow& row) {
    EXPECT_EQ(row[LogField::name], "1-1");
    EXPECT_EQ(row[LogField::reel], "003");
    EXPECT_EQ(row[LogField::start], "01:00:00:00");
    EXPECT_EQ(row[LogField::end], "01:00:10:00");
    EXPECT_EQ(row[LogField::duration], "00:00:10:00");
    EXPECT_EQ(row[LogField::key_start], "KJ1234561234+05");
    EXPECT_EQ(row.film, label_key_35mm_4p);
    EXPECT_EQ(row.standard.rate, 2);
    EXPECT_EQ(row.key_frames, 240);
    EXPECT_FALSE(row.pulldown);
}

/// A log of one row with warnings alone.
void expect_warning(const std::string& bytes, const std::string& text) {
    const Log log = read(bytes);
    EXPECT_EQ(log.error, "");
    EXPECT_EQ(log.rows.size(), 1u);
    ASSERT_EQ(log.warnings.size(), 1u) << testing::PrintToString(log.warnings);
    EXPECT_THAT(log.warnings[0], HasSubstr(text));
}

void expect_refused(const std::string& bytes, const std::string& text) {
    const Log log = read(bytes);
    EXPECT_THAT(log.rows, IsEmpty());
    EXPECT_THAT(log.error, HasSubstr(text));
}

TEST(Ale, RowWithItsLine) {
    const LogRow row = only_row(plain_ale());
    expect_plain_row(row);
    EXPECT_EQ(row.file, "day.ale");
    EXPECT_EQ(row.line, 11);
}

TEST(Ale, AnyLineEndsAndByteOrderMark) {
    for (const char* end : {"\n", "\r\n", "\r"}) {
        expect_plain_row(only_row(plain_ale(end)));
        expect_plain_row(only_row("\xEF\xBB\xBF" + plain_ale(end)));
    }
    std::string mixed = plain_ale("\r\n");
    mixed.replace(mixed.find("\r\n"), 2, "\r");
    expect_plain_row(only_row(mixed));
}

TEST(Ale, HeadingOnOneLine) { expect_plain_row(row_of({joined(plain_heading, "\t")}, plain_columns, plain_row)); }

TEST(Ale, HeadingPartedByBlanks) {
    expect_plain_row(row_of({"FPS 24", "FILM_FORMAT 35 mm"}, plain_columns, plain_row));
}

TEST(Ale, BlankLinesBehindHeadingsAreFree) {
    std::string text = plain_ale();
    for (const char* word : {"Column\n", "Data\n"})
        text.insert(text.find(word) + std::string(word).size(), "\n\n");
    expect_plain_row(only_row(text));
    expect_plain_row(only_row("Heading\nFPS\t24\nFILM_FORMAT\t35\nColumn\n" + joined(plain_columns, "\t") + "\nData\n" +
                              joined(plain_row, "\t")));
}

TEST(Ale, NamesOfColumnsInAnyCase) {
    expect_plain_row(row_of(plain_heading, {"NAME", "tape", "START", "end", "kn start", "Kn_End"}, plain_row));
}

TEST(Ale, TapeOfTheHeadingWhereARowHasNone) {
    Cells cells = plain_row;
    cells[1] = "  ";
    EXPECT_EQ(row_of(plain_heading, plain_columns, cells)[LogField::reel], "T01");
}

TEST(Ale, BlanksAtTheEndsOfCellsGo) {
    Cells cells = plain_row;
    for (std::string& cell : cells)
        cell = " " + cell + "  ";
    expect_plain_row(row_of(plain_heading, plain_columns, cells));
}

TEST(Ale, ShortRowsHaveEmptyCells) {
    const LogRow row = row_of(plain_heading, plain_columns, {"1-1", "003", "01:00:00:00", "01:00:10:00"});
    EXPECT_EQ(row[LogField::key_start], "");
    EXPECT_FALSE(row.key_start.is_useful());
}

TEST(Ale, CellsBehindTheLastColumnAreTold) {
    Cells cells = plain_row;
    cells.insert(cells.end(), {"", "more"});
    expect_warning(ale(plain_heading, plain_columns, {cells}), "day.ale:11:68: more cells than there are columns");
    cells.back() = " ";
    expect_plain_row(row_of(plain_heading, plain_columns, cells));
}

TEST(Ale, RateOfTheHeadingWinsOverTheColumn) {
    EXPECT_EQ(row_of({"FPS\t25"}, {"Start", "End", "FPS"}, {"01:00:00:00", "01:00:01:00", "48"}).standard.rate, 3);
    EXPECT_EQ(row_of({}, {"Start", "End", "FPS"}, {"01:00:00:00", "01:00:01:00", "23.976"}).standard.rate, 1);
}

TEST(Ale, VideoFormatGivesTheRateWhereFpsLacks) {
    const Cells columns{"Start", "End"};
    EXPECT_EQ(row_of({"VIDEO_FORMAT\tPAL"}, columns, {"01:00:00:00", "01:00:01:00"}).standard.rate, 3);
    EXPECT_EQ(row_of({"VIDEO_FORMAT\tNTSC"}, columns, {"01:00:00:00", "01:00:01:00"}).standard.rate, 5);
    EXPECT_EQ(row_of({"VIDEO_FORMAT\tPAL", "FPS\t23.976"}, columns, {"01:00:00:00", "01:00:01:00"}).standard.rate, 1);
}

TEST(Ale, RateOfTheCallerWinsOverAll) {
    LogOptions options;
    options.rate = embedded::nearest_rate(25);
    options.reel = "R9";
    options.film = static_cast<label_t>(11);
    const LogRow row = only_row(plain_ale(), options);
    EXPECT_EQ(row.standard.rate, 3);
    EXPECT_EQ(row[LogField::reel], "R9");
    EXPECT_EQ(row.film, 11);
}

TEST(Ale, SemicolonSaysDropFrame) {
    const LogRow row = row_of({"FPS\t29.97"}, {"Start", "End"}, {"01;00;00;00", "01;00;01;00"});
    EXPECT_TRUE(row.standard.drop);
    EXPECT_EQ(row[LogField::start], "01:00:00;00");
    EXPECT_FALSE(row_of({"FPS\t24"}, {"Start", "End"}, {"01;00;00;00", "01;00;01;00"}).standard.drop);
}

TEST(Ale, TimecodeThatDropFrameSkipsIsTheNext) {
    const std::string bytes = ale({"FPS\t29.97"}, {"Start", "End"}, {{"01:01:00;00", "01:01:02;00"}});
    expect_warning(bytes, "day.ale:8:1: start \"01:01:00;00\" doesn't exist in drop-frame");
    EXPECT_EQ(read(bytes).rows[0][LogField::start], "01:01:00;02");
}

TEST(Ale, EndFromTheDuration) {
    const LogRow row = row_of({"FPS\t24"}, {"Start", "Duration"}, {"01:00:00:00", "00:00:02:12"});
    EXPECT_EQ(row[LogField::end], "01:00:02:12");
}

TEST(Ale, EndFromTheDurationInFramesUnderAnyOfItsNames) {
    for (const char* name : {"DUR_FRAMES", "DUR_FR", "Frames"})
        EXPECT_EQ(row_of({"FPS\t24"}, {"Start", name}, {"01:00:00:00", "60"})[LogField::end], "01:00:02:12") << name;
}

TEST(Ale, DurationInFramesCountsBeforeDuration) {
    const Log log = read(ale({"FPS\t24"}, {"Start", "Duration", "Frames"},
                             {{"01:00:00:00", "00:00:01:00", "48"}, {"01:00:00:00", "00:00:01:00", ""}}));
    ASSERT_EQ(log.rows.size(), 2u);
    EXPECT_EQ(log.rows[0][LogField::end], "01:00:02:00");
    EXPECT_EQ(log.rows[1][LogField::end], "01:00:01:00");
}

TEST(Ale, EndsAreInclusiveWhereDurationsSaySo) {
    const Log log = read(ale({"FPS\t24"}, {"Start", "End", "Duration"},
                             {{"01:00:00:00", "01:00:01:23", "00:00:02:00"},
                              {"01:00:02:00", "01:00:02:11", "00:00:00:12"},
                              {"01:00:03:00", "01:00:04:00", ""}}));
    ASSERT_EQ(log.rows.size(), 3u);
    EXPECT_EQ(log.rows[0][LogField::end], "01:00:02:00");
    EXPECT_EQ(log.rows[2][LogField::end], "01:00:04:01");
}

TEST(Ale, ShotsOfOneFrameSayThatEndsAreInclusive) {
    const Log log = read(ale({"FPS\t25"}, {"Start", "End", "Duration"},
                             {{"18:15:32:19", "18:15:32:19", "00:00:00:01"},
                              {"18:15:33:00", "18:15:33:00", "00:00:00:01"},
                              {"18:15:34:00", "18:15:34:10", "00:00:00:10"}}));
    ASSERT_EQ(log.rows.size(), 3u);
    EXPECT_EQ(log.rows[0][LogField::end], "18:15:32:20");
    EXPECT_EQ(log.rows[0][LogField::duration], "00:00:00:01");
}

TEST(Ale, ShotsOfNoFrameSayNothingOfEnds) {
    const Log log =
        read(ale({"FPS\t25"}, {"Start", "End", "Duration"},
                 {{"01:00:00:00", "01:00:00:00", "00:00:00:00"}, {"01:00:01:00", "01:00:01:09", "00:00:00:10"}}));
    ASSERT_EQ(log.rows.size(), 2u);
    EXPECT_EQ(log.rows[1][LogField::end], "01:00:01:10");
}

TEST(Ale, KeyEndIsInclusiveWhereTheTimecodeLengthSaysSo) {
    Cells cells = plain_row;
    EXPECT_EQ(row_of(plain_heading, plain_columns, cells).key_frames, 240);
    cells[5] = "KJ123456-1249+04";
    EXPECT_EQ(row_of(plain_heading, plain_columns, cells).key_frames, 240);
    cells[5] = "KJ123456-1249+01";
    EXPECT_EQ(row_of(plain_heading, plain_columns, cells).key_frames, 236);
}

TEST(Ale, PulldownPhaseComesFromItsLetter) {
    const Cells columns{"Start", "End", "KN Start", "Pullin"};
    const LogRow row = row_of({"FPS\t29.97"}, columns, {"01:00:00:03", "01:00:10:03", "KJ123456 1234+00", "X"});
    EXPECT_TRUE(row.pulldown);
    EXPECT_EQ(row.phase, 2);
    const LogRow silent = row_of({"FPS\t30"}, columns, {"01:00:00:03", "01:00:10:03", "KJ123456 1234+00", ""});
    EXPECT_TRUE(silent.pulldown);
    EXPECT_EQ(silent.phase, 0);
    expect_warning(ale({"FPS\t30"}, columns, {{"01:00:00:03", "01:00:10:03", "", "Q"}}), "taken as A");
}

TEST(Ale, CadenceCanTakeThePulldownAway) {
    const Cells columns{"Start", "End", "Cadence"};
    EXPECT_FALSE(row_of({"FPS\t29.97"}, columns, {"01:00:00:00", "01:00:10:00", "NONE"}).pulldown);
    EXPECT_TRUE(row_of({"FPS\t29.97"}, columns, {"01:00:00:00", "01:00:10:00", "NORM"}).pulldown);
    expect_warning(ale({"FPS\t29.97"}, columns, {{"01:00:00:00", "01:00:10:00", "ADVA"}}), "advanced pulldown");
}

TEST(Ale, AllOtherColumnsGoToTheirFields) {
    const LogRow row =
        row_of({"FPS\t24"},
               {"Start", "End", "Camroll", "Labroll", "Daily roll", "Soundroll", "Sound TC", "TC 24", "Ink Number",
                "Perf", "Scene", "Take", "Shoot Date", "DESCRIPT", "COMMENTS", "Camera TC", "KN Film", "KN Start"},
               {"01:00:00:00", "01:00:10:00", "A7", "L3", "D2", "S5", "11:12:13:14", "02:00:00:00", "042 1234+05", "2",
                "12A", "3", "07/21/14", "Rain", "Soft", "13:00:00:00", "35mm, 3 perf", "KJ12 3456 7890+10"});
    EXPECT_EQ(row[LogField::cam_reel], "A7");
    EXPECT_EQ(row[LogField::lab_reel], "L3");
    EXPECT_EQ(row[LogField::comp_reel], "D2");
    EXPECT_EQ(row[LogField::snd_reel], "S5");
    EXPECT_EQ(row[LogField::snd_start], "11:12:13:14");
    EXPECT_EQ(row[LogField::start_24p], "02:00:00:00");
    EXPECT_EQ(row[LogField::ink_start], "042_1234+05");
    EXPECT_EQ(row[LogField::key_start], "KJ1234567890+10.2");
    EXPECT_EQ(row[LogField::name], "12A-3");
    EXPECT_EQ(row[LogField::cam_date], "07/21/14");
    EXPECT_EQ(row[LogField::description], "Rain");
    EXPECT_EQ(row[LogField::notes], "Soft");
    EXPECT_EQ(row[LogField::cam_code], "13:00:00:00");
    EXPECT_EQ(row.film, 12);
}

TEST(Ale, BadCellsAreToldWithTheirPlaceAndNeverShiftTheRow) {
    Cells cells = plain_row;
    cells[4] = "KX65-99";
    expect_warning(ale(plain_heading, plain_columns, {cells}),
                   "day.ale:11:33: key number \"KX65-99\" isn't a key number");
    cells = plain_row;
    cells[2] = "01:00:99:00";
    const std::string bytes = ale(plain_heading, plain_columns, {cells});
    expect_warning(bytes, "day.ale:11:9: start \"01:00:99:00\" isn't a timecode");
    EXPECT_EQ(read(bytes).rows[0][LogField::start], "01:00:99:00");
    EXPECT_EQ(read(bytes).rows[0][LogField::key_start], "KJ1234561234+05");
}

TEST(Ale, EachRowOfTheFileIsARow) {
    const Log log =
        read(ale({"FPS\t24"}, {"Name", "Start", "End"},
                 {{"a", "x", "y"}, {"b"}, {"c", "01:00:00:00", "01:00:01:00"}, {"\t\t", ""}, {"d", "", ""}}));
    ASSERT_EQ(log.rows.size(), 4u);
    EXPECT_EQ(log.rows[2][LogField::start], "01:00:00:00");
    EXPECT_EQ(log.rows[3].line, 12);
}

TEST(Ale, PlaceholdersCountAsEmpty) {
    Cells cells = plain_row;
    cells[4] = "N/A";
    cells[5] = "--";
    EXPECT_EQ(row_of(plain_heading, plain_columns, cells)[LogField::key_start], "");
}

TEST(Ale, DashesStandInADescriptionAndNotInATag) {
    const LogRow row = row_of({"FPS\t25"}, {"Start", "End", "DESCRIPT", "Cadence", "DOP", "Tag"},
                              {"01:00:00:00", "01:00:01:00", "--", "none", "n/a", "N/A"});
    EXPECT_EQ(row[LogField::description], "--");
    EXPECT_EQ(row[LogField::who], "n/a");
    EXPECT_EQ(row[LogField::tag], "");
}

TEST(Ale, ColumnThatStandsTwice) {
    expect_warning(ale({"FPS\t24"}, {"Start", "End", "Start"}, {{"01:00:00:00", "01:00:01:00", "02:00:00:00"}}),
                   "day.ale:5:1: column \"Start\" stands twice");
}

TEST(Ale, OtherLettersThanUtf8AreLatin) {
    Cells cells = plain_row;
    cells[0] = "Br\xFC"
               "ckenstra\xDF"
               "e";
    const Log log = read(ale(plain_heading, plain_columns, {cells}));
    EXPECT_THAT(log.warnings,
                ElementsAre(embedded::Warning(embedded::WarningKind::text, "day.ale: isn't UTF-8; taken as Latin-1")));
    ASSERT_EQ(log.rows.size(), 1u);
    EXPECT_EQ(log.rows[0][LogField::name], "Br\xC3\xBC"
                                           "ckenstra\xC3\x9F"
                                           "e");
}

TEST(Ale, FilesThatCanNotBeUsedAreRefusedWithTheirLine) {
    expect_refused("", "day.ale");
    expect_refused("Column\nStart\tEnd\n", "day.ale:1: no line \"Heading\"");
    expect_refused("Heading\nFPS\t24\n", "no line \"Column\"");
    expect_refused("Heading\nFPS\t24\nColumn\n\nData\n", "day.ale:5: no names behind \"Column\"");
    expect_refused("Heading\nFPS\t24\nColumn\nName\tEnd\nData\n", "day.ale:4: no column \"Start\"");
    expect_refused("Heading\nFPS\t24\nColumn\nName\tStart\nData\n", "day.ale:4: neither a column \"End\"");
    expect_refused("Heading\nColumn\nStart\tEnd\nData\n", "day.ale:3: no frame rate");
    expect_refused("Heading\nFPS\t24\nColumn\nStart\tEnd\n", "no line \"Data\"");
    expect_refused("Heading\nFPS\t24\nColumn\nStart\tEnd\nData\n", "day.ale: holds no rows");
    expect_refused(std::string("Heading\0", 8), "isn't text");
    expect_refused("\xFF\xFEH", "16-bit");
}

TEST(Ale, BadPairsOfTheHeadingAreTold) {
    expect_warning(ale({"FPS\t24", "FILM_FORMAT\tcloth"}, {"Start", "End"}, {{"01:00:00:00", "01:00:01:00"}}),
                   "day.ale:3:13: film_format \"cloth\"");
    const Log log = read(ale({"FPS\tmany"}, {"Start", "End"}, {{"01:00:00:00", "01:00:01:00"}}));
    EXPECT_THAT(log.warnings, ElementsAre(HasSubstr("day.ale:2:5: fps \"many\" isn't a frame rate")));
    EXPECT_THAT(log.error, HasSubstr("no frame rate"));
}

TEST(Ale, CommasMayPartTheCells) {
    Cells heading = plain_heading;
    heading[0] = "FIELD_DELIM\tCOMMAS";
    std::string text = ale(heading, {}, {});
    text = text.substr(0, text.find("Column")) + "Column\n" + joined(plain_columns, ",") + "\nData\n" +
           joined(plain_row, ",") + "\n";
    expect_plain_row(only_row(text));
    heading[0] = "FIELD_DELIM\tSTARS";
    expect_warning(ale(heading, plain_columns, {plain_row}), "field_delim \"STARS\" isn't known; taken as TABS");
}

TEST(Ale, NamesBehindTheLastColumnMayBeEmpty) {
    Cells columns = plain_columns;
    columns.insert(columns.end(), {"", " "});
    expect_plain_row(row_of(plain_heading, columns, plain_row));
}

TEST(Ale, FilmOfARowThatIsNotKnownIsTold) {
    Cells columns = plain_columns, cells = plain_row;
    columns.push_back("Gauge");
    cells.push_back("48mm");
    expect_warning(ale(plain_heading, columns, {cells}), "\"48mm\" isn't known");
}

TEST(Ale, FramesThatAFootDoesNotHaveAreTold) {
    struct Case {
        const char *film, *key, *told, *read;
    };
    for (const Case& each : {
             Case{"35mm,4perf", "KJ123456-1234+32", "is a mid-foot mark of 32 perforations; taken as that",
                  "KJ1234561234+08"},
             Case{"35mm,4perf", "KJ123456-1234+16", "has more frames than a count of this film; carried",
                  "KJ1234561235+00"},
             Case{"35mm,3perf", "KJ123456-1234+05.4", "has a perforation that no frame of this film has; left out",
                  "KJ1234561234+05"},
         }) {
        Cells heading = plain_heading, cells = plain_row;
        heading[2] = std::string("FILM_FORMAT\t") + each.film;
        cells[4] = each.key;
        cells[5] = "";
        const std::string text = ale(heading, plain_columns, {cells});
        expect_warning(text, each.told);
        EXPECT_EQ(std::string(LabelPoint(read(text).rows.at(0).key_start).get_string()).substr(0, 15), each.read);
    }
}

TEST(Ale, NamesWithControlCharactersAreTold) {
    Cells cells = plain_row;
    cells[0] = "a\x1b[2J";
    expect_warning(ale(plain_heading, plain_columns, {cells}), "day.ale:11:1: ");
}

} // namespace
