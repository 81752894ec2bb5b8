// FLEx files: records in fixed columns, found again where they have drifted.

#include "formats/logs/fixed_fields.h"
#include "tests/logs/log_texts.h"

using namespace formats;
using namespace log_texts;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using Places = std::vector<std::pair<std::size_t, std::string>>;

const std::string head = placed({{0, "000 Manufacturer"}, {75, "1004"}}) + "\n" +
                         placed({{0, "012 Shoot Date"}, {15, "07-21-14"}, {25, "Transfer Date"}, {39, "07-22-14"}}) +
                         "\n";

std::string take_record(const std::string& standard = "NTSC") {
    return placed({{0, "100 Edit"},
                   {9, "0001"},
                   {14, "to"},
                   {17, "V9"},
                   {29, "Field"},
                   {35, "A1"},
                   {38, standard},
                   {43, "Split"},
                   {61, "Delay"}});
}
std::string slate_record() {
    return placed({{0, "110 Scene"},
                   {10, "12A"},
                   {19, "Take"},
                   {24, "3"},
                   {33, "Cam Roll"},
                   {42, "A7"},
                   {51, "Sound"},
                   {57, "S5"},
                   {66, "11:12:13:14.0"}});
}
std::string film_record() {
    return placed({{0, "200"},
                   {4, "SPIRT"},
                   {10, "35"},
                   {13, "24.00"},
                   {19, "L3"},
                   {28, "000100+00"},
                   {38, "000007+08"},
                   {48, "Key"},
                   {52, "KODAK"},
                   {58, "KJ123456"},
                   {67, "008845+02"},
                   {77, "p1"}});
}
std::string picture_record() {
    return placed({{0, "300"},
                   {4, "D5"},
                   {10, "Assemble"},
                   {20, "003"},
                   {29, "At"},
                   {32, "01:00:00:05.0"},
                   {46, "For"},
                   {50, "00:00:05:00.0"},
                   {64, "Using"},
                   {70, "LTC"}});
}
std::string whole_take() {
    return take_record() + "\n" + slate_record() + "\n" + placed({{0, "120 Scrpt"}, {10, "Rain, wide"}}) + "\n" +
           film_record() + "\n" + picture_record() + "\n";
}

Log read_flex(const std::string& bytes) { return read(bytes, "day.flx"); }

void expect_whole_row(const Log& log) {
    EXPECT_EQ(log.error, "");
    EXPECT_THAT(log.warnings, IsEmpty());
    ASSERT_EQ(log.rows.size(), 1u);
    const LogRow& row = log.rows[0];
    EXPECT_EQ(row.line, 3);
    EXPECT_EQ(row[LogField::reel], "003");
    EXPECT_EQ(row[LogField::start], "01:00:00:05");
    EXPECT_EQ(row[LogField::end], "01:00:05:05");
    EXPECT_EQ(row[LogField::name], "12A-3");
    EXPECT_EQ(row[LogField::cam_reel], "A7");
    EXPECT_EQ(row[LogField::lab_reel], "L3");
    EXPECT_EQ(row[LogField::snd_reel], "S5");
    EXPECT_EQ(row[LogField::snd_start], "11:12:13:14");
    EXPECT_EQ(row[LogField::cam_date], "07-21-14");
    EXPECT_EQ(row[LogField::description], "Rain, wide");
    EXPECT_EQ(row[LogField::key_start], "KJ1234568845+02");
    EXPECT_EQ(row.film, label_key_35mm_4p);
    EXPECT_EQ(row.key_frames, 120);
    EXPECT_EQ(row.standard.rate, 5);
    EXPECT_TRUE(row.pulldown);
    EXPECT_EQ(row.phase, 0);
}

TEST(Flex, WholeTake) { expect_whole_row(read_flex(head + whole_take())); }

TEST(Flex, FieldsThatFillTheirPlaceAreReadWhole) {
    const std::string script = std::string(69, 's') + "T";
    const std::string take =
        placed({{0, "100 Edit"}, {14, "to"}, {17, "ABCDEFGHIJK"}, {29, "Field"}, {35, "B2"}, {38, "NTSC"}});
    const std::string slate = placed({{0, "110 Scene"},
                                      {10, "SCENE-12"},
                                      {19, "Take"},
                                      {24, "TAKE-345"},
                                      {33, "Cam Roll"},
                                      {42, "CAMERA-7"},
                                      {51, "Sound"},
                                      {57, "SOUND-89"},
                                      {66, "11:12:13:14.0"}});
    const std::string film = placed({{0, "200"},
                                     {10, "16"},
                                     {19, "LABROLL9"},
                                     {38, "000007+08"},
                                     {48, "Key"},
                                     {58, "KJ123456"},
                                     {67, "008845+02"}});
    const std::string picture =
        placed({{0, "300"}, {29, "At"}, {32, "01:00:00:05.0"}, {46, "For"}, {50, "00:00:05:00.0"}});
    const Log log = read_flex(take + "\n" + slate + "\n" + placed({{0, "120 Scrpt"}, {10, script}}) + "\n" + film +
                              "\n" + picture + "\n");
    EXPECT_EQ(log.error, "");
    ASSERT_EQ(log.rows.size(), 1u);
    const LogRow& row = log.rows[0];
    EXPECT_EQ(row[LogField::reel], "ABCDEFGHIJK");
    EXPECT_EQ(row[LogField::scene], "SCENE-12");
    EXPECT_EQ(row[LogField::take], "TAKE-345");
    EXPECT_EQ(row[LogField::cam_reel], "CAMERA-7");
    EXPECT_EQ(row[LogField::snd_reel], "SOUND-89");
    EXPECT_EQ(row[LogField::snd_start], "11:12:13:14");
    EXPECT_EQ(row[LogField::description], script);
    EXPECT_EQ(row[LogField::lab_reel], "LABROLL9");
    EXPECT_EQ(row.film, 11);
}

