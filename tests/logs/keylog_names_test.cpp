// Keylog text read by the names of its columns.

#include "tests/logging/keylog_text.h"
#include "tests/logs/log_texts.h"

using namespace formats;
using namespace log_texts;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

keylog::Place at(std::size_t place, const char* text) { return {place, text}; }

const std::vector<keylog::Place> record_places{
    at(0, "1"),
    at(9, "1"),
    at(keylog::camroll, "A7"),
    at(keylog::soundroll, "S5"),
    at(33, "LEE"),
    at(keylog::scene, "12A"),
    at(keylog::take, "3"),
    at(keylog::vttc_in, "01:00:00:00"),
    at(keylog::vttc_out, "01:00:10:00"),
    at(78, "00:10:00"),
    at(keylog::nagra_in, "11:12:13:14"),
    at(keylog::keyin, "KJ123456123409"),
    at(135, "KJ123456124909"),
    at(keylog::descript, "Rain"),
    at(keylog::comments, "Soft"),
    at(keylog::dur_frames, "250"),
    at(keylog::labroll, "L3"),
    at(keylog::dlyroll, "D2"),
};

std::string record() { return keylog::line_of(record_places, 320); }

std::string file_of(const std::string& standards, const std::vector<std::string>& records) {
    std::vector<std::string> lines{"a line above", keylog::full_header(), standards};
    lines.insert(lines.end(), records.begin(), records.end());
    return keylog::file_of(lines);
}

Log read_keylog(const std::string& bytes) { return read(bytes, "day.ftl"); }

TEST(KeylogNames, EachColumnGoesWhereItsNameSays) {
    const Log log = read_keylog(file_of(keylog::standards("35", "4", "PAL", "VTROLL 003"), {record()}));
    EXPECT_EQ(log.error, "");
    EXPECT_THAT(log.warnings, IsEmpty());
    ASSERT_EQ(log.rows.size(), 1u);
    const LogRow& row = log.rows[0];
    EXPECT_EQ(row.line, 4);
    EXPECT_EQ(row[LogField::name], "12A-3");
    EXPECT_EQ(row[LogField::reel], "003");
    EXPECT_EQ(row[LogField::cam_reel], "A7");
    EXPECT_EQ(row[LogField::key_start], "KJ1234561234+09");
    EXPECT_STREQ(LabelPoint(row.key_end).get_string(), "KJ1234561249+09");
    EXPECT_EQ(row[LogField::snd_reel], "S5");
    EXPECT_EQ(row[LogField::snd_start], "11:12:13:14");
    EXPECT_EQ(row[LogField::lab_reel], "L3");
    EXPECT_EQ(row[LogField::comp_reel], "D2");
    EXPECT_EQ(row[LogField::who], "LEE");
    EXPECT_EQ(row[LogField::description], "Rain");
    EXPECT_EQ(row[LogField::notes], "Soft");
    EXPECT_EQ(row[LogField::end], "01:00:10:00");
    EXPECT_EQ(row.standard.rate, 3);
    EXPECT_EQ(row.film, label_key_35mm_4p);
    EXPECT_EQ(row.key_frames, 240);
}

TEST(KeylogNames, StandardsLineNamesFilmRateAndReel) {
    const auto row_of = [](const std::string& standards) {
        const Log log = read_keylog(file_of(standards, {record()}));
        return log.rows.empty() ? LogRow() : log.rows[0];
    };
    EXPECT_EQ(row_of(keylog::standards("35", "3", "NTSC", "VTR X1")).film, 12);
    EXPECT_EQ(row_of(keylog::standards("16", "1", "ntsc", "VTR X1")).film, 11);
    const LogRow row = row_of(keylog::standards("35", "4", "NTSC_24", "VTR X1"));
    EXPECT_EQ(row.standard.rate, 2);
    EXPECT_EQ(row[LogField::reel], "X1");
    EXPECT_EQ(row_of(keylog::standards("35", "4", "NTSC", "")).standard.rate, 5);
    EXPECT_TRUE(row_of(keylog::standards("35", "4", "NTSC_DROP_FRAME", "")).standard.drop);
}

TEST(KeylogNames, EachNameOfAStandardHasItsRate) {
    struct Named {
        const char* name;
        int rate;
        bool drop;
    };
    for (const Named& one : {Named{"PAL", 3, false},
                             {"NTSC", 5, false},
                             {"NTSC_DROP_FRAME", 5, true},
                             {"PAL_24", 2, false},
                             {"NTSC_24", 2, false},
                             {"NTSC_DROP_FRAME_24", 2, false}}) {
        const Log log = read_keylog(file_of(keylog::standards("35", "4", one.name, "VTR 1"), {record()}));
        ASSERT_EQ(log.rows.size(), 1u) << one.name;
        EXPECT_EQ(log.rows[0].standard.rate, one.rate) << one.name;
        EXPECT_EQ(log.rows[0].standard.drop != 0, one.drop) << one.name;
    }
}

