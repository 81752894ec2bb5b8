#include "host/text.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <climits>

namespace {

std::string round_trip(const std::string& bytes) {
    return std::string(toUTF8(fromUTF8(LightweightString<char>(std::string_view(bytes)))).view());
}

TEST(Utf8, EmptyTextsGiveEmptyValues) {
    EXPECT_TRUE(fromUTF8("", -1).empty());
    EXPECT_TRUE(fromUTF8(nullptr, -1).empty());
    EXPECT_TRUE(fromUTF8(LightweightString<char>()).empty());
    EXPECT_TRUE(toUTF8(LightweightString<wchar_t>()).empty());
    EXPECT_STREQ(LightweightString<char>().c_str(), "");
    EXPECT_STREQ(LightweightString<wchar_t>().c_str(), L"");
}

TEST(Utf8, CharactersOfEveryLengthConvertBothWays) {
    const char* bytes = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8E\xAC";
    EXPECT_EQ(fromUTF8(bytes, -1).view(), L"a\u00E9\u20AC\U0001F3AC");
    EXPECT_EQ(round_trip(bytes), bytes);
}

TEST(Utf8, ALengthCutsTheText) { EXPECT_EQ(fromUTF8("abcdef", 3).view(), L"abc"); }

TEST(Utf8, AStrayByteCountsAsOneCharacterAndComesBack) {
    EXPECT_EQ(fromUTF8("a\xFFz", -1).size(), 3U);
    for (const char* bytes :
         {"\x80", "\xC0\xAF", "\xE2\x82", "\xED\xB2\x80", "\xF5\x80\x80\x80", "\xE2\x82z", "\xC3"}) {
        EXPECT_EQ(round_trip(bytes), bytes);
        EXPECT_EQ(fromUTF8(bytes, -1).size(), std::string_view(bytes).size());
    }
}

TEST(Utf8, AnyBytesPassThroughUnchanged) {
    EXPECT_TRUE(rc::check([](const std::string& bytes) { RC_ASSERT(round_trip(bytes) == bytes); }));
}

TEST(Utf8, AnyWideValuesGiveATextThatStaysAsItIs) {
    EXPECT_TRUE(rc::check([](const std::vector<int>& values) {
        const std::wstring wide(values.begin(), values.end());
        const std::string bytes(toUTF8(LightweightString<wchar_t>(std::wstring_view(wide))).view());
        RC_ASSERT(round_trip(bytes) == bytes);
    }));
}

TEST(Integers, HaveDecimalTextAtTheirLimits) {
    EXPECT_STREQ(StringFromInteger(INT_MIN).c_str(), "-2147483648");
    EXPECT_STREQ(StringFromInteger(0).c_str(), "0");
    EXPECT_EQ(Qb::WStringFromInteger(INT64_MIN).view(), L"-9223372036854775808");
    EXPECT_EQ(Qb::WStringFromAscii("Reel 1").view(), L"Reel 1");
}

TEST(TextValue, AnUnsharedBlockIsReusedAndASharedOneIsLeftAlone) {
    LightweightString<char> text("abcdefg");
    const char* place = text.c_str();
    text.assign("xyz");
    EXPECT_EQ(text.c_str(), place);
    const LightweightString<char> other = text;
    text.assign("new");
    EXPECT_STREQ(other.c_str(), "xyz");
    EXPECT_STREQ(text.c_str(), "new");
    EXPECT_STREQ(("a" + text).c_str(), "anew");
}

TEST(CharacterSet, HoldsItsMembersAlone) {
    const isset set(" \t\xE9");
    EXPECT_NE(set(' '), 0);
    EXPECT_NE(set(0xE9), 0);
    EXPECT_EQ(set('a'), 0);
    EXPECT_EQ(set(0), 0);
    EXPECT_EQ(isset(nullptr)('a'), 0);
}

TEST(GrowingText, AppendsAndReturnsItself) {
    GrowString text;
    EXPECT_EQ(&text.append("ab").append(nullptr).append("c"), &text);
    EXPECT_STREQ(text.c_str(), "abc");
    EXPECT_EQ(text.size(), 3U);
}

TEST(Memset, FillsABlock) {
    unsigned char block[4] = {1, 1, 1, 1};
    Qb::Memset(block, 7, 3);
    EXPECT_EQ(block[2], 7);
    EXPECT_EQ(block[3], 1);
    Qb::Memset(nullptr, 7, 0);
}

} // namespace