TEST(Flex, AnyLineEnds) {
    std::string text = head + whole_take();
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 2))
        text.replace(at, 1, "\r\n");
    expect_whole_row(read_flex(text));
}

TEST(Flex, ContentTellsWithoutTheExtension) { expect_whole_row(read(head + whole_take(), "day.txt")); }

TEST(Flex, DriftedFieldsAreFoundByTheirWords) {
    std::string picture = picture_record();
    picture.insert(29, "  ");
    std::string slate = slate_record();
    slate.erase(30, 2);
    expect_whole_row(read_flex(head + take_record() + "\n" + slate + "\n" +
                               placed({{0, "120 Scrpt"}, {10, "Rain, wide"}}) + "\n" + film_record() + "\n" + picture +
                               "\n"));
}

TEST(Flex, TabsAreExpanded) {
    std::string scene = "110\tScene";
    const Log log = read_flex(take_record() + "\n" + scene + "  7\n" + picture_record() + "\n");
    ASSERT_EQ(log.rows.size(), 1u);
    EXPECT_EQ(log.rows[0][LogField::scene], "7");
}

TEST(Flex, FieldsDriftByNinePlacesAtMost) {
    for (const int drift : {9, 10}) {
        std::string slate = placed({{0, "110"}, {4, "Scene"}, {10, "12A"}});
        slate.insert(4, static_cast<std::size_t>(drift), ' ');
        const Log log = read_flex(take_record() + "\n" + slate + "\n" + picture_record() + "\n");
        ASSERT_EQ(log.rows.size(), 1u);
        EXPECT_EQ(log.rows[0][LogField::scene] == "12A", drift == 9) << log.rows[0][LogField::scene];
    }
}

TEST(Flex, ATabGoesToTheNextEighthPlace) {
    const PlacedLine line("a\tb2345678\tc\t\td");
    EXPECT_EQ(line.cell(0, 8).text, "a");
    EXPECT_EQ(line.cell(8, 24).text, "b2345678");
    EXPECT_EQ(line.cell(24, 25).text, "c");
    EXPECT_EQ(line.cell(40, 41).text, "d");
    EXPECT_EQ(line.length(), 41U);
}

TEST(Flex, OnlyTheTakeRecordIsNeeded) {
    const Log log = read_flex(take_record("PAL") + "\n" + take_record("PAL") + "\n" + picture_record() + "\n");
    ASSERT_EQ(log.rows.size(), 2u);
    EXPECT_EQ(log.rows[0][LogField::reel], "V9");
    EXPECT_THAT(log.warnings,
                ElementsAre(HasSubstr("day.flx:1:1: the row has no start"), HasSubstr("neither end nor duration")));
    EXPECT_EQ(log.rows[1].standard.rate, 3);
    EXPECT_EQ(log.rows[1][LogField::scene], "");
}

TEST(Flex, RecordsThatAreNotReadAreToldOnce) {
    const Log log = read_flex(whole_take() + "111 something\n111 again\n701 ASC_SOP(1 1 1)(0 0 0)(1 1 1)\nwords\n");
    EXPECT_EQ(log.rows.size(), 1u);
    EXPECT_THAT(log.warnings, ElementsAre(HasSubstr("day.flx:6:1: records 111 aren't read"),
                                          HasSubstr("day.flx:9:1: a line without a code")));
}

TEST(Flex, RecordsThatSayNothingOfFilmArePassedOver) {
    for (const int code : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 13, 101, 500, 600, 701, 702}) {
        const std::string digits = std::to_string(1000 + code).substr(1);
        EXPECT_THAT(read_flex(whole_take() + digits + " of no use\n").warnings, IsEmpty()) << digits;
    }
}

TEST(Flex, BadFieldsAreToldWithTheirPlace) {
    std::string film = film_record();
    film.replace(67, 9, "x08845+02");
    const Log log = read_flex(take_record() + "\n" + film + "\n" + picture_record() + "\n");
    EXPECT_EQ(log.rows.size(), 1u);
    EXPECT_THAT(log.warnings, ElementsAre(HasSubstr("day.flx:1:59: key number \"KJ123456x08845+02\"")));
}

TEST(Flex, FilesThatCanNotBeUsedAreRefused) {
    EXPECT_THAT(read_flex(head).error, HasSubstr("day.flx: no record 100"));
    EXPECT_THAT(read_flex(take_record("SECA") + "\n" + picture_record() + "\n").error,
                HasSubstr("day.flx:1: neither NTSC"));
}

} // namespace