TEST(KeylogNames, DropFrameOfARow) {
    std::vector<keylog::Place> places = record_places;
    places.push_back(at(keylog::vttc_drop, "T"));
    const Log log =
        read_keylog(file_of(keylog::standards("35", "4", "NTSC", ""), {keylog::line_of(places, 320), record()}));
    ASSERT_EQ(log.rows.size(), 2u);
    EXPECT_TRUE(log.rows[0].standard.drop);
    EXPECT_EQ(log.rows[0][LogField::start], "01:00:00;00");
    EXPECT_FALSE(log.rows[1].standard.drop);
}

TEST(KeylogNames, RowsOverTwoLines) {
    const auto halves = [](const std::string& line) {
        return line.substr(0, keylog::printed) + "\n" + line.substr(keylog::printed);
    };
    const Log log =
        read_keylog(halves(keylog::full_header()) + "\n" + halves(keylog::standards("35", "4", "PAL", "VTR 1")) + "\n" +
                    halves(record()) + "\n" + halves(record()) + "\n");
    EXPECT_THAT(log.warnings, IsEmpty());
    ASSERT_EQ(log.rows.size(), 2u);
    EXPECT_EQ(log.rows[1].line, 7);
    EXPECT_EQ(log.rows[1][LogField::lab_reel], "L3");
}

TEST(KeylogNames, ColumnsCountCharacters) {
    std::string line = record();
    line.replace(keylog::scene, 3, "\xC3\xA9\xC3\xA9X");
    const Log log = read_keylog(file_of(keylog::standards("35", "4", "PAL", "VTR 1"), {line}));
    ASSERT_EQ(log.rows.size(), 1u);
    EXPECT_EQ(log.rows[0][LogField::scene], "\xC3\xA9\xC3\xA9X");
    EXPECT_EQ(log.rows[0][LogField::start], "01:00:00:00");
}

TEST(KeylogNames, ShortLinesAreRowsAllTheSame) {
    const Log log = read_keylog(file_of(keylog::standards("35", "4", "PAL", "VTR 1"),
                                        {record().substr(0, keylog::vttc_out + 11), "", record()}));
    ASSERT_EQ(log.rows.size(), 2u);
    EXPECT_EQ(log.rows[0][LogField::start], "01:00:00:00");
    EXPECT_EQ(log.rows[1].line, 6);
}

TEST(KeylogNames, BadColumnsAreToldWithTheirPlace) {
    std::string line = record();
    line.replace(keylog::keyin, 14, "KJ12X456123409");
    const Log log = read_keylog(file_of(keylog::standards("35", "4", "PAL", "VTR 1"), {line}));
    EXPECT_THAT(log.warnings, ElementsAre(HasSubstr("day.ftl:4:121: key number \"KJ12X456123409\"")));
    ASSERT_EQ(log.rows.size(), 1u);
    EXPECT_TRUE(log.rows[0].key_refused);
}

TEST(KeylogNames, FilesThatCanNotBeUsedAreRefused) {
    EXPECT_THAT(read_keylog("nothing\n").error, HasSubstr("day.ftl: no header"));
    EXPECT_THAT(read_keylog(file_of(keylog::standards("35", "4", "what", ""), {record()})).error,
                HasSubstr("day.ftl:3: no standards"));
    EXPECT_THAT(read_keylog(keylog::full_header() + "\n" + record() + "\n").error,
                HasSubstr("day.ftl:2: no standards"));
    EXPECT_THAT(read_keylog(keylog::full_header() + "\n").error, HasSubstr("day.ftl:1: nothing stands"));
    EXPECT_THAT(read_keylog("Record# CAMROLL VTTC_OUT KEYIN\n").error, HasSubstr("day.ftl:1: no column VTTC_IN"));
}

TEST(KeylogNames, ColumnsAndGaugesThatAreNotAsTheyShouldAreTold) {
    const auto told = [](const std::string& header, const std::string& standards) {
        return read_keylog(keylog::file_of({header, standards, record()}));
    };
    const std::string standards = keylog::standards("35", "4", "PAL", "VTR 1");
    const Log twice = told(keylog::full_header() + "   LABROLL", standards);
    ASSERT_EQ(twice.warnings.size(), 1u);
    EXPECT_THAT(twice.warnings[0].text, HasSubstr("column labroll stands twice; the second counts where the first"));
    const Log gauge = told(keylog::full_header(), keylog::standards("48", "4", "PAL", "VTR 1"));
    ASSERT_EQ(gauge.warnings.size(), 1u);
    EXPECT_THAT(gauge.warnings[0].text, HasSubstr("gauge \"48\" isn't known"));
    const Log standard = told(keylog::full_header(), keylog::standards("35", "4", "PAL_30", "VTR 1"));
    ASSERT_EQ(standard.warnings.size(), 1u);
    EXPECT_THAT(standard.warnings[0].text, HasSubstr("standard \"pal_30\" isn't known"));
    EXPECT_THAT(standard.error, HasSubstr("rate"));
    std::string no_keys = keylog::full_header();
    for (const char* name : {"KEYIN ", "INK_IN"})
        no_keys.replace(no_keys.find(name), 6, 6, 'X');
    EXPECT_THAT(told(no_keys, standards).error, HasSubstr("neither a column KEYIN nor INK_IN"));
}

} // namespace
