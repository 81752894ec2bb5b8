#include "tests/generator/generator_fixture.h"

#include <cstring>

using generator_test::GeneratorTest;

namespace {

class Options : public GeneratorTest {
protected:
    const CutlistOptions& read() {
        read_cutlist_options(&block);
        return cutlist_options();
    }
};

struct channel {
    int type;
    int number;
    bool operator==(const channel&) const = default;
};
void PrintTo(const channel& c, std::ostream* out) { *out << "type " << c.type << " number " << c.number; }

channel parsed(const char* text) {
    channel result{-1, -1};
    parse_channel_text(text, result.type, result.number);
    return result;
}

std::string trimmed(const char* text) {
    std::string copy(text);
    trim_text(copy.data());
    return copy.c_str();
}

TEST_F(Options, ABlockWithoutKeysLeavesTheValuesOfALoadedLibrary) {
    block = embedded::settings_block();
    const CutlistOptions& options = read();
    EXPECT_EQ(options.chan_num, 1);
    EXPECT_EQ(options.film_reel, 2);
    EXPECT_EQ(options.butt, 1);
    EXPECT_EQ(options.optical_handle, 32);
    EXPECT_EQ(options.pagelength, 66);
    EXPECT_EQ(options.pull_match_assembly, 1);
    EXPECT_EQ(options.some_lists, 0);
}

TEST_F(Options, AChannelTypeOfZeroBecomesPicture) {
    block.set("chan_type", "0");
    EXPECT_EQ(read().chan_type, 1);
}

TEST_F(Options, OnlyZeroToTwoExtraDigitsOfTheKeyCountAreTaken) {
    for (const auto& [text, kept] : std::map<std::string, int>{
             {"0", 0}, {"1", 1}, {"2", 2}, {"3", -1}, {"-1", -1}, {"-5", -1}, {"2147483647", -1}}) {
        block.set("long_keycode", text);
        EXPECT_EQ(read().long_keycode, kept) << text;
    }
}

TEST_F(Options, TheLoadedValueOfTheKeyCountIsTakenAsNone) {
    EXPECT_EQ(cutlist_options().long_keycode, 3);
    EXPECT_EQ(read().long_keycode, -1);
}

TEST_F(Options, AKeyThatTheNextBlockLacksKeepsItsValue) {
    block.set("pull_handle", "7");
    block.set("pgm_id", "PRG");
    read();
    block = embedded::settings_block();
    EXPECT_EQ(read().pull_handle, 7);
    EXPECT_STREQ(cutlist_options().pgm_id, "PRG");
}

TEST_F(Options, TextsAreCutToTheirFields) {
    const std::string longest(63, 'p');
    block.set("proj_name", longest + "qrs");
    block.set("log_file", std::string(5000, 'l'));
    EXPECT_EQ(read().proj_name, longest);
    EXPECT_EQ(std::strlen(cutlist_options().log_file), 63U);
    EXPECT_EQ(cutlist_options().chan_type, 1);
}

TEST_F(Options, AnAbsentOutputFileIsEmptyAgain) {
    EXPECT_FALSE(read().output_file.empty());
    block = embedded::settings_block();
    EXPECT_TRUE(read().output_file.empty());
}

TEST_F(Options, TheOutputFileIsUtf8) {
    block.set("output_file", "\xC3\x84kt.txt");
    EXPECT_EQ(read().output_file, L"\u00C4kt.txt");
}

TEST_F(Options, AStringOptionIsEmptiedWhereTheKeyIsAbsent) {
    LightweightString<char> text("before");
    EXPECT_EQ(&read_string_option(&block, text, "no_such_key"), &text);
    EXPECT_TRUE(text.empty());
}

TEST_F(Options, TheChannelTextIsFormedWhenTheBlockIsRead) {
    block.set("chan_type", "2");
    block.set("chan_num", "3");
    EXPECT_STREQ(read().channel_str, "A03");
}

TEST_F(Options, EveryListedKeyFillsAField) {
    for (const cutlist_option_key* key = cutlist_option_keys(); key->name; ++key) {
        if (key->is_used && !key->is_text) block.set(key->name, "2");
    }
    const CutlistOptions& options = read();
    EXPECT_EQ(options.chan_num, 2);
    EXPECT_EQ(options.fsl_type4_file, 2);
    EXPECT_EQ(options.edit_units, 2);
    EXPECT_EQ(options.pull_sort_by_keycode, 2);
}

struct number_key {
    const char* name;
    int CutlistOptions::*field;
};
const number_key number_keys[] = {
    {"chan_type", &CutlistOptions::chan_type},
    {"chan_num", &CutlistOptions::chan_num},
    {"roll_list", &CutlistOptions::roll_list},
    {"pull_list", &CutlistOptions::pull_list},
    {"assembly_list", &CutlistOptions::assembly_list},
    {"optical_list", &CutlistOptions::optical_list},
    {"one_page_optical", &CutlistOptions::one_page_optical},
    {"fsl_type1_file", &CutlistOptions::fsl_type1_file},
    {"fsl_type2_file", &CutlistOptions::fsl_type2_file},
    {"fsl_type3_file", &CutlistOptions::fsl_type3_file},
    {"fsl_type4_file", &CutlistOptions::fsl_type4_file},
    {"film_code", &CutlistOptions::film_code},
    {"audio_code", &CutlistOptions::audio_code},
    {"film_reel", &CutlistOptions::film_reel},
    {"audio_reel", &CutlistOptions::audio_reel},
    {"inkcode_in_keycode_field", &CutlistOptions::inkcode_in_keycode_field},
    {"report_with_tc", &CutlistOptions::report_with_tc},
    {"guess_black", &CutlistOptions::guess_black},
    {"pull_handle", &CutlistOptions::pull_handle},
    {"optical_handle", &CutlistOptions::optical_handle},
    {"butt", &CutlistOptions::butt},
    {"audio_opticals", &CutlistOptions::audio_opticals},
    {"use_cookies", &CutlistOptions::use_cookies},
    {"optical_fencepost", &CutlistOptions::optical_fencepost},
    {"wpflag", &CutlistOptions::wpflag},
    {"pagelength", &CutlistOptions::pagelength},
    {"some_lists", &CutlistOptions::some_lists},
    {"pull_match_assembly", &CutlistOptions::pull_match_assembly},
    {"edit_units", &CutlistOptions::edit_units},
    {"floppy_flag", &CutlistOptions::floppy_flag},
    {"pull_sort_by_keycode", &CutlistOptions::pull_sort_by_keycode},
};

TEST_F(Options, EachNumberGoesToTheFieldOfItsName) {
    int value = 1000;
    for (const number_key& key : number_keys)
        block.set(key.name, std::to_string(++value));
    const CutlistOptions& options = read();
    value = 1000;
    for (const number_key& key : number_keys)
        EXPECT_EQ(options.*key.field, ++value) << key.name;
}

TEST_F(Options, EachTextGoesToTheFieldOfItsName) {
    for (const char* name : {"proj_name", "proj_file", "edg_file", "log_file", "pgm_id"})
        block.set(name, std::string("the ") + name);
    const CutlistOptions& options = read();
    EXPECT_STREQ(options.proj_name, "the proj_name");
    EXPECT_STREQ(options.proj_file, "the proj_file");
    EXPECT_STREQ(options.edg_file, "the edg_file");
    EXPECT_STREQ(options.log_file, "the log_file");
    EXPECT_STREQ(options.pgm_id, "the pgm_id");
}

TEST_F(Options, ALoadedLibraryHasTheValuesOfItsRecord) {
    block = embedded::settings_block();
    const CutlistOptions& options = read();
    const std::map<std::string, int> not_zero = {
        {"chan_type", 1},     {"chan_num", 1},     {"roll_list", 1},           {"pull_list", 1},
        {"assembly_list", 1}, {"optical_list", 1}, {"one_page_optical", 1},    {"film_code", 4},
        {"audio_code", 6},    {"film_reel", 2},    {"audio_reel", 4},          {"guess_black", 1},
        {"butt", 1},          {"pagelength", 66},  {"pull_match_assembly", 1}, {"optical_handle", 32}};
    for (const number_key& key : number_keys) {
        const auto found = not_zero.find(key.name);
        EXPECT_EQ(options.*key.field, found == not_zero.end() ? 0 : found->second) << key.name;
    }
    EXPECT_STREQ(options.channel_str, "V01");
    EXPECT_STREQ(options.pgm_id, "");
}

TEST(ChannelText, HasALetterAndTwoDigits) {
    int type = 2;
    EXPECT_STREQ(channel_text(type, 1), "A01");
    type = 1;
    EXPECT_STREQ(channel_text(type, 12), "V12");
    EXPECT_STREQ(channel_text(type, 123), "V123");
    type = 7;
    EXPECT_STREQ(channel_text(type, -1), "V-1");
    EXPECT_EQ(type, 7);
}

TEST(ChannelText, TurnsATypeOfZeroIntoPictureForItsCaller) {
    int type = 0;
    EXPECT_STREQ(channel_text(type, 0), "V00");
    EXPECT_EQ(type, 1);
}

TEST(ChannelText, ReadsBackWithNumbersKeptToSixteen) {
    EXPECT_EQ(parsed(""), (channel{0, 1}));
    EXPECT_EQ(parsed("a17"), (channel{2, 1}));
    EXPECT_EQ(parsed("a16"), (channel{2, 16}));
    EXPECT_EQ(parsed("v02"), (channel{1, 2}));
    EXPECT_EQ(parsed("V"), (channel{1, 1}));
    EXPECT_EQ(parsed("V0"), (channel{1, 1}));
    EXPECT_EQ(parsed("Q-3"), (channel{2, 1}));
}

TEST(TrimText, TakesWhiteSpaceOffBothEnds) {
    EXPECT_EQ(trimmed("  a b\t\r\n"), "a b");
    EXPECT_EQ(trimmed(" \t "), "");
    EXPECT_EQ(trimmed(""), "");
    EXPECT_EQ(trimmed("x"), "x");
    trim_text(nullptr);
}

} // namespace
