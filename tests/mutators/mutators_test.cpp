// What the changes to fuzz inputs keep: well-formed stays well-formed, sealed sealed, and a compound file is still one.

#include "embedded/table_file.h"
#include "formats/bundle/otio_bundle.h"
#include "formats/bundle/zip_entry.h"
#include "formats/compound/compound_file.h"
#include "formats/json_document.h"
#include "formats/xml/xml_document.h"
#include "fuzz/mutators/mutators.h"
#include "fuzz/mutators/structures.h"
#include "tests/support/compound_writer.h"
#include "tests/support/project_paths.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace {

constexpr std::uint32_t many = 2000;

std::string unscrambled(std::string bytes, fuzz::Random&) { return bytes; }

using Mutator = std::string (*)(const std::string&, fuzz::Random&, const fuzz::Scramble&);

/// What comes of a text under each of many seeds.
std::set<std::string> outcomes(Mutator mutate, const std::string& text) {
    std::set<std::string> all;
    for (std::uint32_t seed = 0; seed < many; ++seed) {
        fuzz::Random random(seed);
        all.insert(mutate(text, random, unscrambled));
    }
    return all;
}

const std::string json = R"({"OTIO_SCHEMA":"Timeline.1", "tracks" : {"children":[1.5, -2 , [], {}, [true,null]]},
    "name":"a \"b\" \\", "rate":24})";
const std::string xml = "<?xml version=\"1.0\"?><!DOCTYPE xmeml>\n<xmeml version=\"5\"><!-- a > b --><sequence id='s'>"
                        "<rate><timebase>25</timebase><ntsc>FALSE</ntsc></rate><file id=\"f\" /></sequence></xmeml>";
const std::string table = "%recdb 2\nCUTDB=Rev 22\nchannel=V01\n\nevent\ttrack\na\ta\n1\t2\n3\t4\n5\t6\n";

bool is_json(const std::string& text) { return formats::JsonDocument().parse(text); }

bool is_xml(const std::string& text) { return formats::xml::Document().parse(text); }

TEST(Mutators, JsonStaysJson) {
    ASSERT_TRUE(is_json(json));
    const std::set<std::string> all = outcomes(fuzz::mutate_json, json);
    EXPECT_GT(all.size(), 400u);
    // But for numbers with a zero ahead or two signs.
    const auto sound = std::count_if(all.begin(), all.end(), is_json);
    EXPECT_GT(sound * 20, static_cast<std::ptrdiff_t>(all.size()) * 19);
}

TEST(Mutators, MembersAndElementsOfJsonAreLeftOutAndWrittenTwice) {
    const std::set<std::string> all = outcomes(fuzz::mutate_json, R"({"a":[1,2],"b":3})");
    for (const char* expected : {R"({"b":3})", R"({"a":[1,2]})", R"({"a":[2],"b":3})", R"({"a":[1],"b":3})",
                                 R"({"a":[1,2,2],"b":3})", R"({"a":[1,2],"b":3,"b":3})", R"({"a":3,"b":[1,2]})"})
        EXPECT_EQ(all.count(expected), 1u) << expected;
}

TEST(Mutators, XmlStaysXml) {
    ASSERT_TRUE(is_xml(xml));
    const std::set<std::string> all = outcomes(fuzz::mutate_xml, xml);
    EXPECT_GT(all.size(), 100u);
    // But where the root went, was written twice, or holds a declaration or an attribute twice.
    const auto sound = std::count_if(all.begin(), all.end(), is_xml);
    EXPECT_GT(sound * 10, static_cast<std::ptrdiff_t>(all.size()) * 7);
}

TEST(Mutators, ElementsAndAttributesAreLeftOutAndWrittenTwice) {
    const std::set<std::string> all = outcomes(fuzz::mutate_xml, "<a><b c=\"1\"/><d>5</d></a>");
    for (const char* expected :
         {"<a><d>5</d></a>", "<a><b c=\"1\"/></a>", "<a><b/><d>5</d></a>", "<a><b c=\"1\"/><d>6</d></a>",
          "<a><b c=\"1\"/><b c=\"1\"/><d>5</d></a>", "<a><d>5</d><b c=\"1\"/></a>"})
        EXPECT_EQ(all.count(expected), 1u) << expected;
}

TEST(Mutators, LinesOfEditListsChangePlacesAndNumbers) {
    const std::set<std::string> all =
        outcomes(fuzz::mutate_lines, "001 A V C 01:00:00:00 01:00:02:00\n002 B V D 012 01:00:05:00\n");
    for (const char* expected : {"001 A V C 01:00:00:00 01:00:02:00\n", "002 B V D 012 01:00:05:00\n",
                                 "002 B V D 012 01:00:05:00\n001 A V C 01:00:00:00 01:00:02:00\n",
                                 "001 A V C 01:00:00:00 01:00:02:01\n002 B V D 012 01:00:05:00\n",
                                 "001 A V C 01:00:00:00 01:00:02:00\n002 B V D 013 01:00:05:00\n"})
        EXPECT_EQ(all.count(expected), 1u) << expected;
}

