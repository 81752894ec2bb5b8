#pragma once
// What was written, read back by simple readers of our own.

#include "documents/characters.h"
#include "documents/document.h"

#include <rapidjson/document.h>

#include <string>
#include <vector>

namespace documents_test {

using CsvLine = std::vector<std::string>;

inline std::vector<CsvLine> csv_lines(const std::string& bytes) {
    std::vector<CsvLine> lines;
    CsvLine line = {""};
    bool quoted = false;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const char c = bytes[i];
        if (quoted) {
            if (c == '"' && i + 1 < bytes.size() && bytes[i + 1] == '"')
                line.back() += bytes[++i];
            else if (c == '"')
                quoted = false;
            else
                line.back() += c;
        } else if (c == '"') {
            quoted = true;
        } else if (c == ',') {
            line.emplace_back();
        } else if (c == '\r') {
            ++i;
            lines.push_back(line);
            line = {""};
        } else {
            line.back() += c;
        }
    }
    return lines;
}

/// As CSV has a value, without quotation marks.
inline std::string unescaped_field(const documents::Value& value) {
    const std::string text = documents::clean(documents::text_of(value));
    const bool formula = std::holds_alternative<std::string>(value) && !text.empty() &&
                         std::string("=+-@").find(text[0]) != std::string::npos;
    return formula ? "'" + text : text;
}

inline std::string row_text(const documents::List& list, const documents::Row& row) {
    std::string text = row.id;
    const std::vector<documents::Field> fields = documents::fields_of(list);
    const std::vector<documents::Value> values = documents::values_of(list, row);
    for (std::size_t i = 0; i < fields.size(); ++i)
        text += "|" + std::string(fields[i].key) + "=" + documents::clean(documents::text_of(values[i]));
    return text;
}

inline std::string json_row_text(const rapidjson::Value& row) {
    std::string text = row["id"].GetString();
    for (const auto& member : row["values"].GetObject()) {
        text += "|" + std::string(member.name.GetString()) + "=";
        if (member.value.IsString()) text += member.value.GetString();
        if (member.value.IsInt64()) text += std::to_string(member.value.GetInt64());
    }
    return text;
}

/// The rows of a list, in order.
inline std::vector<std::string> json_rows(const rapidjson::Value& list) {
    std::vector<std::string> rows;
    for (const auto& part : list["parts"].GetArray())
        for (const auto& row : part["rows"].GetArray())
            rows.push_back(json_row_text(row));
    return rows;
}

inline std::string without_entities(std::string text) {
    const std::pair<const char*, const char*> entities[] = {
        {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&#39;", "'"}, {"&amp;", "&"}};
    for (const auto& [entity, sign] : entities)
        for (std::size_t at = text.find(entity); at != std::string::npos; at = text.find(entity, at + 1))
            text.replace(at, std::string(entity).size(), sign);
    return text;
}

/// The words of a cell's lines, one behind the other.
inline std::string page_text(const documents::Cell& cell) {
    std::string text;
    for (const documents::Line& line : cell.lines)
        text += documents::clean(documents::text_of(line));
    return text;
}

/// The rows that a page has under an id: the id and the words of each cell but the first, notes left out.
struct PageRows {
    std::vector<std::string> rows;
};

inline PageRows rows_of_page(const std::string& page) {
    PageRows found;
    const std::string begin = "<tr role=row id=\"";
    for (std::size_t at = page.find(begin); at != std::string::npos; at = page.find(begin, at + 1)) {
        const std::string row = page.substr(at, page.find("</tr>", at) - at);
        std::string text = row.substr(begin.size(), row.find('"', begin.size()) - begin.size());
        std::size_t cell = row.find("</td>") + 5; // behind the box
        while (cell < row.size()) {
            const std::size_t inside = row.find('>', cell) + 1;
            const std::size_t end = std::min(row.find("</td>", inside), row.find("</th>", inside));
            std::string words;
            std::string rest = row.substr(inside, end - inside);
            rest = rest.substr(0, rest.find("<span class=\"note"));
            bool tag = false;
            for (const char c : rest) {
                if (c == '<') tag = true;
                if (!tag) words += c;
                if (c == '>') tag = false;
            }
            text += "|" + without_entities(words);
            cell = end + 5;
        }
        found.rows.push_back(text);
    }
    return found;
}

/// The names of all tags that a page begins, those inside its script left out.
inline std::vector<std::string> tags_of(const std::string& page) {
    std::vector<std::string> tags;
    const std::string whole = page.substr(0, page.find("<script>"));
    for (std::size_t at = whole.find('<'); at != std::string::npos; at = whole.find('<', at + 1)) {
        if (whole[at + 1] == '/' || whole[at + 1] == '!') continue;
        tags.push_back(whole.substr(at + 1, whole.find_first_of(" >\n", at) - at - 1));
    }
    return tags;
}

} // namespace documents_test
