// JSON texts as trees: what is read, what is refused, and where that stands.

#include "formats/json_document.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using namespace formats;

namespace {

/// What is read, as a text again; nothing where it is refused.
std::optional<std::string> text_read(const std::string& text) {
    JsonDocument document;
    if (!document.parse(text)) return std::nullopt;
    return json_to_text(document.root());
}

/// The same by the library's own parser, which doesn't call itself.
std::optional<std::string> text_expected(const std::string& text) {
    constexpr unsigned flags =
        rapidjson::kParseIterativeFlag | rapidjson::kParseNanAndInfFlag | rapidjson::kParseFullPrecisionFlag;
    JsonTree document;
    document.Parse<flags>(text.data(), text.size());
    if (document.HasParseError()) return std::nullopt;
    return json_to_text(document);
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

std::string text_of(const Tokens& tokens, const Tokens& between = blanks) {
    std::string text = one_of(between);
    for (const std::string& token : tokens)
        text += token + one_of(between);
    return text;
}

} // namespace

TEST(JsonDocument, SoundTextsAreReadAsTheyStand) {
    EXPECT_TRUE(rc::check([] {
        Tokens tokens;
        add_value(tokens, 0);
        const std::string text = text_of(tokens);
        const auto read = text_read(text);
        RC_ASSERT(read.has_value());
        RC_ASSERT(read == text_expected(text));
    }));
}

TEST(JsonDocument, BrokenTextsAreRefusedAndOddOnesReadAsTheyStand) {
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
        std::string text = text_of(tokens, {" ", "\n"}); // numbers of many digits are the other parser's weakness
        if (*rc::gen::inRange(0, 4) == 0) text.resize(*rc::gen::inRange<std::size_t>(0, text.size() + 1));
        // Of these the library's own parser makes less: it takes a zero for the end, and skips no mark.
        RC_PRE(text.find('\0') == std::string::npos && text.find("\xEF\xBB\xBF") == std::string::npos);
        RC_ASSERT(text_read(text) == text_expected(text));
    }));
}

TEST(JsonDocument, EachOddTokenIsReadOrRefusedAsItShouldBe) {
    for (const std::string& token : odd)
        for (const std::string& text : {token, "[" + token + "]", "{\"a\":" + token + "}", "{" + token + ":1}"})
            if (token != "\xEF\xBB\xBF" && text_read(text) != text_expected(text)) ADD_FAILURE() << text;
}

TEST(JsonDocument, IsReadAsDeepAsTheLimitAndNoDeeper) {
    EXPECT_EQ(text_read(nested(json_depth_limit)), nested(json_depth_limit));
    EXPECT_FALSE(text_read(nested(json_depth_limit + 1)));
    EXPECT_FALSE(text_read(std::string(1000000, '[')));
}

// An array that ended gives its depth back.
TEST(JsonDocument, CountsDepthAndNotObjects) {
    std::string wide = "[";
    for (unsigned i = 0; i < json_depth_limit; ++i)
        wide += i == 0 ? "[],{}" : ",[],{}";
    wide += "]";
    EXPECT_EQ(text_read(wide), wide);
}

TEST(JsonDocument, TellsWhatIsWrongAndWhere) {
    const std::pair<const char*, const char*> faults[] = {
        {"", "line 1, byte 1: The document is empty."},
        {"[1,\n2,]", "line 2, byte 7: Invalid value."},
        {"{\"a\": 01}", "line 1, byte 8: Missing a comma or '}' after an object member."},
        {"[1e999]", "line 1, byte 2: Number too big to be stored in double."},
        {"[1] x", "line 1, byte 5: The document root must not be followed by other values."},
        {"\xEF\xBB\xBF[", "line 1, byte 5: Invalid value."},
    };
    for (const auto& [text, fault] : faults) {
        JsonDocument document;
        EXPECT_FALSE(document.parse(text));
        EXPECT_EQ(document.error(), fault) << text;
    }
}

TEST(JsonDocument, CanBeParsedAgain) {
    JsonDocument document;
    EXPECT_TRUE(document.parse("[\"a\"]"));
    EXPECT_FALSE(document.parse("{"));
    EXPECT_NE(document.error(), "");
    EXPECT_TRUE(document.parse("{\"b\": \"c\"}"));
    EXPECT_EQ(document.error(), "");
    EXPECT_EQ(json_to_text(document.root()), "{\"b\":\"c\"}");
}

TEST(JsonDocument, MembersAreFoundTogetherAsTheyAreOneByOne) {
    static constexpr std::string_view keys[] = {"a", "bc", "bd", "", "none"};
    JsonDocument document;
    ASSERT_TRUE(document.parse(R"({"bc": 1, "a": null, "a": 2, "": 3, "bd": 4, "bc": 5})"));
    const auto found = json_members(document.root(), keys);
    for (std::size_t i = 0; i < std::size(keys); ++i)
        EXPECT_EQ(found[i], json_member(document.root(), keys[i])) << keys[i];
    EXPECT_EQ(found[0], nullptr);
    EXPECT_EQ(found[1]->GetInt(), 1);
    ASSERT_TRUE(document.parse("[1]"));
    EXPECT_EQ(json_members(document.root(), keys)[0], nullptr);
}
