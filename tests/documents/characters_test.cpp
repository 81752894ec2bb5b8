// Texts from outside on their way into a document.

#include "documents/characters.h"
#include "documents/csv.h"
#include "documents/html_text.h"
#include "documents/json.h"

#include <gtest/gtest.h>

using namespace documents;

TEST(Characters, ControlCharactersBecomeSigns) {
    EXPECT_EQ(clean("a\nb"), "a\xE2\x90\x8A"
                             "b");
    EXPECT_EQ(clean(std::string("\0", 1)), "\xE2\x90\x80");
    EXPECT_EQ(clean("Анна 灯台"), "Анна 灯台");
}

TEST(Characters, WhatIsNoUtf8IsReplaced) {
    EXPECT_EQ(clean("\xFF"), "\xEF\xBF\xBD");
    EXPECT_EQ(clean("a\xE2\x90"), "a\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(clean("\xED\xA0\x80"), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(clean("\xC0\x80"), "\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(clean("\xEF\xBF\xBE"), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"); // U+FFFE, which no document may hold
    EXPECT_EQ(clean("\xEF\xBF\xBD"), "\xEF\xBF\xBD");
}

TEST(Characters, WidthsAreThoseOfATerminal) {
    EXPECT_EQ(display_width("abc"), 3U);
    EXPECT_EQ(display_width("灯台"), 4U);
    EXPECT_EQ(display_width("e\xCC\x81"), 1U); // with a combining accent
    EXPECT_EQ(display_width("\xE2\x80\x8F"), 0U);
    EXPECT_EQ(display_width("سلام"), 4U);
    EXPECT_EQ(display_width("\xF0\x9F\x8E\x9E"), 2U); // film frames
}

TEST(Characters, DirectionsEndWithTheirText) {
    EXPECT_EQ(closed_directions("a\xE2\x80\xAE"), "a\xE2\x80\xAE\xE2\x80\xAC");
    EXPECT_EQ(closed_directions("\xE2\x81\xA7x"), "\xE2\x81\xA7x\xE2\x81\xA9");
    EXPECT_EQ(closed_directions("\xE2\x80\xABx\xE2\x80\xAC"), "\xE2\x80\xABx\xE2\x80\xAC");
    EXPECT_EQ(closed_directions("\xE2\x80\x8Fx"), "\xE2\x80\x8Fx"); // a mark leaves nothing open
}

TEST(Characters, MarksOfAPageStayText) {
    EXPECT_EQ(html_text("<b a='1' c=\"2\">&"), "&lt;b a=&#39;1&#39; c=&quot;2&quot;&gt;&amp;");
    EXPECT_EQ(css_string("a\"b\\c</style>"), "\"a\\\"b\\\\c\\3c /style>\"");
    EXPECT_EQ(html_name("A1/b \"x"), "A1-b--x");
}

TEST(Characters, FormulasStayTextInTables) {
    EXPECT_EQ(csv_field("=1+1"), "'=1+1");
    EXPECT_EQ(csv_field("@SUM(A1)"), "'@SUM(A1)");
    EXPECT_EQ(csv_field("-2"), "'-2");
    EXPECT_EQ(csv_field("a,\"b\""), "\"a,\"\"b\"\"\"");
    EXPECT_EQ(csv_field(" a"), "\" a\"");
    EXPECT_EQ(csv_field("a\r\nb"), "a\xE2\x90\x8D\xE2\x90\x8A"
                                   "b");
    EXPECT_EQ(csv_field(""), "");
}

TEST(Characters, TextsOfJsonEndWhereTheyShould) {
    EXPECT_EQ(json_string("a\"b\\"), "\"a\\\"b\\\\\"");
    EXPECT_EQ(json_string("</script>"), "\"\\u003c/script>\"");
    EXPECT_EQ(json_string("\t"), "\"\xE2\x90\x89\"");
}
