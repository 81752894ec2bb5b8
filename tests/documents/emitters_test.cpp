// What the emitters make of documents: the same rows in each, and no text that leaves its cell.

#include "documents/csv.h"
#include "documents/html.h"
#include "documents/json.h"
#include "documents/plain_text.h"
#include "tests/documents/made_cut_film.h"
#include "tests/documents/read_back.h"
#include "tests/support/project_paths.h"

#include <gmock/gmock.h>
#include <rapidjson/document.h>
#include <rapidjson/schema.h>

#include <algorithm>
#include <fstream>
#include <sstream>

using namespace documents;
using namespace documents_test;
using namespace generator_test;
using testing::Each;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::Not;

namespace {

const std::string hostile_names[] = {
    "<script>alert(1)</script>",
    "a & b \"c\" 'd'",
    "two\nlines\r\nand\ttab",
    std::string("zero\0behind", 11),
    "\xE2\x80\xAE"
    "right to left",
    "=1+1",
    "\"],\n{",
    "</style><img src=x onerror=alert(1)>",
    "\xFF\xFE no text",
    std::string(2000, 'x'),
    "Анна 灯台 سلام",
    "]]>-->",
};

/// A cut whose names are all of these.
CutFilmPtr hostile_cut() {
    EditBuilder builder{plain_edit("<i>Reel</i> \"1\" & \\")};
    const int v1 = builder.add_channel(picture);
    int place = 0;
    for (const std::string& name : hostile_names) {
        SourceDescription source = shot("s");
        source.identity = "name:" + std::to_string(place);
        source.name = name;
        source.scene = name.substr(0, 20);
        source.reels[{2, 1}] = name.substr(0, 9);
        if (place % 2 == 1) source.key.reset();
        builder.add_event(v1, event_of(builder.add_source(source), 10 + place, 100 * place));
        if (++place % 3 == 0) builder.add_transition(v1, dissolve(2, 2, name.substr(0, 30)));
    }
    builder.add_event(v1, event_of(builder.add_source(shot("last", "KJ7777770100+00")), 30, 900));
    return cut_of(builder.finish());
}

std::string source_file(const std::string& name) {
    std::ostringstream bytes;
    bytes << std::ifstream(project_folder() + "/" + name, std::ios::binary).rdbuf();
    return bytes.str();
}

struct Emitters : testing::Test {
    const CutFilmPtr cut = hostile_cut();
    const Document document = all_lists_of(*cut);
};

} // namespace

TEST_F(Emitters, RowsOfCsvAreTheValuesOfTheModel) {
    for (const List& list : document.lists) {
        const std::vector<std::vector<std::string>> lines = csv_lines(csv_of(list));
        const std::vector<Row> rows = items_of(list);
        ASSERT_EQ(lines.size(), rows.size() + 1) << list.id;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            std::vector<std::string> expected = {rows[i].id};
            ASSERT_EQ(lines[i + 1].size(), lines[0].size());
            for (const Value& value : values_of(list, rows[i]))
                expected.push_back(unescaped_field(value));
            std::vector<std::string> read = {lines[i + 1][0]};
            read.insert(read.end(), lines[i + 1].begin() + 2, lines[i + 1].end() - 2);
            EXPECT_THAT(read, ElementsAreArray(expected));
        }
    }
}

TEST_F(Emitters, RowsOfJsonAreTheValuesOfTheModel) {
    rapidjson::Document json;
    json.Parse(json_of(document).c_str());
    ASSERT_FALSE(json.HasParseError());
    ASSERT_EQ(json["lists"].Size(), document.lists.size());
    for (rapidjson::SizeType n = 0; n < json["lists"].Size(); ++n) {
        const List& list = document.lists[n];
        std::vector<std::string> expected;
        for (const Row& row : items_of(list))
            expected.push_back(row_text(list, row));
        EXPECT_EQ(json_rows(json["lists"][n]), expected) << list.id;
    }
}

TEST_F(Emitters, RowsOfThePageAreThoseOfTheModel) {
    const PageRows page = rows_of_page(html_of(document));
    std::vector<std::string> expected;
    for (const List& list : document.lists)
        for (const Row& row : items_of(list)) {
            std::string text = row.id;
            for (std::size_t i = 0; i < list.columns.size(); ++i)
                if (!list.columns[i].title.empty() && i < row.cells.size()) text += "|" + page_text(row.cells[i]);
            expected.push_back(text);
        }
    EXPECT_EQ(page.rows, expected);
}

// An optical over no event has a note and nothing else; a row may have less.
TEST_F(Emitters, EveryRowOfThePageHasOneHeadingWhateverItLacks) {
    Document bare = document;
    for (List& list : bare.lists)
        for (Part& part : list.parts)
            for (std::size_t i = 0; i < part.rows.size(); ++i) {
                part.rows[i].notes.clear();
                if (i % 3 == 1) part.rows[i].notes = {{Mark::wrong, "Effect over no event", "", "", ""}};
                if (i % 3 != 2) std::fill(part.rows[i].cells.begin(), part.rows[i].cells.end(), Cell());
            }
    const std::string page = html_of(bare);
    const std::string begins = "<tr role=row id=";
    std::size_t rows = 0;
    for (std::size_t at = page.find(begins); at != std::string::npos; at = page.find(begins, at + 1), ++rows) {
        const std::string row = page.substr(at, page.find("</tr>", at) - at);
        const std::size_t head = row.find("<th scope=row");
        ASSERT_NE(head, std::string::npos) << row;
        ASSERT_EQ(row.find("<th scope=row", head + 1), std::string::npos) << row;
        if (const std::size_t note = row.find("Effect over no event"); note != std::string::npos) {
            EXPECT_GT(note, head) << row;
            EXPECT_LT(note, row.find("</th>")) << row;
        }
    }
    EXPECT_GT(rows, 20U);
}

