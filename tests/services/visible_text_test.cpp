#include "embedded/visible_text.h"

#include "embedded/table_door.h"
#include "host/recdb.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <climits>

using embedded::visible;
using embedded::WarningKind;

TEST(VisibleText, ControlCharactersBecomeSigns) {
    EXPECT_EQ(visible("A001\nA002"), "A001\xE2\x90\x8A"
                                     "A002");
    EXPECT_EQ(visible("\f"), "\xE2\x90\x8C");
    EXPECT_EQ(visible("\t\x1B\x7F"), "\xE2\x90\x89\xE2\x90\x9B\xE2\x90\xA1");
    EXPECT_EQ(visible(std::string("a\0b", 3)), "a\xE2\x90\x80"
                                               "b");
}

TEST(VisibleText, SoDoThoseBeyondAscii) {
    EXPECT_EQ(visible("a\xC2\x85z"), "a\xE2\x90\xA4z");
    EXPECT_EQ(visible("a\xC2\x9Bz"), "a\xEF\xBF\xBDz");
    EXPECT_EQ(visible("\xE2\x80\xA8\xE2\x80\xA9"), "\xE2\x90\xA4\xE2\x90\xA4");
}

TEST(VisibleText, AllElseStays) {
    for (const char* text : {"", "A001 take 2", "caf\xC3\xA9", "\xC2\xA0", "\xE2\x80\xA6", "\x85\x9B", "\xC2",
                             "\xE2\x80", "\xF0\x9F\x8E\xAC", "a|b"}) {
        EXPECT_EQ(visible(text), text);
        std::string same = text;
        EXPECT_FALSE(embedded::make_visible(same));
    }
}

RC_GTEST_PROP(VisibleText, NoControlCharacterIsLeftAndNothingIsDoneTwice, (const std::string& text)) {
    const std::string once = visible(text);
    RC_ASSERT(visible(once) == once);
    for (const char c : once)
        RC_ASSERT(static_cast<unsigned char>(c) >= ' ' && c != '\x7f');
}

std::string any_text() {
    return *rc::gen::container<std::string>(rc::gen::element('a', 'b', 'd', 'p', '|', '\\', '\t', '\n', '\r', '\x1f',
                                                             ' ', '\x7f', '\xC2', '\x85', '\xE2', '\x80', '\xA8'));
}

RC_GTEST_PROP(VisibleText, WhatIsSurelyPlainIsTakenAsItIs, ()) {
    std::string text = any_text();
    const std::string before = text;
    const bool plain = embedded::is_surely_plain(text);
    if (!plain) return;
    RC_ASSERT(embedded::receive(text).is_plain());
    RC_ASSERT(text == before);
}

RC_GTEST_PROP(VisibleText, OfLinesThatAreSurelyPlainEveryTextIs, ()) {
    std::string lines;
    for (int texts = *rc::gen::inRange(1, 6); texts > 0; --texts)
        lines += *rc::gen::element<std::string>("A001", "", "scene 1", any_text()) + *rc::gen::element('\t', '\n');
    if (!embedded::are_surely_plain(lines)) return;
    RC_ASSERT(lines.find('\\') == std::string::npos);
    for (std::size_t at = 0, end = 0; at < lines.size(); at = end + 1) {
        end = lines.find_first_of("\t\n", at);
        std::string text = lines.substr(at, end - at);
        RC_ASSERT(embedded::receive(text).is_plain());
    }
}

TEST(VisibleText, LinesLongerThanANameMayBeAreLookedAtOneByOne) {
    EXPECT_TRUE(embedded::are_surely_plain(std::string(4000, 'x')));
    EXPECT_FALSE(embedded::are_surely_plain(std::string(4100, 'x')));
    embedded::set_longest_name(100);
    EXPECT_FALSE(embedded::are_surely_plain("x"));
    embedded::set_longest_name(65536);
}

TEST(VisibleText, WhatANameHeldIsTold) {
    embedded::Warnings warnings;
    std::string plain = "A001", two = "A\n1", marks = "scene |p";
    embedded::receive(plain, "reel", warnings);
    EXPECT_TRUE(warnings.empty());
    embedded::receive(two, "reel", warnings);
    embedded::receive(marks, "edit", warnings);
    ASSERT_EQ(warnings.size(), 2U);
    EXPECT_EQ(warnings[0].text, "reel \"A\xE2\x90\x8A"
                                "1\": control characters are shown by signs in their place");
    EXPECT_EQ(warnings[1].text, "edit \"scene |p\": lists print \"|d\" as the date and \"|p\" as the page number");
    EXPECT_EQ(warnings[0].kind, WarningKind::text);
    EXPECT_EQ(marks, "scene |p");
}

TEST(VisibleText, ALongNameIsCutBetweenCharacters) {
    embedded::set_longest_name(16);
    std::string name = "123456789012345\xC3\xA9";
    embedded::Warnings warnings;
    embedded::receive(name, "shot", warnings);
    embedded::set_longest_name(65536);
    EXPECT_EQ(name, "123456789012345");
    ASSERT_EQ(warnings.size(), 1U);
    EXPECT_EQ(warnings[0].text, "shot \"123456789012345\": cut after 16 bytes");
}

class TableDoor : public testing::Test {
protected:
    TableDoor() {
        const DBFieldDesc columns[] = {{"name", DBFieldTypes::text}, {"reel", DBFieldTypes::text}, {}};
        recdb table(columns);
        table.add_param("edit_name", "one\ntwo");
        for (const char* reel : {"A001", "A\f2"}) {
            dbrecord& row = *table.get_record(static_cast<unsigned>(table.add_records(1)));
            row.set_field(0, "shot", true);
            row.set_field(1, reel, true);
        }
        table.set_filename(path);
        EXPECT_EQ(table.save_text(), 0);
    }
    ~TableDoor() override { embedded::receive_tables(nullptr); }

    ScratchDirectory scratch;
    LightweightString<wchar_t> path = fromUTF8(scratch.file("a.cdb").c_str(), -1);
};

TEST_F(TableDoor, ATableComesBackAsItWasSaved) {
    const recdb table(path, INT_MAX, false);
    EXPECT_STREQ(table.get_param_val("edit_name"), "one\ntwo");
    EXPECT_STREQ(table.getField(1, 1).c_str(), "A\f2");
}

TEST_F(TableDoor, OneThatIsReadForUseHoldsSignsAndIsToldOfOnce) {
    std::vector<std::string> lines;
    embedded::receive_tables([&](const embedded::Warning& warning) { lines.push_back(warning.text); });
    for (int time = 0; time < 2; ++time) {
        const recdb table(path, INT_MAX, false);
        EXPECT_STREQ(table.get_param_val("edit_name"), "one\xE2\x90\x8Atwo");
        EXPECT_STREQ(table.getField(1, 1).c_str(), "A\xE2\x90\x8C"
                                                   "2");
        EXPECT_STREQ(table.getField(0, 1).c_str(), "A001");
    }
    EXPECT_EQ(lines, (std::vector<std::string>{
                         scratch.file("a.cdb") +
                         ": edit_name \"one\xE2\x90\x8Atwo\": control characters are shown by signs in their place; 1 "
                         "more of its texts, too"}));
}
