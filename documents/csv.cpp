#include "documents/csv.h"

#include "documents/characters.h"

namespace documents {
namespace {

constexpr const char* line_end = "\r\n";

/// As text it begins with what spreadsheets take for the beginning of a formula.
bool looks_like_formula(const std::string& text) {
    return !text.empty() && std::string_view("=+-@\t\r").find(text.front()) != std::string_view::npos;
}

/// Behind another field of its line.
void put_field(std::string& out, std::string_view text) {
    out += ',';
    out += csv_field(text);
}

/// Numbers stay numbers, below 0 too.
void put_value(std::string& out, const Value& value) {
    if (const auto* text = std::get_if<std::string>(&value)) return put_field(out, *text);
    out += ',';
    out += text_of(value);
}

std::string joined_marks(const Row& row) {
    std::string text;
    for (const Mark mark : marks_of(row))
        text += (text.empty() ? "" : " ") + std::string(name_of(mark));
    return text;
}

std::string joined_notes(const Row& row) {
    std::string text;
    for (const Note& note : row.notes)
        text += (text.empty() ? "" : " ") + text_of(note);
    return text;
}

void put_row(std::string& out, const List& list, const Part& part, const Row& row) {
    out += csv_field(row.id);
    put_field(out, part.title);
    each_value(list, row, [&out](const Value& value) { put_value(out, value); });
    put_field(out, joined_marks(row));
    put_field(out, joined_notes(row));
    out += line_end;
}

} // namespace

std::string csv_field(std::string_view text) {
    std::string plain = clean(text);
    if (looks_like_formula(plain)) plain.insert(0, 1, '\'');
    const bool edged = !plain.empty() && (plain.front() == ' ' || plain.back() == ' ');
    if (plain.find_first_of(",\"\r\n") == std::string::npos && !edged) return plain;
    std::string quoted = "\"";
    for (const char c : plain)
        quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + '"';
}

std::string csv_of(const List& list) {
    std::string out = "row,part";
    for (const Field& field : fields_of(list))
        put_field(out, field.key);
    out += std::string(",marks,notes") + line_end;
    for (const Part& part : list.parts)
        for (const Row& row : part.rows)
            if (row.kind == RowKind::item) put_row(out, list, part, row);
    return out;
}

std::vector<NamedFile> csv_files(const Document& document) {
    std::vector<NamedFile> files;
    for (const List& list : document.lists)
        files.push_back({list.id + ".csv", csv_of(list)});
    return files;
}

} // namespace documents
