#pragma once
// Cuts for documents, made of an edit by the lists' own table.

#include "documents/cut_lists.h"
#include "documents/list_kinds.h"
#include "tests/film/made_film.h"
#include "tests/generator/made_edit.h"

#include <algorithm>
#include <string>
#include <vector>

namespace documents_test {

/// The film of an edit's picture, by the edit.
inline documents::CutFilmPtr cut_of(const EditPtr& edit, bool neg_cut = false, documents::CutOptions options = {},
                                    const film::Findings& findings = {}) {
    film::UseOptions use;
    use.neg_cut = neg_cut;
    const film_test::MadeList list(edit, use);
    if (!list.made) return nullptr;
    return documents::cut_film(film::uses_of_edit(edit, use), *list.table, findings, options);
}

inline documents::Document all_lists_of(const documents::CutFilm& cut) {
    return documents::document_of(cut, *documents::profile_named("all"));
}

/// Rows that scripts see.
inline std::vector<documents::Row> items_of(const documents::List& list) {
    std::vector<documents::Row> items;
    for (const documents::Part& part : list.parts)
        for (const documents::Row& row : part.rows)
            if (row.kind == documents::RowKind::item) items.push_back(row);
    return items;
}

inline documents::Value value_in(const documents::List& list, const documents::Row& row, const std::string& key) {
    const std::vector<documents::Field> fields = documents::fields_of(list);
    const std::vector<documents::Value> values = documents::values_of(list, row);
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (key == fields[i].key) return values[i];
    return "no field " + key;
}

/// "-" for nothing.
inline std::string text_in(const documents::List& list, const documents::Row& row, const std::string& key) {
    const documents::Value value = value_in(list, row, key);
    return std::holds_alternative<std::monostate>(value) ? "-" : documents::text_of(value);
}

/// A line of some fields for each row.
inline std::vector<std::string> drawn(const documents::List& list, const std::vector<std::string>& keys) {
    std::vector<std::string> lines;
    for (const documents::Row& row : items_of(list)) {
        std::string line;
        for (const std::string& key : keys)
            line += (line.empty() ? "" : " ") + text_in(list, row, key);
        lines.push_back(line);
    }
    return lines;
}

inline std::vector<std::string> bands_of(const documents::List& list) {
    std::vector<std::string> bands;
    for (const documents::Part& part : list.parts)
        for (const documents::Row& row : part.rows)
            if (row.kind == documents::RowKind::band) bands.push_back(documents::text_of(row.band));
    return bands;
}

inline std::vector<std::string> notes_of(const documents::Row& row) {
    std::vector<std::string> notes;
    for (const documents::Note& note : row.notes)
        notes.push_back(documents::text_of(note));
    return notes;
}

} // namespace documents_test
