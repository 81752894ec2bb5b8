// The texts of logs: prefixes, timecodes, input.

#include "tests/logging/film_tables.h"

#include <cstring>
#include <gtest/gtest.h>
#include <rapidcheck.h>

namespace {

/// A text in a block of its own, so that a sanitizer sees what is written behind it.
template <class Change> std::string changed(const std::string& text, std::size_t size, Change change) {
    std::vector<char> block(std::max(size, text.size() + 1), '\0');
    std::memcpy(block.data(), text.c_str(), text.size());
    change(block.data());
    return block.data();
}

std::string fixed_prefix(const std::string& text) { return changed(text, 9, OpenFilm::fix_prefix); }
std::string cleaned(const std::string& text) { return changed(text, 0, OpenFilm::input_clean); }
std::string dropped(const std::string& text, int drop) {
    return changed(text, 0, [&](char* block) { OpenFilm::drop_fix(block, drop); });
}
std::string timecode(const std::string& text, int* result) {
    return changed(text, 0, [&](char* block) { *result = OpenFilm::tc_clean(block); });
}

TEST(Prefix, IsAlwaysEightUpperCaseCharacters) {
    EXPECT_EQ(fixed_prefix("  ab "), "AB______");
    EXPECT_EQ(fixed_prefix("abcdefghij"), "ABCDEFGH");
    EXPECT_EQ(fixed_prefix("kj123456"), "KJ123456");
    EXPECT_EQ(fixed_prefix(""), "________");
    EXPECT_EQ(fixed_prefix("          a b"), "A B_____");
}

TEST(Timecode, TakesColonsAndASignBeforeTheFrames) {
    EXPECT_EQ(dropped("01 02 03 04", 1), "01:02:03;04");
    EXPECT_EQ(dropped("01;02;03;04", 0), "01:02:03.04");
    EXPECT_EQ(dropped("01020304", 1), "01020304");
    EXPECT_EQ(dropped("", 1), "");
    EXPECT_EQ(dropped("x", 1), ";");
}

TEST(Timecode, WithOtherCharactersIsEmptied) {
    int result = -1;
    EXPECT_EQ(timecode("01:02:03:04", &result), "01:02:03:04");
    EXPECT_EQ(result, 0);
    EXPECT_EQ(timecode("01:02x03", &result), "");
    EXPECT_EQ(result, 1);
    EXPECT_EQ(timecode(":::", &result), "");
    EXPECT_EQ(result, 0);
    EXPECT_EQ(timecode("", &result), "");
    EXPECT_EQ(result, 0);
    EXPECT_EQ(timecode("x", &result), "");
    EXPECT_EQ(result, 1);
    EXPECT_EQ(timecode("1.;,", &result), "1.;,");
    EXPECT_EQ(timecode("1\xc3", &result), "");
    EXPECT_EQ(result, 1);
}

TEST(Input, LosesQuotesAndWhatIsBlankBehind) {
    EXPECT_EQ(cleaned("  a \"quoted\" word \t\r\n"), "  a quoted word");
    EXPECT_EQ(cleaned("word \" "), "word ");
    EXPECT_EQ(cleaned("\"\"\""), "");
    EXPECT_EQ(cleaned("   "), "");
    EXPECT_EQ(cleaned(""), "");
}

TEST(Input, IsCutTo255Characters) {
    EXPECT_EQ(cleaned(std::string(400, 'x')), std::string(255, 'x'));
    EXPECT_EQ(cleaned(std::string(300, '"') + std::string(255, 'x')), std::string(255, 'x'));
}

TEST(Input, IsCleanAfterOnePass) {
    EXPECT_TRUE(rc::check("no quotes, never longer", [](const std::string& any) {
        const std::string text = any.substr(0, any.find('\0'));
        const std::string clean = cleaned(text);
        RC_ASSERT(clean.find('"') == std::string::npos);
        RC_ASSERT(clean.size() <= std::min<std::size_t>(text.size(), 255));
    }));
}

} // namespace
