#include "embedded/table_file.h"

#include <algorithm>
#include <optional>

namespace embedded {
namespace {

constexpr std::string_view first_line = "%recdb 1";

struct Escape {
    char letter;
    char character;
};

constexpr Escape escapes[] = {{'\\', '\\'}, {'t', '\t'}, {'n', '\n'}, {'r', '\r'}, {'=', '='}};

// Most texts hold nothing special and go over in one piece.
void put_escaped(std::string& out, std::string_view text, std::string_view special) {
    std::size_t done = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (static_cast<unsigned char>(text[i]) > '\\' || special.find(text[i]) == std::string_view::npos) continue;
        out.append(text.substr(done, i - done));
        for (const Escape& escape : escapes) {
            if (escape.character == text[i]) out += {'\\', escape.letter};
        }
        done = i + 1;
    }
    out.append(text.substr(done));
}

constexpr std::string_view special_in_text = "\\\t\n\r";
constexpr std::string_view special_in_name = "\\\t\n\r=";

// Texts of a table end at a zero, so what stands behind one in a file is lost.
std::optional<std::string> unescaped(std::string_view text, std::string_view special) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            plain += text[i];
            continue;
        }
        ++i;
        const std::size_t before = plain.size();
        for (const Escape& escape : escapes) {
            const bool allowed = special.find(escape.character) != std::string_view::npos;
            if (i < text.size() && allowed && escape.letter == text[i]) plain += escape.character;
        }
        if (plain.size() == before) return std::nullopt;
    }
    return plain.substr(0, plain.find('\0'));
}

/// Takes the bytes of a file line by line.
class Lines {
public:
    explicit Lines(std::string_view bytes) : rest_(bytes) {}

    /// False at the end of the bytes.
    bool next(std::string_view* line) {
        if (rest_.empty()) return false;
        const std::size_t end = rest_.find('\n');
        *line = rest_.substr(0, end);
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
        return true;
    }

private:
    std::string_view rest_;
};

/// Where the name of a parameter ends: the first "=" that isn't escaped.
std::size_t end_of_name(std::string_view line) {
    std::size_t i = 0;
    while (i < line.size() && line[i] != '=')
        i += line[i] == '\\' ? 2 : 1;
    return i < line.size() ? i : std::string_view::npos;
}

bool read_parameter(std::string_view line, TableData* table) {
    const std::size_t end = end_of_name(line);
    if (end == std::string_view::npos) return false;
    const auto name = unescaped(line.substr(0, end), special_in_name);
    const auto value = unescaped(line.substr(end + 1), special_in_text);
    if (!name || !value) return false;
    table->put_parameter(*name, *value);
    return true;
}

bool read_parameters(Lines& lines, TableData* table) {
    std::string_view line;
    while (lines.next(&line)) {
        if (line.empty()) return true;
        if (!read_parameter(line, table)) return false;
    }
    return false;
}

// A line that names nothing at all is no line of columns.
bool read_names(std::string_view line, TableData* table) {
    for (std::size_t start = 0; start <= line.size();) {
        const std::size_t end = std::min(line.find('\t', start), line.size());
        const auto name = unescaped(line.substr(start, end - start), special_in_text);
        if (!name) return false;
        table->columns.push_back({*name, DBFieldTypes::text});
        start = end + 1;
    }
    return table->columns.size() > 1 || !table->columns.front().name.empty();
}

// One letter a column with single tabs between them.
bool read_types(std::string_view line, TableData* table) {
    if (line.size() != 2 * table->columns.size() - 1) return false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const bool fits = i % 2 == 0 ? is_type_letter(line[i]) : line[i] == '\t';
        if (!fits) return false;
        if (i % 2 == 0) table->columns[i / 2].type = line[i];
    }
    return true;
}

bool read_columns(Lines& lines, TableData* table) {
    std::string_view names;
    std::string_view types;
    return lines.next(&names) && lines.next(&types) && read_names(names, table) && read_types(types, table);
}

bool read_records(Lines& lines, std::size_t max_records, TableData* table) {
    std::string_view line;
    while (table->rows.size() < max_records && lines.next(&line)) {
        table->rows.push_back(table->make_row());
        if (!table->rows.back()->fields.decode(line)) return false;
    }
    table->forget_shown();
    return true;
}

void put_record(std::string& out, const RowFields& fields) {
    for (std::size_t field = 0; field < fields.count(); ++field) {
        if (field > 0) out += '\t';
        if (const char* text = fields.get(field)) put_escaped(out, text, special_in_text);
    }
    out += '\n';
}

void put_columns(std::string& out, const TableData& table) {
    std::string types;
    for (const Column& column : table.columns) {
        if (!types.empty()) {
            out += '\t';
            types += '\t';
        }
        put_escaped(out, column.name, special_in_text);
        types += column.type;
    }
    out += '\n' + types + '\n';
}

} // namespace

bool read_table(std::string_view bytes, std::size_t max_records, TableData* table) {
    table->clear();
    Lines lines(bytes);
    std::string_view line;
    const bool fits = lines.next(&line) && line == first_line && read_parameters(lines, table) &&
                      read_columns(lines, table) && read_records(lines, max_records, table);
    if (!fits) table->clear();
    return fits;
}

std::string table_text(const TableData& table) {
    std::string out(first_line);
    out += '\n';
    for (const Parameter& parameter : table.parameters) {
        put_escaped(out, parameter.name, special_in_name);
        out += '=';
        put_escaped(out, parameter.value, special_in_text);
        out += '\n';
    }
    out += '\n';
    put_columns(out, table);
    return out + record_lines(table);
}

std::string record_lines(const TableData& table) {
    std::string out;
    for (const auto& row : table.rows)
        put_record(out, row->fields);
    return out;
}

} // namespace embedded
