// Rows as logging tables: what the list of shots reads of them, and round trips.

#include "formats/logs/log_table.h"
#include "logging/log_shot_list.h"
#include "quillbrook/logging_tables.h"
#include "tests/logging/film_tables.h"
#include "tests/logs/log_texts.h"
#include "tests/support/recording_logger.h"
#include "tests/support/scratch_directory.h"

using namespace formats;
using namespace log_texts;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

const Cells columns{"Name", "Tape", "Start", "End", "KN Start", "Camroll", "Pullin"};

std::vector<LogRow> rows_of(const Cells& heading, const std::vector<Cells>& rows) {
    Log log = read(ale(heading, columns, rows));
    EXPECT_EQ(log.error, "");
    return log.rows;
}

const std::vector<Cells> two_rows{{"1-1", "003", "01:00:00:03", "01:00:10:00", "KJ123456 1234+05", "A7", "X"},
                                  {"1-2", "003", "01:00:10:00", "01:00:20:00", "KJ123456 1249+05", "A7", "A"}};

std::string field(const recdb& table, unsigned row, const char* column) {
    return table.getField(row, static_cast<unsigned>(table.get_fieldnum(column))).c_str();
}

TEST(LogTable, HeaderComesFromTheFirstRow) {
    filmdb table;
    fill_table(table, rows_of({"FPS\t29.97", "FILM_FORMAT\t35mm,3perf"}, two_rows));
    EXPECT_EQ(param(table, "FILMDB"), "Rev 16");
    EXPECT_EQ(param(table, "label_std"), "29.97fps");
    EXPECT_EQ(param(table, "snd label_std"), "29.97fps");
    EXPECT_EQ(param(table, "film label_std"), "35mm-3p");
    EXPECT_EQ(param(table, "film rate"), "23.976");
    EXPECT_EQ(param(table, "pulldown"), "Y");
    EXPECT_EQ(param(table, "sequence"), "4");
}

TEST(LogTable, RowsNameTheirOwnStandardsAndPhase) {
    filmdb table;
    fill_table(table, rows_of({"FPS\t29.97", "FILM_FORMAT\t35mm,4perf"}, two_rows));
    ASSERT_EQ(table.get_num_records(), 2u);
    EXPECT_EQ(field(table, 0, "start keycode"), "KJ1234561234+05");
    EXPECT_EQ(field(table, 0, "film label_std"), "35mm-4p");
    EXPECT_EQ(field(table, 0, "label_std"), "29.97fps");
    EXPECT_EQ(field(table, 0, "cam reel"), "A7");
    EXPECT_EQ(field(table, 0, "pulldown"), "Y");
    EXPECT_EQ(field(table, 0, "sequence"), "4");
    EXPECT_EQ(field(table, 1, "sequence"), "0");
    EXPECT_EQ(field(table, 0, "duration"), "00:00:09:27");
}

TEST(LogTable, ListOfShotsReadsWhatTheRowsSay) {
    for (const char* rate : {"FPS\t24", "FPS\t25", "FPS\t29.97"}) {
        const std::vector<LogRow> rows = rows_of({rate, "FILM_FORMAT\t35mm,3perf"}, two_rows);
        filmdb table;
        fill_table(table, rows);
        RecordingLogger logger;
        LogShotList list(table, -1, logger, 2);
        EXPECT_EQ(list.result, 0);
        ASSERT_EQ(list.num_shots, 2);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            LogShot& shot = *list.shots[i];
            EXPECT_TRUE(shot.start == rows[i].start);
            EXPECT_TRUE(shot.end == rows[i].end);
            EXPECT_TRUE(shot.keycode == rows[i].key_start);
            EXPECT_STREQ(shot.film_roll, "A7");
            EXPECT_EQ(shot.pulldown.on, rows[i].pulldown);
            EXPECT_EQ(shot.pulldown.sequence, rows[i].pulldown ? rows[i].phase : 0);
        }
        EXPECT_THAT(logger.lines, IsEmpty());
    }
}

TEST(LogTable, RefusedKeyNumberLeavesTheColumnEmpty) {
    Cells cells = two_rows[0];
    cells[4] = "KX65-99";
    filmdb table;
    fill_table(table, rows_of({"FPS\t24"}, {cells}));
    EXPECT_EQ(field(table, 0, "start keycode"), "");
}

TEST(LogTable, SavedTableReadsBackAsItsRows) {
    const ScratchDirectory scratch;
    const std::vector<LogRow> rows = rows_of({"FPS\t29.97", "FILM_FORMAT\t35mm,3perf"}, two_rows);
    filmdb table;
    fill_table(table, rows);
    table.set_filename(wide(scratch.file("a.RDB")));
    ASSERT_EQ(table.save_text(), 0);
    const Log back = read_log(scratch.file("a.RDB"));
    EXPECT_EQ(back.error, "");
    ASSERT_EQ(back.rows.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_TRUE(back.rows[i].start == rows[i].start);
        EXPECT_TRUE(back.rows[i].end == rows[i].end);
        EXPECT_TRUE(back.rows[i].key_start == rows[i].key_start);
        EXPECT_EQ(back.rows[i].film, rows[i].film);
        EXPECT_EQ(back.rows[i].pulldown, rows[i].pulldown);
        EXPECT_EQ(back.rows[i].phase, rows[i].phase);
        EXPECT_EQ(back.rows[i][LogField::name], rows[i][LogField::name]);
    }
    const std::string bytes = bytes_of_file(scratch.file("a.RDB"));
    const std::size_t place = bytes.find("\n1-2\t");
    EXPECT_EQ(back.rows[1].line,
              2 + std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(place), '\n'));
}

