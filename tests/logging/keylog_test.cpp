// Import of Keylog files.

#include "logging/keylog_columns.h"
#include "quillbrook/keylog.h"
#include "tests/logging/film_tables.h"
#include "tests/logging/keylog_text.h"
#include "tests/support/recording_logger.h"

#include <gmock/gmock.h>
#include <memory>
#include <rapidcheck.h>

using namespace keylog;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;

namespace {

/// Closes the file that a failed import leaves open.
class Import : public ftldb {
public:
    using ftldb::ftldb;
    ~Import() override {
        if (file && !get_valid()) std::fclose(file);
    }
    using filmdb::film_origin;
    using filmdb::film_rate;
    using filmdb::film_std;
    using filmdb::pulldown;
    using loggingdb::snd_std;
    using loggingdb::vid_std;
};

constexpr const char* short_line = "WARNING:  Keylog file has short line.  Ignored\n";
constexpr const char* no_header = "No Keylog header found: cannot process file";
constexpr const char* no_standards = "Input file has no standards line: cannot process\n";

class Keylog : public testing::Test {
protected:
    Import& import(const std::string& bytes) {
        put_bytes(folder.file("day.flx.txt"), bytes);
        logger.lines.clear();
        table = std::make_unique<Import>(wide(folder.file("day.flx.txt")), logger, LightweightString<wchar_t>());
        return *table;
    }
    Import& import_lines(const std::vector<std::string>& lines) { return import(file_of(lines)); }
    /// One record behind a full header.
    Import& import_record(const std::vector<Place>& places, const std::string& standard = "ntsc") {
        return import_lines({full_header(), standards("35", "4", standard, "VTR001"), line_of(places, 320)});
    }
    std::string field(unsigned column, unsigned row = 0) { return table->getField(row, column).c_str(); }

