// Each row of an example reel, read back from all that is written of it.

#include "documents/csv.h"
#include "documents/html.h"
#include "documents/json.h"
#include "documents/pdf.h"
#include "documents/plain_text.h"
#include "film/film_uses.h"
#include "film/find.h"
#include "tests/documents/made_cut_film.h"
#include "tests/documents/read_back.h"
#include "tests/support/command_output.h"
#include "tests/support/project_paths.h"
#include "tests/support/scratch_directory.h"

#include <gmock/gmock.h>

#include <climits>
#include <map>
#include <sstream>

using namespace documents;
using namespace documents_test;

namespace {

std::string without_blanks(const std::string& text) {
    std::string all;
    for (const char c : text)
        if (c != ' ' && c != '\n') all += c;
    return all;
}

/// From one column of a terminal to another.
struct TextColumn {
    std::size_t from = 0, to = 0;
};

/// The dashes below the heads.
std::vector<TextColumn> columns_of_rule(const std::string& rule) {
    std::vector<TextColumn> columns;
    for (std::size_t at = rule.find('-'); at != std::string::npos;) {
        const std::size_t end = std::min(rule.find(' ', at), rule.size());
        columns.push_back({at, end});
        at = rule.find('-', end);
    }
    return columns;
}

void take_line(const std::string& line, const std::vector<TextColumn>& columns, std::vector<std::string>& cells) {
    std::size_t place = 0;
    for (std::string_view rest = line; !rest.empty();) {
        const CodePoint next = next_code(rest);
        for (std::size_t i = 0; i < columns.size(); ++i)
            if (columns[i].from <= place && place < columns[i].to && rest[0] != ' ')
                cells[i] += rest.substr(0, next.bytes);
        place += static_cast<std::size_t>(display_width(next.code));
        rest.remove_prefix(next.bytes);
    }
}

bool begins(const std::string& line, const std::string& with) { return line.compare(0, with.size(), with) == 0; }

/// The rows with a box: the texts of their cells, and of their notes behind these, without blanks.
std::vector<std::vector<std::string>> rows_of_text(const std::string& text) {
    std::vector<std::vector<std::string>> rows;
    std::vector<TextColumn> columns;
    bool open = false;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const bool note = begins(line, "    | ");
        if (begins(line, "    -")) columns = columns_of_rule(line);
        if (begins(line, "[ ] ")) rows.emplace_back(columns.size() + 1);
        open = begins(line, "[ ] ") || (open && begins(line, "    ") && !begins(line, "    ////"));
        if (!open) continue;
        if (note)
            rows.back().back() += without_blanks(line.substr(6));
        else if (rows.back().back().empty()) // else a sum
            take_line(begins(line, "[ ] ") ? "    " + line.substr(4) : line, columns, rows.back());
    }
    return rows;
}

/// What pages have of a row: the texts of its cells and notes.
std::vector<std::string> texts_of(const List& list, const Row& row) {
    std::vector<std::string> texts;
    for (const std::size_t i : shown_columns(list))
        texts.push_back(i < row.cells.size() ? text_of(row.cells[i].lines) : "");
    std::string notes;
    for (const Note& note : row.notes)
        notes += text_of(note) + ' ';
    texts.push_back(notes);
    return texts;
}

/// Marks of direction, which pdftotext adds, left out.
std::map<std::string, int> words_of_text(std::string text) {
    for (const char* mark : {"\u202A", "\u202B", "\u202C", "\u202D"})
        for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at))
            text.erase(at, 3);
    std::map<std::string, int> words;
    std::istringstream in(text);
    for (std::string word; in >> word;)
        ++words[word];
    return words;
}

struct SameRows : testing::Test {
    SameRows() {
        const std::string path = project_folder() + "/examples/reel/expected/reel.cdb";
        const recdb table(fromUTF8(LightweightString<char>(path)), INT_MAX, false);
        cut = cut_film(film::uses_of_table(table), table, film::check_table(table, {}), {});
        document = document_of(*cut, *profile_named(""));
    }
    /// Of one list alone.
    Document alone(const List& list) const {
        Document made;
        made.title = document.title;
        made.lists = {list};
        return made;
    }

    CutFilmPtr cut;
    Document document;
};

} // namespace

TEST_F(SameRows, OfTablesForScripts) {
    rapidjson::Document json;
    json.Parse(json_of(document).c_str());
    ASSERT_FALSE(json.HasParseError());
    for (rapidjson::SizeType n = 0; n < json["lists"].Size(); ++n) {
        const List& list = document.lists[n];
        const std::vector<CsvLine> csv = csv_lines(csv_of(list));
        std::vector<std::string> from_csv, wanted;
        for (std::size_t i = 1; i < csv.size(); ++i) {
            std::string row = csv[i][0];
            for (std::size_t k = 2; k + 2 < csv[i].size(); ++k) {
                const bool marked = csv[i][k].size() > 1 && csv[i][k][0] == '\''; // ahead of what looks like a formula
                row += "|" + csv[0][k] + "=" + csv[i][k].substr(marked ? 1 : 0);
            }
            from_csv.push_back(row);
        }
        for (const Row& row : items_of(list))
            wanted.push_back(row_text(list, row));
        EXPECT_EQ(from_csv, wanted) << list.id;
        EXPECT_EQ(json_rows(json["lists"][n]), wanted) << list.id;
    }
}

TEST_F(SameRows, OfTheText) {
    for (const List& list : document.lists) {
        const std::vector<std::vector<std::string>> rows = rows_of_text(plain_text_of(alone(list)));
        std::vector<Row> items;
        for (Row& row : items_of(list))
            if (row.tick) items.push_back(std::move(row));
        ASSERT_EQ(rows.size(), items.size()) << list.id;
        for (std::size_t i = 0; i < items.size(); ++i) {
            const std::vector<std::string> texts = texts_of(list, items[i]);
            ASSERT_EQ(rows[i].size(), texts.size()) << items[i].id;
            for (std::size_t k = 0; k < texts.size(); ++k) // a sum may stand below the last row of a part
                EXPECT_TRUE(begins(rows[i][k], without_blanks(texts[k])))
                    << items[i].id << ": " << rows[i][k] << " for " << texts[k];
        }
    }
}

TEST_F(SameRows, OfThePage) {
    const PageRows page = rows_of_page(html_of(document));
    std::vector<std::string> wanted;
    for (const List& list : document.lists)
        for (const Row& row : items_of(list)) {
            std::string text = row.id;
            for (const std::size_t i : shown_columns(list))
                text += "|" + (i < row.cells.size() ? page_text(row.cells[i]) : "");
            wanted.push_back(text);
        }
    EXPECT_EQ(page.rows, wanted);
}

TEST_F(SameRows, OfThePaper) {
    const ScratchDirectory scratch;
    for (const List& list : document.lists) {
        const std::string path = scratch.file(list.id + ".pdf");
        put_bytes(path, pdf_of(alone(list), {0}));
        std::map<std::string, int> shown = words_of_text(output_of("pdftotext -layout " + path + " -"));
        std::map<std::string, int> wanted;
        for (const Row& row : items_of(list))
            for (const std::string& text : texts_of(list, row))
                for (const auto& [word, count] : words_of_text(text))
                    wanted[word] += count;
        for (const auto& [word, count] : wanted)
            EXPECT_GE(shown[word], count) << list.id << ": " << word;
    }
}
