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