    ScratchDirectory folder;
    RecordingLogger logger;
    std::unique_ptr<Import> table;
};

const std::vector<Place> whole_record = {
    {0, "       1"},
    {camroll, "A12345"},
    {soundroll, "01020304"},
    {scene, "12A"},
    {take, "3"},
    {vttc_in, "01:02:03:04"},
    {vttc_out, "01:02:10:00"},
    {nagra_in, "09:08:07:06"},
    {vttc_drop, "N"},
    {nagra_drop, "N"},
    {keyin, "KJ12345678+01"},
    {pullin, "A"},
    {descript, "A pan"},
    {comments, "Good"},
    {perfin, "2"},
    {ink_in, "AA123409"},
    {labroll, "L77"},
    {dlyroll, "D88"},
    {slate, "99"},
};

TEST_F(Keylog, FillsTheColumnsAsTheMapHasThem) {
    import_record(whole_record);
    EXPECT_EQ(table->get_valid(), 1);
    EXPECT_EQ(table->get_error(), fdb_ok);
    ASSERT_EQ(table->get_num_records(), 1U);
    const std::pair<unsigned, const char*> filled[] = {
        {0, "12A-3"},     {1, "001"},          {2, "01:02:03:04"},    {3, "01:02:10:00"}, {4, "29.97fps"},
        {7, "0"},         {12, "A123+45"},     {13, "KJ12345678+01"}, {14, "2"},          {19, "01020304"},
        {20, "29.97fps"}, {21, "N"},           {22, "D88"},           {23, "L77"},        {24, "AA1234+09"},
        {28, "A pan"},    {29, "Good / Good"},
    };
    std::vector<std::string> expected(32);
    for (const auto& [column, text] : filled)
        expected[column] = text;
    for (unsigned column = 0; column < 32; ++column)
        EXPECT_EQ(field(column), expected[column]) << column;
    EXPECT_THAT(logger.lines, IsEmpty());
}

TEST_F(Keylog, SetsTheHeaderFromTheStandardsLine) {
    import_lines({"some report", full_header(), standards("35", "3", "pal", "VTROLL0042")});
    EXPECT_EQ(table->film_std, gauge_35mm_3p);
    EXPECT_EQ(param(*table, "film label_std"), "35mm-3p");
    EXPECT_EQ(param(*table, "label_std"), "25fps");
    EXPECT_EQ(param(*table, "snd label_std"), "25fps");
    EXPECT_EQ(param(*table, "frame origin"), "Y");
    EXPECT_EQ(param(*table, "film rate"), "24    ");
    EXPECT_EQ(param(*table, "pulldown"), "N");
    EXPECT_EQ(table->film_origin, 1);
    EXPECT_EQ(table->film_rate, 24.0);
    EXPECT_EQ(std::string(toUTF8(table->get_filename()).view()), folder.file("day.flx.RDB"));
}

TEST_F(Keylog, KnowsGauges) {
    for (const auto& [gauge, perforations, text] :
         {std::tuple("35", "4", "35mm-4p"), {"16", "3", "16mm-1p"}, {"65", "", "65mm-5p120"}, {"x", "3", ""}}) {
        import_lines({full_header(), standards(gauge, perforations, "pal", "")});
        EXPECT_EQ(param(*table, "film label_std"), text) << gauge;
    }
}

TEST_F(Keylog, OnlyShortNamesOfStandardsArrive) {
    struct {
        const char* name;
        int rate;
    } const cases[] = {{"pal", 3}, {" pal", 3}, {"ntsc", 5}, {"ntsc_drop_frame", 5}, {"pal_24", 0}, {"NTSC", 0}};
    for (const auto& one : cases) {
        import_lines({full_header(), standards("35", "4", one.name, "")});
        EXPECT_EQ(table->vid_std.rate, one.rate) << one.name;
        EXPECT_EQ(table->vid_std.drop, 0) << one.name;
    }
}

TEST_F(Keylog, AnUnknownStandardIsWrittenForThePictureAlone) {
    import_lines({full_header(), standards("35", "4", "secam", "")});
    EXPECT_EQ(param(*table, "label_std"), "");
    EXPECT_EQ(param(*table, "snd label_std"), "25fps");
    EXPECT_EQ(table->get_valid(), 1);
}

TEST_F(Keylog, ATMarksRowsOfDropFrame) {
    import_lines({full_header(), standards("35", "4", "ntsc", "VTR1"),
                  line_of({{vttc_in, "01 02 03 04"}, {vttc_out, "01:02:03:05"}, {vttc_drop, "T"}}, 320),
                  line_of({{vttc_in, "01 02 03 04"}, {vttc_drop, "t"}, {soundroll, "1:2:3"}, {nagra_drop, "T"}}, 320)});
    EXPECT_EQ(field(2), "01:02:03;04");
    EXPECT_EQ(field(3), "01:02:03;05");
    EXPECT_EQ(field(4), "29.97df");
    EXPECT_EQ(field(20), "29.97fps");
    EXPECT_EQ(field(2, 1), "01 02 03 04");
    EXPECT_EQ(field(4, 1), "29.97fps");
    EXPECT_EQ(field(19, 1), "1:2;3");
    EXPECT_EQ(field(20, 1), "29.97df");
}

TEST(KeylogStandards, EachNameHasItsRate) {
    const auto standard = [](const char* name) {
        const TCInf found = keylog_tv_standard(name);
        return std::to_string(found.rate) + (found.drop ? " drop" : "");
    };
    EXPECT_EQ(standard("pal"), "3");
    EXPECT_EQ(standard("ntsc"), "5");
    EXPECT_EQ(standard("ntsc_drop_frame"), "5 drop");
    EXPECT_EQ(standard("pal_24"), "2");
    EXPECT_EQ(standard("ntsc_24"), "2");
    EXPECT_EQ(standard("ntsc_drop_frame_24"), "2 drop");
    EXPECT_EQ(standard("PAL"), "0");
    EXPECT_EQ(standard(""), "0");
}

TEST_F(Keylog, TakesTheReelFromTheComments) {
    const std::pair<const char*, const char*> cases[] = {
        {"VTROLL12345678999", "12345678"},
        {"vtroll007 ", "007     "},
        {"VtrAB", "AB      "},
        {"VTR OLL", " OLL    "},
        {"reel 7", ""},
    };
    for (const auto& [comment, reel] : cases) {
        import_lines({full_header(), standards("35", "4", "pal", comment)});
        EXPECT_STREQ(table->get_reelid(), reel) << comment;
    }
}

TEST_F(Keylog, TheReelEndsWithItsColumn) {
    const std::string header = line_of({{0, header_line}, {218, "DUR_FR"}}, 0);
    import_lines({header, line_of({{comments, "VTR1234X"}, {218, "99"}}, 230)});
    EXPECT_STREQ(table->get_reelid(), "1234");
    import_lines({line_of({{0, header_line}, {218, "DUR_FR"}}, 0), line_of({{comments, "VTROLL"}}, 216)});
    EXPECT_STREQ(table->get_reelid(), "\n");
}

TEST_F(Keylog, AReelWordWithNothingBehindItNamesNoReel) {
    for (const char* word : {"VTR", "VTROLL"}) {
        import(full_header() + "\n" + line_of({{descript, "35"}, { comments, word }}, 0));
        EXPECT_EQ(table->get_valid(), 1);
        EXPECT_STREQ(table->get_reelid(), "") << word;
    }
}

TEST_F(Keylog, AColumnBehindTheLinesEndIsEmptyWhateverTheRowBeforeHad) {
    import_lines({full_header(), standards("35", "4", "pal", "VTR001"),
                  line_of({{ink_in, "AB1234"}, {labroll, "L7"}, {dlyroll, "D9"}}, 320),
                  line_of({{scene, "1"}, {take, "2"}}, 220)});
    EXPECT_EQ(field(22, 0), "D9");
    EXPECT_EQ(field(23, 0), "L7");
    EXPECT_EQ(field(24, 0), "AB12+34");
    EXPECT_EQ(field(0, 1), "1-2");
    for (const unsigned column : {22U, 23U, 24U})
        EXPECT_EQ(field(column, 1), "") << column;
}

TEST_F(Keylog, EightyCharactersOfTheCommentsAreRepeated) {
    const std::string header = line_of({{0, header_line}, {400, "DUR_FR"}}, 0);
    const std::string eighty = std::string(79, 'x') + "y";
    import_lines({header, standards("35", "4", "pal", ""), line_of({{comments, eighty + "zz"}}, 405)});
    EXPECT_EQ(field(29), eighty + "zz / " + eighty);
}

TEST_F(Keylog, KeepsItsReelWhenRowsGetAnother) {
    import_lines({full_header(), standards("35", "4", "pal", "VTR001 "), line_of({}, 320), line_of({}, 320)});
    EXPECT_EQ(field(1, 1), "001");
    table->set_reelid("B07");
    EXPECT_EQ(field(1, 0), "B07");
    EXPECT_EQ(field(1, 1), "B07");
    EXPECT_STREQ(table->get_reelid(), "001     ");
}

TEST_F(Keylog, SettingTheReelOfNoRowsDoesNothing) {
    import_lines({full_header(), standards("35", "4", "pal", "VTR001")});
    table->set_reelid("B07");
    EXPECT_EQ(table->get_num_records(), 0U);
    EXPECT_EQ(table->get_valid(), 1);
}

TEST_F(Keylog, NamesTakesBySceneAndTake) {
    EXPECT_EQ((import_record({{scene, "12A"}, {take, "3"}}), field(0)), "12A-3");
    EXPECT_EQ((import_record({{take, "3"}}), field(0)), "3");
    EXPECT_EQ((import_record({{scene, "12A"}}), field(0)), "12A-");
    EXPECT_EQ((import_record({{scene, "12A"}, {take, " 3"}}), field(0)), "12A- 3");
}

TEST_F(Keylog, PartsFramesFromKeyNumbers) {
    const std::pair<const char*, const char*> cases[] = {
        {"123409", "1234+09"}, {"1234+09", "1234+09"}, {"+1", "+1"}, {"12", "+12"}, {"1", "1"}, {"", ""},
    };
    for (const auto& [text, stored] : cases)
        EXPECT_EQ((import_record({{ink_in, text}}), field(24)), stored);
}

TEST_F(Keylog, NotesHoldTheCommentsTwice) {
    EXPECT_EQ((import_record({{comments, "Good"}}), field(29)), "Good / Good");
    EXPECT_EQ((import_record({}), field(29)), "");
    const std::string header = line_of({{0, header_line}, {400, "DUR_FR"}}, 0);
    import_lines({header, standards("35", "4", "pal", ""),
                  line_of({{comments, std::string(79, 'x') + " yz"}, {400, " "}}, 0),
                  line_of({{comments + 85, "late"}, {400, " "}}, 0)});
    EXPECT_EQ(field(29, 0), std::string(79, 'x') + " yz / " + std::string(79, 'x'));
    EXPECT_EQ(field(29, 1), "late") << "nothing stands in the first 80 characters";
}

TEST_F(Keylog, LongCommentsAreCutToTheWorkText) {
    const std::string header = line_of({{0, header_line}, {500, "DUR_FR"}}, 0);
    import_lines({header, standards("35", "4", "pal", ""), line_of({{comments, std::string(285, 'x')}}, 505)});
    EXPECT_EQ(field(29), std::string(255, 'x'));
}

TEST_F(Keylog, WithoutDurFramesALogicalLineHasTwoLinesOfText) {
    import_lines({header_line + " ", "PERFIN    INK_IN    PRINTED LOADED",
                  standards("35", "4", "ntsc", "VTR9").substr(0, 219), "x",
                  line_of({{scene, "1"}, {take, "2"}, {comments, "Nice"}}, 219), "7         AB1234"});
    EXPECT_EQ(table->get_valid(), 1);
    ASSERT_EQ(table->get_num_records(), 1U);
    EXPECT_EQ(field(0), "1-2");
    EXPECT_EQ(field(14), "7");
    EXPECT_EQ(field(24), "AB12+34");
    EXPECT_TRUE(logger.said("WARNING:  Keylog file has missing field dur_frames\n", 0));
    EXPECT_TRUE(logger.said("WARNING:  Keylog file has missing field dur_fr\n", 0));
    EXPECT_EQ(logger.lines.size(), 2U) << "\"load\" is found in \"loaded\"";
}

TEST_F(Keylog, ALowerCaseHeaderIsTakenButMeansTwoLines) {
    std::string header = full_header();
    for (char& c : header)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    import_lines({header, "", standards("35", "4", "ntsc", ""), "", line_of({{scene, "5"}}, 250), ""});
    EXPECT_EQ(table->get_valid(), 1);
    EXPECT_EQ(table->get_num_records(), 1U);
    EXPECT_EQ(field(0), "5-");
}

TEST_F(Keylog, AnOddLastLineOfTwoIsDropped) {
    import_lines({header_line, " ", standards("35", "4", "ntsc", ""), " ", line_of({}, 250)});
    EXPECT_EQ(table->get_valid(), 1);
    EXPECT_EQ(table->get_num_records(), 0U);
}

TEST_F(Keylog, ShortHeadersWarnOfWhatMayNotLack) {
    import_lines({line_of({{0, header_line}, {220, "DUR_FRAMES"}}, 0), standards("35", "4", "pal", "")});
    EXPECT_THAT(logger.lines, ElementsAre(LoggedLine{"WARNING:  Keylog file has missing field printed\n", 0},
                                          LoggedLine{"WARNING:  Keylog file has missing field load\n", 0},
                                          LoggedLine{"WARNING:  Keylog file has missing field loaded\n", 0}));
    import_lines(
        {line_of({{0, header_line}, {220, "DUR_FR PRINTED LOAD LOADED"}}, 0), standards("35", "4", "pal", "")});
    EXPECT_THAT(logger.lines, ElementsAre(LoggedLine{"WARNING:  Keylog file has missing field dur_frames\n", 0}));
}

TEST_F(Keylog, BlankLinesAreDroppedWithAWarning) {
    import_lines({full_header(), standards("35", "4", "pal", ""), line_of({{scene, "1"}}, 320), "",
                  line_of({{scene, "2"}}, 320)});
    ASSERT_EQ(table->get_num_records(), 2U);
    EXPECT_EQ(field(0, 1), "2-");
    EXPECT_THAT(logger.lines, ElementsAre(LoggedLine{short_line, 0}));
}

TEST_F(Keylog, ALineMayEndWhereTheCommentsBegin) {
    import_lines({full_header(), standards("35", "4", "pal", ""), line_of({{scene, "1"}, {comments, "left over"}}, 320),
                  line_of({{scene, "2"}}, 209), line_of({{scene, "3"}}, 208)});
    ASSERT_EQ(table->get_num_records(), 2U);
    EXPECT_EQ(field(29, 0), "left over / left over");
    EXPECT_EQ(field(0, 1), "2-");
    EXPECT_EQ(field(29, 1), "") << "nothing of the line before";
    EXPECT_EQ(logger.lines.size(), 1U);
}

TEST_F(Keylog, TheLastLineNeedsNoLineEnd) {
    import(file_of({full_header(), standards("35", "4", "pal", "")}) + line_of({{ scene, "1" }}, 320));
    EXPECT_EQ(table->get_num_records(), 1U);
    EXPECT_EQ(table->get_valid(), 1);
}

TEST_F(Keylog, CarriageReturnsBelongToTheLineEnd) {
    import(file_of({full_header(), standards("35", "4", "ntsc", "VTR001"), line_of(whole_record, 320)}, "\r\n"));
    ASSERT_EQ(table->get_num_records(), 1U);
    EXPECT_EQ(field(0), "12A-3");
    EXPECT_EQ(field(29), "Good / Good");
    import(file_of({full_header(), standards("35", "4", "pal", "").substr(0, 209)}, "\r\n"));
    EXPECT_EQ(table->get_valid(), 1) << "209 characters and a line end reach the comments";
}

TEST_F(Keylog, LongLinesAreCutAt511Characters) {
    const std::string record = line_of({{scene, "1"}}, 510);
    import(file_of({full_header(), standards("35", "4", "pal", ""), record}, "\r\n"));
    EXPECT_EQ(table->get_num_records(), 1U);
    EXPECT_THAT(logger.lines, IsEmpty());
    import_lines({full_header(), standards("35", "4", "pal", ""), record + "xx", record});
    EXPECT_EQ(table->get_num_records(), 2U);
    EXPECT_THAT(logger.lines, ElementsAre(LoggedLine{short_line, 0})) << "the rest of a line is a line";
}

TEST_F(Keylog, WithoutAHeaderIsNoTable) {
    for (const std::string& bytes : {std::string(), file_of({"Record#", "EVENT"}), full_header()}) {
        import(bytes);
        EXPECT_EQ(table->get_valid(), 0);
        EXPECT_EQ(table->get_error(), fdb_ok);
        EXPECT_THAT(logger.lines, ElementsAre(LoggedLine{no_header, 0}));
    }
}

TEST_F(Keylog, WithoutAStandardsLineIsNoTable) {
    import_lines({full_header()});
    EXPECT_THAT(logger.lines, ElementsAre(LoggedLine{no_standards, 0}));
    EXPECT_EQ(table->get_valid(), 0);
    import_lines({full_header(), "", standards("35", "4", "pal", "")});
    EXPECT_THAT(logger.lines, ElementsAre(LoggedLine{short_line, 0}, LoggedLine{no_standards, 0}));
    EXPECT_EQ(table->get_valid(), 0);
}

TEST_F(Keylog, AFileThatCannotBeOpenedSaysNothing) {
    Import missing(wide(folder.file("missing")), logger, wide(folder.file("own.RDB")));
    EXPECT_EQ(missing.get_valid(), 0);
    EXPECT_THAT(logger.lines, IsEmpty());
    EXPECT_EQ(std::string(toUTF8(missing.get_filename()).view()), folder.file("own.RDB"));
}

TEST_F(Keylog, AFolderIsAFileThatEndsAtOnce) {
    Import odd(wide(folder.path()), logger, {});
    EXPECT_EQ(odd.get_valid(), 0);
}

TEST_F(Keylog, CopiesWithItsReel) {
    import_record(whole_record);
    ftldb copy(*table);
    ftldb assigned(*table);
    assigned = copy;
    EXPECT_EQ(assigned.get_num_records(), 1U);
    EXPECT_EQ(copy.get_valid(), 1);
    EXPECT_STREQ(assigned.get_reelid(), "001     ");
}

TEST_F(Keylog, AnyBytesBehindTheHeaderMakeRowsOrWarnings) {
    EXPECT_TRUE(rc::check("every line is a row or a warning", [&](const std::vector<std::string>& tails) {
        std::vector<std::string> lines = {full_header(), standards("16", "", "ntsc", "VTR1")};
        for (std::string tail : tails) {
            std::erase_if(tail, [](char c) { return c == '\n' || c == '\r' || c == '\0'; });
            lines.push_back(line_of({{*rc::gen::inRange<std::size_t>(0, 300), tail.substr(0, 150)}}, 0));
        }
        import_lines(lines);
        RC_ASSERT(table->get_valid() == 1);
        RC_ASSERT(table->get_num_records() + logger.lines.size() == tails.size());
    }));
}

} // namespace