TEST(LogTable, AWordThatBeginsWithYesOrOneIsPulldown) {
    for (const auto& [word, on] : std::map<std::string, bool>{{"Y", true},
                                                              {"y", true},
                                                              {"yes", true},
                                                              {"Yes", true},
                                                              {"1", true},
                                                              {"12", true},
                                                              {"N", false},
                                                              {"ny", false}}) {
        const ScratchDirectory scratch;
        filmdb table;
        fill_table(table, rows_of({"FPS\t29.97"}, two_rows));
        table.set_field(0, static_cast<unsigned>(table.get_fieldnum("pulldown")), word.c_str());
        table.set_filename(wide(scratch.file("a.RDB")));
        ASSERT_EQ(table.save_text(), 0);
        const Log back = read_log(scratch.file("a.RDB"));
        ASSERT_EQ(back.rows.size(), 2u);
        EXPECT_EQ(back.rows[0].pulldown, on) << word;
    }
}

/// Rows that say all they can of pulldown, below a header that says the rest.
class PulldownTable : public MadeTable {
public:
    PulldownTable(const Params& header, bool with_pulldown, bool with_phase)
        : MadeTable(header, columns_of(with_pulldown, with_phase), rows_of(with_pulldown, with_phase)) {}

private:
    static Columns columns_of(bool with_pulldown, bool with_phase) {
        Columns names{"name", "reel", "start time", "end time", "cam reel", "snd start", "start keycode"};
        if (with_pulldown) names.push_back("pulldown");
        if (with_phase) names.push_back("sequence");
        return names;
    }

    static Records rows_of(bool with_pulldown, bool with_phase) {
        Records rows;
        for (const char* on : {"", "Y", "yes", "1", "N", "no", "0", "maybe"})
            for (const char* phase : {"", "0", "3", "7", "-2"}) {
                rows.push_back({"n", "R", "01:00:00:03", "01:00:10:00", "A", "", ""});
                if (with_pulldown) rows.back().push_back(on);
                if (with_phase) rows.back().push_back(phase);
            }
        return rows;
    }
};

/// Pulldown and phase of each row, as a cutlist takes them and as they are shown.
void expect_shown_as_cut(PulldownTable& table) {
    const ScratchDirectory scratch;
    table.set_filename(wide(scratch.file("a.RDB")));
    ASSERT_EQ(table.save_text(), 0);
    const Log shown = read_log(scratch.file("a.RDB"));
    RecordingLogger logger;
    const LogShotList cut(table, -1, logger, 2);
    const std::string bytes = bytes_of_file(scratch.file("a.RDB"));
    ASSERT_EQ(shown.rows.size(), 40u);
    ASSERT_EQ(cut.num_shots, 40);
    for (std::size_t i = 0; i < shown.rows.size(); ++i) {
        const LogShotPulldown& pulldown = cut.shots[i]->pulldown;
        const std::string row = bytes + "row " + std::to_string(i);
        EXPECT_EQ(shown.rows[i].pulldown, pulldown.on) << row;
        EXPECT_EQ(shown.rows[i].phase, pulldown.on ? pulldown.sequence : 0) << row;
    }
}

TEST(LogTable, PulldownIsShownAsCutlistsTakeIt) {
    for (const char* on : {"", "Y", "yes", "1", "N", "0", "maybe"})
        for (const char* phase : {"", "2", "8", "-1"})
            for (const int both : {0, 1, 2, 3}) {
                Params header{{"FILMDB", "Rev 16"}, {"label_std", "30fps"}};
                if (*on) header.push_back({"pulldown", on});
                if (*phase) header.push_back({"sequence", phase});
                PulldownTable table(header, both & 1, both & 2);
                expect_shown_as_cut(table);
            }
}

TEST(LogTable, OtherTablesAreRefused) {
    EXPECT_THAT(read("%recdb 1\nCUTDB=Rev 22\n\nname\na\n", "x.RDB").error, HasSubstr("isn't a logging table"));
    EXPECT_THAT(read("%recdb 1\nbroken", "x.RDB").error, HasSubstr("isn't a whole record table"));
}

TEST(LogTable, ATableThatNamesNoRateCounts24) {
    const std::string rows = "\n\nname\tstart time\tend time\na\tt\tt\nn\t00:00:01:00\t00:00:02:00\n";
    for (const char* header : {"FILMDB=Rev 16", "FILMDB=Rev 16\nlabel_std="}) {
        const Log log = read("%recdb 1\n" + (header + rows), "x.RDB");
        ASSERT_EQ(log.rows.size(), 1u) << log.error;
        EXPECT_EQ(log.rows[0].start.type(), label_tc_24) << header;
        EXPECT_EQ(log.rows[0].end.sample, 48) << header;
    }
}

} // namespace
