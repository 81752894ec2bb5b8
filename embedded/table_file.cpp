#include "embedded/table_file.h"

#include "embedded/crc32.h"
#include "embedded/services.h"
#include "embedded/table_seal.h"
#include "host/settings.h"

#include <algorithm>
#include <array>
#include <optional>

namespace embedded {
namespace {

constexpr std::string_view first_line = "%recdb 2";
constexpr std::string_view unsealed_first_line = "%recdb 1";
constexpr std::string_view no_table = "isn't a whole record table";

struct Escape {
    char letter;
    char character;
};

constexpr Escape escapes[] = {{'\\', '\\'}, {'t', '\t'}, {'n', '\n'}, {'r', '\r'}, {'=', '='}};

constexpr std::string_view special_in_text = "\\\t\n\r";
constexpr std::string_view special_in_name = "\\\t\n\r=";

/// By byte, the letter of its escape; zero where it stands for itself.
using EscapeLetters = std::array<char, 256>;

constexpr EscapeLetters letters_of(std::string_view special) {
    EscapeLetters letters{};
    for (const Escape& escape : escapes) {
        if (special.find(escape.character) != std::string_view::npos)
            letters[static_cast<unsigned char>(escape.character)] = escape.letter;
    }
    return letters;
}
constexpr EscapeLetters letters_in_text = letters_of(special_in_text);
constexpr EscapeLetters letters_in_name = letters_of(special_in_name);

/// The end of what it wrote, of two bytes for each of the text at most.
char* put_escaped(char* out, std::string_view text, const EscapeLetters& letters) {
    for (const char c : text) {
        const char letter = letters[static_cast<unsigned char>(c)];
        if (letter != '\0') [[unlikely]] {
            *out++ = '\\';
            *out++ = letter;
        } else {
            *out++ = c;
        }
    }
    return out;
}

void put_escaped(std::string& out, std::string_view text, const EscapeLetters& letters) {
    const std::size_t before = out.size();
    out.resize(before + 2 * text.size());
    out.resize(static_cast<std::size_t>(put_escaped(out.data() + before, text, letters) - out.data()));
}

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
    std::string_view rest() const { return rest_; }

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

/// Parameters and columns. The place of the first record, `npos` where the head isn't whole.
std::size_t read_head(std::string_view bytes, TableData* table) {
    Lines lines(bytes);
    std::string_view line;
    const bool whole = lines.next(&line) && read_parameters(lines, table) && read_columns(lines, table);
    return whole ? bytes.size() - lines.rest().size() : std::string_view::npos;
}

/// With `leave_out`, lines that are no records are left out.
bool read_records(std::string_view bytes, std::size_t max_records, bool leave_out, TableData* table) {
    char* const kept = table->keep_lines(bytes);
    const bool plain = bytes.find('\\') == std::string_view::npos && bytes.find('\0') == std::string_view::npos;
    Lines lines({kept, bytes.size()});
    std::string_view line;
    while (table->rows.size() < max_records && lines.next(&line)) {
        Row* const row = table->make_row();
        if (row->fields.decode(kept + (line.data() - kept), line.size(), plain)) {
            table->rows.push_back(row);
        } else if (leave_out) {
            table->give_back(row);
        } else {
            return false;
        }
    }
    table->forget_shown();
    return true;
}

/// Bytes that a row may take as a line.
std::size_t most_bytes(const RowFields& fields) {
    std::size_t bytes = fields.count() + 1;
    for (std::size_t field = 0; field < fields.count(); ++field)
        bytes += 2 * fields.view(field).size();
    return bytes;
}

void put_record(std::string& out, const RowFields& fields) {
    const std::size_t before = out.size();
    out.resize(before + most_bytes(fields));
    char* end = out.data() + before;
    for (std::size_t field = 0; field < fields.count(); ++field) {
        if (field > 0) *end++ = '\t';
        end = put_escaped(end, fields.view(field), letters_in_text);
    }
    *end++ = '\n';
    out.resize(static_cast<std::size_t>(end - out.data()));
}

void put_columns(std::string& out, const TableData& table) {
    std::string types;
    for (const Column& column : table.columns) {
        if (!types.empty()) {
            out += '\t';
            types += '\t';
        }
        put_escaped(out, column.name, letters_in_text);
        types += column.type;
    }
    out += '\n' + types + '\n';
}

void put_records(std::string& out, const TableData& table) {
    for (const auto& row : table.rows)
        put_record(out, row->fields);
}

/// What the first line says is wrong with the file as a whole; nothing where it opens a table.
std::string fault_of_first_line(std::string_view line) {
    if (line == first_line || line == unsealed_first_line) return "";
    if (line.substr(0, 3) == "\xEF\xBB\xBF") return "begins with a byte order mark, which no table has";
    if (line == "%recdb 2\r" || line == "%recdb 1\r") return "its lines end in CR LF, those of a table in LF alone";
    return std::string(no_table);
}

/// A sealed table whose first line was made into that of an unsealed one still fits its seal otherwise.
bool was_sealed(std::string_view bytes) {
    const SealedBytes parts(bytes);
    if (!parts.seal) return false;
    return crc32(parts.ahead.substr(first_line.size()), crc32(first_line)) == parts.seal->sum;
}

std::string fault_of_seal_of(std::string_view bytes, std::size_t first_record) {
    const bool sealed = bytes.substr(0, first_line.size()) == first_line;
    if (sealed) return fault_of_seal(bytes, first_record);
    return was_sealed(bytes) ? "changed since it was written" : "";
}

/// Of a table that is read in spite of its seal: what is left of its records.
std::string_view whole_lines(std::string_view bytes) {
    const std::string_view ahead = SealedBytes(bytes).ahead;
    return ahead.substr(0, ahead.rfind('\n') + 1);
}

struct Reading {
    std::size_t max_records;
    bool broken_too; ///< tables too that don't fit their seal
};

/// The records of a table whose head is read; what is wrong with them.
std::string fault_in_records(std::string_view bytes, std::size_t first, const Reading& how, TableData* table) {
    const std::string fault = fault_of_seal_of(bytes, first);
    if (first == std::string_view::npos) return fault.empty() ? std::string(no_table) : fault;
    if (!fault.empty() && !how.broken_too) return fault;
    const bool sealed = bytes.substr(0, first_line.size()) == first_line;
    const std::string_view records = sealed ? whole_lines(bytes) : bytes;
    const std::string_view behind_head = records.substr(std::min(first, records.size()));
    return read_records(behind_head, how.max_records, !fault.empty(), table) ? "" : std::string(no_table);
}

std::string fault_in_reading(std::string_view bytes, const Reading& how, TableData* table) {
    const std::string fault = fault_of_first_line(bytes.substr(0, bytes.find('\n')));
    return fault.empty() ? fault_in_records(bytes, read_head(bytes, table), how, table) : fault;
}

} // namespace

bool read_table(std::string_view bytes, std::size_t max_records, TableData* table, std::string* why) {
    table->clear();
    const bool broken_too = config_int("read_broken_tables", 0, 0, 1) != 0;
    const std::string fault = fault_in_reading(bytes, {max_records, broken_too}, table);
    if (!fault.empty()) table->clear();
    if (why) *why = fault;
    return fault.empty();
}

std::string fault_of_table(const std::string& path) {
    std::string bytes, why;
    TableData table;
    if (read_file(path, &bytes, &why)) why = fault_in_reading(bytes, {SIZE_MAX, false}, &table);
    return why;
}

std::string table_text(const TableData& table) {
    std::string out(first_line);
    out += '\n';
    for (const Parameter& parameter : table.parameters) {
        put_escaped(out, parameter.name, letters_in_name);
        out += '=';
        put_escaped(out, parameter.value, letters_in_text);
        out += '\n';
    }
    out += '\n';
    put_columns(out, table);
    put_records(out, table);
    return out + seal_line(out, table.rows.size());
}

std::string record_lines(const TableData& table) {
    std::string out;
    put_records(out, table);
    return out;
}

} // namespace embedded
