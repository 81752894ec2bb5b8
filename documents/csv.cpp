#include "documents/csv.h"

#include "documents/characters.h"

namespace documents {
namespace {

constexpr const char* line_end = "\r\n";

/// As text it begins with what spreadsheets take for the beginning of a formula.
bool looks_like_formula(const std::string& text) {
    return !text.empty() && std::string_view("=+-@\t\r").find(text.front()) != std::string_view::npos;
}

void put_line(std::string& out, const std::vector<std::string>& fields) {
    for (std::size_t i = 0; i < fields.size(); ++i)
        out += (i == 0 ? "" : ",") + fields[i];
    out += line_end;
}

/// Numbers stay numbers, below 0 too.
std::string field_of(const Value& value) {
    if (std::holds_alternative<std::string>(value)) return csv_field(std::get<std::string>(value));
    return text_of(value);
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
    std::vector<std::string> fields = {csv_field(row.id), csv_field(part.title)};
    for (const Value& value : values_of(list, row))
        fields.push_back(field_of(value));
    fields.push_back(csv_field(joined_marks(row)));
    fields.push_back(csv_field(joined_notes(row)));
    put_line(out, fields);
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
    std::vector<std::string> names = {"row", "part"};
    for (const Field& field : fields_of(list))
        names.emplace_back(field.key);
    names.insert(names.end(), {"marks", "notes"});
    std::string out;
    put_line(out, names);
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