TEST_F(Emitters, JsonFitsItsSchema) {
    rapidjson::Document schema;
    schema.Parse(source_file("docs/lists.schema.json").c_str());
    ASSERT_FALSE(schema.HasParseError());
    const rapidjson::SchemaDocument compiled(schema);
    const auto fits = [&compiled](const std::string& text) {
        rapidjson::Document json;
        json.Parse(text.c_str());
        rapidjson::SchemaValidator validator(compiled);
        return !json.HasParseError() && json.Accept(validator);
    };
    const std::string text = json_of(document);
    EXPECT_TRUE(fits(text));
    std::string wrong = text;
    wrong.replace(wrong.find("\"film\": "), 8, "\"flim\": ");
    EXPECT_FALSE(fits(wrong));
}

TEST_F(Emitters, NoNameBecomesATag) {
    const std::string page = html_of(document);
    EXPECT_THAT(page, Not(HasSubstr("<script>alert")));
    EXPECT_THAT(page, Not(HasSubstr("<img")));
    EXPECT_THAT(page, HasSubstr("&lt;script&gt;alert(1)&lt;/script&gt;"));
    EXPECT_THAT(tags_of(page),
                Each(testing::AnyOf("html", "head", "meta", "title", "style", "body", "a", "header", "h1", "p", "nav",
                                    "ul", "li", "span", "div", "label", "input", "output", "main", "section", "h2",
                                    "h3", "b", "i", "dl", "dt", "dd", "details", "summary", "table", "thead", "tbody",
                                    "tfoot", "tr", "th", "td", "script", "figure", "figcaption", "svg", "desc", "defs",
                                    "pattern", "circle", "path", "g", "rect", "line", "polygon", "text")));
}

TEST_F(Emitters, PaperOfThePageSaysAtItsFootHowEachListCounts) {
    const std::string page = html_of(document);
    for (const List& list : document.lists) {
        const std::size_t rule = page.find("@page " + list.id + " {");
        ASSERT_NE(rule, std::string::npos) << list.id;
        const std::string foot = page.substr(rule, page.find("\n}\n", rule) - rule);
        EXPECT_THAT(foot, HasSubstr("@bottom-left { content: \"" + list.counting));
        EXPECT_THAT(foot, HasSubstr(list.title));
        EXPECT_THAT(page, HasSubstr("#" + list.id + " { page: " + list.id + "; }"));
    }
}

TEST_F(Emitters, NothingInThePageComesFromElsewhere) {
    std::string page = html_of(document);
    for (std::size_t at = 0; (at = page.find("url(#", at)) != std::string::npos;)
        page.erase(at, 5); // the patterns of its own drawings
    for (const char* word : {"http:", "https:", "url(", "@import", "fetch(", "XMLHttp"})
        EXPECT_EQ(page.find(word), std::string::npos) << word;
}

TEST_F(Emitters, NoControlCharacterGoesOut) {
    const std::string outputs[] = {html_of(document), json_of(document), plain_text_of(document),
                                   csv_of(document.lists[0])};
    for (const std::string& bytes : outputs)
        for (const char c : bytes)
            EXPECT_TRUE(static_cast<unsigned char>(c) >= ' ' || c == '\n' || c == '\r') << static_cast<int>(c);
}

TEST_F(Emitters, TextKeepsItsColumnsAndItsNames) {
    const std::string text = plain_text_of(document);
    std::string joined;
    for (const char c : text)
        if (c != '\n' && c != ' ') joined += c;
    EXPECT_THAT(joined, HasSubstr("xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"));
    EXPECT_EQ(std::count(text.begin(), text.end(), '\r'), 0);
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        EXPECT_TRUE(line.empty() || line.back() != ' ') << line;
}

TEST_F(Emitters, TheSameDocumentGivesTheSameBytes) {
    const Document again = all_lists_of(*hostile_cut());
    EXPECT_EQ(html_of(document), html_of(again));
    EXPECT_EQ(json_of(document), json_of(again));
    EXPECT_EQ(plain_text_of(document), plain_text_of(again));
}

TEST_F(Emitters, LengthsAddUpToTheTotals) {
    for (const List& list : document.lists) {
        if (list.totals.empty()) continue;
        for (const char* key : {"length", "film_length", "pieces"}) {
            const Value total = value_in(list, list.totals[0], key);
            if (!std::holds_alternative<std::int64_t>(total)) continue;
            std::int64_t sum = 0;
            for (const Row& row : items_of(list)) {
                const Value value = value_in(list, row, key);
                sum += std::holds_alternative<std::int64_t>(value) ? std::get<std::int64_t>(value) : 0;
            }
            EXPECT_EQ(std::get<std::int64_t>(total), sum) << list.id << ' ' << key;
        }
    }
}

TEST_F(Emitters, KeyNumbersAreThoseOfTheFilm) {
    const List& list = document.lists[0];
    const std::vector<Row> rows = items_of(list);
    ASSERT_EQ(rows.size(), cut->shares.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const Share& share = cut->shares[i];
        const auto key_at = [&share](std::int64_t frame) {
            const film::Strip& strip = share.piece->at(frame);
            const std::string text = strip.key.text_at(frame - strip.start);
            return text.empty() ? std::string("-") : text;
        };
        EXPECT_EQ(text_in(list, rows[i], "key_first"), key_at(share.start));
        EXPECT_EQ(text_in(list, rows[i], "key_last"), key_at(share.end - 1));
    }
}