TEST(Mutators, FieldsTakeThePlaceOfOthersOfTheirColumn) {
    const std::set<std::string> all = outcomes(fuzz::mutate_columns, "a\tb\tc\nd\te\tf\n");
    for (const char* expected : {"d\tb\tc\nd\te\tf\n", "a\tb\tf\nd\te\tf\n", "a\te\tc\nd\tb\tf\n"})
        EXPECT_EQ(all.count(expected), 1u) << expected;
}

TEST(Mutators, TablesAreSealedAnew) {
    const std::string sealed = fuzz::sealed_anew(table);
    embedded::TableData read;
    ASSERT_TRUE(embedded::read_table(sealed, SIZE_MAX, &read));
    EXPECT_EQ(read.rows.size(), 3u);
    EXPECT_EQ(fuzz::sealed_anew(sealed), sealed);
    EXPECT_EQ(fuzz::sealed_anew(sealed + sealed), sealed + sealed);
    EXPECT_EQ(fuzz::sealed_anew("%recdb 1\n\na\na\n1\n"), "%recdb 1\n\na\na\n1\n");
}

TEST(Mutators, ManyTablesCanBeRead) {
    const std::set<std::string> all = outcomes(fuzz::mutate_tables, fuzz::sealed_anew(table));
    const auto sound = std::count_if(all.begin(), all.end(), [](const std::string& text) {
        embedded::TableData read;
        return embedded::read_table(text, SIZE_MAX, &read);
    });
    EXPECT_GT(all.size(), 200u);
    EXPECT_GT(sound * 10, static_cast<std::ptrdiff_t>(all.size()) * 4);
}

std::string compound() {
    const std::string properties("L \x02\x00\x01\x00\x82\x00\x02\x00\x02\x00\x82\x00\x01\x00xyz", 19);
    compound_writer::Node inner{"inner", true, {1}, {}, {{"properties", false, {}, properties, {}}}};
    compound_writer::Node root{"Root Entry", true, {2}, {}, {inner, {"properties", false, {}, properties, {}}}};
    return compound_writer::written(root);
}

TEST(Mutators, MostCompoundFilesCanBeOpened) {
    const std::set<std::string> all = outcomes(fuzz::mutate_compound, compound());
    const auto sound = std::count_if(all.begin(), all.end(), [](const std::string& bytes) {
        formats::compound::File file;
        return file.open(bytes);
    });
    EXPECT_GT(all.size(), 200u);
    EXPECT_GT(sound * 10, static_cast<std::ptrdiff_t>(all.size()) * 6);
}

TEST(Mutators, PropertiesOfCompoundFilesGoAndCome) {
    const std::string all_but_first("L \x01\x00\x02\x00\x82\x00\x01\x00z", 11);
    std::set<std::string> streams;
    for (const std::string& bytes : outcomes(fuzz::mutate_compound, compound())) {
        formats::compound::File file;
        if (!file.open(bytes)) continue;
        if (const auto stream = file.stream(formats::compound::root_storage, "properties")) streams.insert(*stream);
    }
    EXPECT_EQ(streams.count(all_but_first), 1u);
    EXPECT_GT(streams.size(), 10u);
}

TEST(Mutators, TheEditOfABundleIsChanged) {
    const std::string bundle = bytes_of_file(project_folder() + "/fuzz/corpus/bundle/packed");
    std::string why;
    const auto edit = formats::bundle::entry_of(bundle, formats::bundled_edit, why);
    ASSERT_TRUE(edit) << why;
    std::set<std::string> edits;
    for (const std::string& other : outcomes(fuzz::mutate_bundle, bundle))
        if (const auto found = formats::bundle::entry_of(other, formats::bundled_edit, why)) edits.insert(*found);
    EXPECT_GT(edits.size(), 100u);
    EXPECT_TRUE(
        std::any_of(edits.begin(), edits.end(), [&](const std::string& e) { return e != *edit && is_json(e); }));
}

TEST(Mutators, DigitsBecomeOtherNumbers) {
    std::set<std::string> all;
    for (std::uint32_t seed = 0; seed < many; ++seed) {
        fuzz::Random random(seed);
        all.insert(fuzz::change_digits("a09", random));
    }
    for (const char* expected : {"a00", "a99", "a10", "a08", "a-09"})
        EXPECT_EQ(all.count(expected), 1u) << expected;
    fuzz::Random random(1);
    EXPECT_EQ(fuzz::change_digits("abc", random), "abc");
}

TEST(Mutators, AnyBytesAreTaken) {
    for (std::uint32_t seed = 0; seed < many; ++seed) {
        fuzz::Random random(seed);
        std::string bytes;
        for (const char* text :
             {"", "{", "[,", "<", "<a b", "<a b=\"", "</", "%recdb 2\n", "PK", "SDPX", "\n\n", "\"\\", "="}) {
            bytes = text;
            for (int i = 0; i < 4; ++i)
                bytes = fuzz::mutate_by_looks(bytes, random, unscrambled);
            EXPECT_LT(bytes.size(), 2000u);
        }
    }
}

} // namespace
