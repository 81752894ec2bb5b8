// XML texts as trees.

#include "formats/xml/xml_document.h"

#include <gtest/gtest.h>

using formats::xml::Document;
using formats::xml::Element;
using formats::xml::Limits;

namespace {

std::string error_of(const std::string& text, const Limits& limits = {}) {
    Document document;
    EXPECT_FALSE(document.parse(text, limits)) << text.substr(0, 200);
    EXPECT_FALSE(document.root());
    return document.error();
}

/// As UTF-16 with a byte order mark, least byte first or last.
std::string wide(const std::string& ascii, bool least_first) {
    std::string bytes = least_first ? "\xFF\xFE" : "\xFE\xFF";
    for (const char c : ascii)
        bytes += least_first ? std::string{c, '\0'} : std::string{'\0', c};
    return bytes;
}

std::string repeated(const std::string& text, std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

TEST(XmlTree, ElementsHaveNamesTextsAttributesAndLines) {
    Document document;
    ASSERT_TRUE(document.parse("<?xml version=\"1.0\"?>\n<!DOCTYPE list>\n<list version='5'>\n"
                               "  <clip id=\"a\" on=''>\n <name> Sea &amp; <![CDATA[<sky>]]>\n</name></clip>\n"
                               "  <clip/><gap/><clip/></list>"));
    const Element list = document.root();
    EXPECT_EQ(list.name(), "list");
    EXPECT_EQ(document.doctype(), "list");
    EXPECT_EQ(list.attribute("version"), "5");
    EXPECT_EQ(list.line(), 3U);
    const Element clip = list.first_child();
    EXPECT_EQ(clip.attribute("id"), "a");
    EXPECT_TRUE(clip.has_attribute("on"));
    EXPECT_FALSE(clip.has_attribute("off"));
    EXPECT_EQ(clip.text_of("name"), "Sea & <sky>");
    EXPECT_EQ(clip.child("name").line(), 5U);
    EXPECT_EQ(clip.child("name").parent(), clip);
    EXPECT_EQ(clip.parent(), list);
    EXPECT_EQ(clip.next_of_name().number(), 3U);
    EXPECT_EQ(clip.next_of_name().next().name(), "gap");
    EXPECT_FALSE(clip.next_of_name().next_of_name().next_of_name());
    int children = 0;
    for (const Element child : list.children())
        children += child.parent() == list ? 1 : 0;
    EXPECT_EQ(children, 4);
    EXPECT_EQ(document.element_count(), 6U);
}

TEST(XmlTree, NoElementHasNothingAndIsNowhere) {
    const Element none;
    EXPECT_FALSE(none);
    EXPECT_FALSE(none.child("a").next().parent());
    EXPECT_TRUE(none.text().empty() && none.name().empty() && none.attribute("a").empty());
    EXPECT_EQ(none.line(), 0U);
    EXPECT_EQ(none.children().begin(), none.children().end());
    EXPECT_FALSE(Document().root());
}

TEST(XmlTree, TextAroundChildrenIsJoined) {
    Document document;
    ASSERT_TRUE(document.parse("<a> x<b>inner</b>y <c/> </a>"));
    EXPECT_EQ(document.root().text(), "xy");
    EXPECT_EQ(document.root().text_of("b"), "inner");
}

TEST(XmlTree, LinesMayEndInCarriageReturns) {
    Document document;
    ASSERT_TRUE(document.parse("<a>\r<b>1\r2</b>\r\r<c/></a>"));
    EXPECT_EQ(document.root().child("b").text(), "1\n2");
    EXPECT_EQ(document.root().child("c").line(), 5U);
}

TEST(XmlTree, WideTextsAndLatinBecomeUtf8) {
    for (const bool least_first : {true, false}) {
        Document document;
        ASSERT_TRUE(document.parse(wide("<a>x<b/></a>", least_first))) << document.error();
        EXPECT_EQ(document.root().text(), "x");
    }
    Document latin;
    ASSERT_TRUE(latin.parse("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>"));
    EXPECT_EQ(latin.root().text(), "\xC3\xA9");
    Document marked;
    EXPECT_TRUE(marked.parse("\xEF\xBB\xBF<a/>"));
}

TEST(XmlTree, OtherEncodingsAreRefusedByName) {
    EXPECT_EQ(error_of("<?xml version='1.0' encoding='windows-1252'?><a/>"),
              "line 1: the encoding \"windows-1252\" isn't read, or isn't what it is; save it as UTF-8");
    EXPECT_EQ(error_of("<a>\n\xE9</a>"), "line 2: not well-formed (invalid token)");
}

TEST(XmlTree, DefinedEntitiesAreRefusedBeforeTheyAreUsed) {
    const std::string bomb = "<!DOCTYPE a [\n<!ENTITY x \"ha\">\n<!ENTITY y \"&x;&x;\">]><a>&y;</a>";
    EXPECT_EQ(error_of(bomb), "line 2: defines the entity \"x\", which isn't taken");
    EXPECT_EQ(error_of("<!DOCTYPE a [<!ENTITY x SYSTEM \"/etc/passwd\">]><a>&x;</a>"),
              "line 1: defines the entity \"x\", which isn't taken");
    EXPECT_EQ(error_of("<!DOCTYPE a [<!ENTITY % x SYSTEM \"a.dtd\">]><a/>"),
              "line 1: defines the entity \"x\", which isn't taken");
    EXPECT_EQ(error_of("<a>&x;</a>"), "line 1: undefined entity");
}

TEST(XmlTree, WhatStandsOutsideIsNeitherFetchedNorLost) {
    Document document;
    EXPECT_TRUE(document.parse("<!DOCTYPE a SYSTEM \"/nowhere/a.dtd\"><a>&lt;</a>"));
    EXPECT_EQ(document.root().text(), "<");
    EXPECT_EQ(error_of("<!DOCTYPE a SYSTEM \"/nowhere/a.dtd\"><a>&x;</a>"),
              "line 1: uses the entity \"x\", which the file doesn't hold");
    EXPECT_EQ(error_of("<!DOCTYPE a [<!ATTLIST b c CDATA \"much\">]><a><b/></a>"),
              "line 1: declares attributes for each \"b\", which isn't taken");
}

TEST(XmlTree, BrokenTextsNameTheLine) {
    EXPECT_EQ(error_of(""), "line 1: the text breaks off");
    EXPECT_EQ(error_of("<a>\n<b>"), "line 2: the text breaks off");
    EXPECT_EQ(error_of("<a>\n<b"), "line 2: the text breaks off");
    EXPECT_EQ(error_of("<a>\n\n</b>"), "line 3: mismatched tag");
    EXPECT_EQ(error_of("<a/>\n<b/>"), "line 2: junk after document element");
}

TEST(XmlLimits, DepthCountTextsAndNames) {
    Limits limits;
    limits.depth = 3;
    limits.elements = 5;
    limits.text = 4;
    limits.names = 3;
    limits.name = 5;
    Document enough;
    EXPECT_TRUE(enough.parse("<a><b><c/></b><a/><a>1234</a></a>", limits)) << enough.error();
    EXPECT_EQ(error_of("<a><b>\n<c><a/></c></b></a>", limits), "line 2: elements lie more than 3 deep");
    EXPECT_EQ(error_of("<a><a/><a/><a/><a/>\n<a/></a>", limits), "line 2: holds more than 5 elements");
    EXPECT_EQ(error_of("<a>12345</a>", limits), "line 1: holds a text of more than 4 bytes");
    EXPECT_EQ(error_of("<a>12<b/>34<b/>5</a>", limits), "line 1: holds a text of more than 4 bytes");
    EXPECT_EQ(error_of("<a b='12345'/>", limits), "line 1: holds a text of more than 4 bytes");
    EXPECT_EQ(error_of("<a b='' c='' d=''/>", limits), "line 1: has names that are too long or too many");
    EXPECT_EQ(error_of("<a><abcdef/></a>", limits), "line 1: has names that are too long or too many");
}

TEST(XmlLimits, FiftyMegabytesOfBlanksAreNoText) {
    Document document;
    ASSERT_TRUE(document.parse("<a>" + std::string(std::size_t{50} << 20, ' ') + "<b>1</b></a>")) << document.error();
    EXPECT_EQ(document.root().text(), "");
    EXPECT_EQ(document.root().text_of("b"), "1");
}

TEST(XmlLimits, ATagOfEndlessAttributesIsRefusedBeforeItTakesAllMemory) {
    std::string tag = "<a";
    for (int i = 0; i < 1'000'000; ++i)
        tag += " x" + std::to_string(i) + "=''";
    EXPECT_EQ(error_of(tag + "/>"), "line 1: takes more memory than may be");
    Document after;
    EXPECT_TRUE(after.parse("<a/>"));
}

TEST(XmlLimits, LongTextsAndCommentsPassFromPieceToPiece) {
    const std::string text = repeated("0123456789", 300'000);
    Document document;
    ASSERT_TRUE(document.parse("<a b='" + text + "'>" + text + "<!--" + text + text + "--></a>")) << document.error();
    EXPECT_EQ(document.root().text(), text);
    EXPECT_EQ(document.root().attribute("b"), text);
}

TEST(XmlLimits, TextsCutAnywhereAreErrors) {
    const std::string whole = "<?xml version=\"1.0\" encoding=\"UTF-8\"?><!DOCTYPE a><a b=\"c\"><!-- d --><e>&lt;" +
                              repeated("<f>\xC3\xA9</f>", 3) + "<![CDATA[g]]></e></a>";
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_NE(error_of(whole.substr(0, size)), "") << size;
    Document document;
    EXPECT_TRUE(document.parse(whole));
}

} // namespace
