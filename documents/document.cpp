#include "documents/document.h"

#include <algorithm>
#include <iterator>
#include <type_traits>

namespace documents {
namespace {

constexpr const char* mark_names[] = {"wrong", "missing", "doubt", "reused", "new", "out", "moved", "speed"};

bool is_titled(const Column& column) { return !column.title.empty(); }

} // namespace

std::string text_of(const Line& line) {
    std::string text;
    for (const Run& run : line)
        text += run.text;
    return text;
}

std::string text_of(const std::vector<Line>& lines) {
    std::string text;
    for (const Line& line : lines) {
        const std::string one = text_of(line);
        if (!text.empty() && !one.empty()) text += ' ';
        text += one;
    }
    return text;
}

Value value_of(std::string text) { return text.empty() ? Value() : Value(std::move(text)); }

std::string text_of(const Value& value) {
    if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
    if (const auto* text = std::get_if<std::string>(&value)) return *text;
    return "";
}

const char* name_of(Mark mark) { return mark_names[static_cast<std::size_t>(mark)]; }

std::string text_of(const Note& note) {
    std::string text = note.head.empty() ? "" : note.head + ".";
    for (const std::string* more : {&note.text, &note.advice}) {
        if (more->empty()) continue;
        if (!text.empty()) text += ' ';
        text += *more;
    }
    return text;
}

std::size_t count_of_rows(const List& list) {
    std::size_t count = 0;
    for (const Part& part : list.parts)
        count += static_cast<std::size_t>(std::count_if(part.rows.begin(), part.rows.end(),
                                                        [](const Row& row) { return row.kind == RowKind::item; }));
    return count;
}

std::vector<Field> fields_of(const List& list) {
    std::vector<Field> fields;
    for (const Column& column : list.columns)
        fields.insert(fields.end(), column.fields.begin(), column.fields.end());
    return fields;
}

std::vector<Value> values_of(const List& list, const Row& row) {
    std::vector<Value> values;
    each_value(list, row, [&values](const Value& value) { values.push_back(value); });
    return values;
}

bool Row::has(Mark mark) const {
    return std::find(marks.begin(), marks.end(), mark) != marks.end() ||
           std::any_of(notes.begin(), notes.end(), [mark](const Note& note) { return note.mark == mark; });
}

std::vector<Mark> marks_of(const Row& row) {
    std::vector<Mark> marks;
    for (std::size_t i = 0; i < std::size(mark_names); ++i)
        if (row.has(static_cast<Mark>(i))) marks.push_back(static_cast<Mark>(i));
    return marks;
}

std::vector<std::size_t> shown_columns(const List& list) {
    std::vector<std::size_t> shown;
    for (std::size_t i = 0; i < list.columns.size(); ++i)
        if (is_titled(list.columns[i])) shown.push_back(i);
    return shown;
}

std::string joined(const std::vector<std::string>& texts, const char* between) {
    std::string all;
    for (const std::string& text : texts)
        if (!text.empty()) all += (all.empty() ? "" : between) + text;
    return all;
}

int column_of_notes(const List& list) {
    int last = -1;
    for (std::size_t i = 0; i < list.columns.size(); ++i) {
        const Column& column = list.columns[i];
        if (!is_titled(column)) continue;
        if (column.notes) return static_cast<int>(i);
        if (column.wrap == Wrap::words || last < 0) last = static_cast<int>(i);
    }
    return last;
}

Cell cell(Run run, Value value) {
    Cell made;
    if (!run.text.empty()) made.lines.push_back(line_of(std::move(run)));
    made.values.push_back(std::move(value));
    return made;
}

Cell blank_cell(std::size_t fields) { return {{}, std::vector<Value>(fields)}; }

Cell word_cell(const std::string& text, Weight weight) { return cell({text, weight, false}, value_of(text)); }

void show_columns(List& list, const std::vector<std::string>& keys) {
    const auto is_named = [&keys](const Column& column) {
        return is_titled(column) && std::find(keys.begin(), keys.end(), column.key) != keys.end();
    };
    if (std::none_of(list.columns.begin(), list.columns.end(), is_named)) return;
    for (Column& column : list.columns)
        if (!is_named(column)) column.title.clear();
}

void choose_columns(List& list, const std::vector<std::string>& keys) {
    std::vector<std::size_t> chosen;
    for (const std::string& key : keys)
        for (std::size_t i = 0; i < list.columns.size(); ++i)
            if (key == list.columns[i].key && std::find(chosen.begin(), chosen.end(), i) == chosen.end())
                chosen.push_back(i);
    const bool shown =
        std::any_of(chosen.begin(), chosen.end(), [&list](std::size_t i) { return is_titled(list.columns[i]); });
    if (!shown) return;
    const auto choose = [&chosen](auto& all) {
        std::remove_reference_t<decltype(all)> some;
        for (const std::size_t i : chosen)
            if (i < all.size()) some.push_back(std::move(all[i]));
        all = std::move(some);
    };
    choose(list.columns);
    for (Part& part : list.parts) {
        for (std::vector<Row>* rows : {&part.rows, &part.totals})
            for (Row& row : *rows)
                choose(row.cells);
    }
    for (Row& row : list.totals)
        choose(row.cells);
}

} // namespace documents
