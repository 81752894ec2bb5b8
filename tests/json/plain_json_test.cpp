// The quick way through JSON gives the tree that the careful one gives, or leaves a text to it.

#include "formats/plain_json.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <optional>
#include <string>
#include <vector>

using namespace formats;

namespace {

std::optional<std::string> read_quickly(const std::string& text) {
    JsonTree tree;
    bool whole = false;
    auto generate = [&](JsonTree& target) { return whole = read_plain_json(text, target); };
    tree.Populate(generate);
    if (!whole) return std::nullopt;
    return json_to_text(tree);
}

std::optional<std::string> read_carefully(const std::string& text) {
    JsonDocument document;
    if (!document.parse(text)) return std::nullopt;
    return json_to_text(document.root());
}

std::string nested(std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); }

using Tokens = std::vector<std::string>;

const Tokens scalars = {"0",
                        "-0",
                        "24",
                        "-17",
                        "24.0",
                        "-0.5",
                        "23.976023976023978",
                        "1e5",
                        "2E-3",
                        "5e+0",
                        "123456789012345678",
                        "9223372036854775807",
                        "-9223372036854775808",
                        "true",
                        "false",
                        "null",
                        "\"\"",
                        "\"OTIO_SCHEMA\"",
                        "\"a \\\"b\\\" \\\\ \\/ \\b\\f\\n\\r\\t\"",
                        "\"\\u0041\\u00e9\\u20Ac\\u0000\"",
                        "\"K\xC3\xB6ln \xFF\x7F\""};
/// What is rare, or no JSON.
const Tokens odd = {"01",
                    "-",
                    "+1",
                    "1.",
                    ".5",
                    "1.e5",
                    "1e",
                    "1e999",
                    "1e-999",
                    "18446744073709551615",
                    "99999999999999999999999",
                    "NaN",
                    "-Infinity",
                    "tru",
                    "nulll",
                    "\"\\x\"",
                    "\"\\u12g4\"",
                    "\"\\ud83d\\ude00\"",
                    "\"\\ud800\"",
                    "\"\t\"",
                    "\"open",
                    "\"a\\",
                    "//",
                    "{",
                    "}",
                    "[",
                    "]",
                    ",",
                    ":",
                    "\"\\u00\"",
                    "\"\\u+123\"",
                    std::string("\0", 1),
                    "\xEF\xBB\xBF"};
const Tokens blanks = {"", "", " ", "\n", "\t\r\n "};

std::string one_of(const Tokens& tokens) { return *rc::gen::elementOf(tokens); }

void add_value(Tokens& tokens, int depth) {
    const int kind = depth > 3 ? 0 : *rc::gen::inRange(0, 4);
    if (kind < 2) {
        tokens.push_back(one_of(scalars));
        return;
    }
    const bool object = kind == 2;
    const int count = *rc::gen::inRange(0, 4);
    tokens.push_back(object ? "{" : "[");
    for (int i = 0; i < count; ++i) {
        if (i > 0) tokens.push_back(",");
        if (object) tokens.insert(tokens.end(), {one_of({"\"name\"", "\"name\"", "\"k\\u00e9y\"", "\"\""}), ":"});
        add_value(tokens, depth + 1);
    }
    tokens.push_back(object ? "}" : "]");
}

std::string text_of(const Tokens& tokens) {
    std::string text = one_of(blanks);
    for (const std::string& token : tokens)
        text += token + one_of(blanks);
    return text;
}

} // namespace

TEST(PlainJson, SoundTextsAreReadAsTheCarefulParserReadsThem) {
    EXPECT_TRUE(rc::check([] {
        Tokens tokens;
        add_value(tokens, 0);
        const std::string text = text_of(tokens);
        const auto quick = read_quickly(text);
        RC_ASSERT(quick.has_value());
        RC_ASSERT(quick == read_carefully(text));
    }));
}

TEST(PlainJson, WhatItAcceptsIsSoundAndTheSame) {
    EXPECT_TRUE(rc::check([] {
        Tokens tokens;
        add_value(tokens, 0);
        for (int changes = *rc::gen::inRange(1, 4); changes > 0; --changes) {
            const auto at = *rc::gen::inRange<std::size_t>(0, tokens.size());
            if (*rc::gen::arbitrary<bool>())
                tokens[at] = one_of(odd);
            else
                tokens.insert(tokens.begin() + static_cast<std::ptrdiff_t>(at), one_of(odd));
        }
        std::string text = text_of(tokens);
        if (*rc::gen::inRange(0, 4) == 0) text.resize(*rc::gen::inRange<std::size_t>(0, text.size() + 1));
        const auto quick = read_quickly(text);
        if (quick) RC_ASSERT(quick == read_carefully(text));
    }));
}

TEST(PlainJson, OfOddTokensItAcceptsOnlySoundOnes) {
    for (const std::string& token : odd)
        for (const std::string& text :
             {token, "[" + token + "]", "{\"a\":" + token + "}", "{" + token + ":1}", token + "1"}) {
            const auto quick = read_quickly(text);
            if (quick && quick != read_carefully(text)) ADD_FAILURE() << text;
        }
}

TEST(PlainJson, LeavesWhatIsRareToTheCarefulParser) {
    for (const char* rare : {"NaN", "-Inf", "99999999999999999999", "18446744073709551615", "\"\\ud83d\\ude00\""}) {
        EXPECT_FALSE(read_quickly(rare)) << rare;
        EXPECT_TRUE(read_carefully(rare)) << rare;
    }
    EXPECT_FALSE(read_quickly("1e999"));
    EXPECT_FALSE(read_carefully("1e999"));
}

TEST(PlainJson, ReadsAsDeepAsTheLimitAndNoDeeper) {
    EXPECT_EQ(read_quickly(nested(json_depth_limit)), nested(json_depth_limit));
    EXPECT_FALSE(read_quickly(nested(json_depth_limit + 1)));
    EXPECT_FALSE(read_quickly(std::string(1000000, '[')));
}

// An array that ended gives its depth back.
TEST(PlainJson, CountsDepthAndNotObjects) {
    std::string wide = "[";
    for (unsigned i = 0; i < json_depth_limit; ++i)
        wide += i == 0 ? "[],{}" : ",[],{}";
    wide += "]";
    EXPECT_EQ(read_quickly(wide), wide);
}

TEST(PlainJson, LentTextsGiveTheSameDocumentAndTheSameError) {
    for (const std::string text :
         {"\xEF\xBB\xBF{\"a\": [1, 2.5]}", "{\"a\": NaN}", "[1,\n2,]", "[1] x", "", "\"open"}) {
        JsonDocument lent, copied;
        EXPECT_EQ(lent.parse_lent(text), copied.parse(text)) << text;
        EXPECT_EQ(lent.error(), copied.error());
        EXPECT_EQ(json_to_text(lent.root()), json_to_text(copied.root()));
    }
}

TEST(PlainJson, ADocumentCanBeParsedAgain) {
    const std::string first = "[\"a\"]", second = "{\"b\": \"c\"}", broken = "{";
    JsonDocument document;
    EXPECT_TRUE(document.parse_lent(first));
    EXPECT_FALSE(document.parse_lent(broken));
    EXPECT_NE(document.error(), "");
    EXPECT_TRUE(document.parse_lent(second));
    EXPECT_EQ(document.error(), "");
    EXPECT_EQ(json_to_text(document.root()), "{\"b\":\"c\"}");
}

TEST(PlainJson, StringsWithoutEscapesLieInTheText) {
    const std::string text = "[\"plain\",\"esc\\\\aped\"]";
    JsonDocument document;
    ASSERT_TRUE(document.parse_lent(text));
    EXPECT_EQ(json_string(&document.root()[0]).data(), text.data() + 2);
    EXPECT_EQ(json_string(&document.root()[1]), "esc\\aped");
}
