#include "formats/logs/merged_header.h"

#include "formats/logs/film_values.h"
#include "formats/logs/log_table.h"
#include "host/labels.h"

#include <string_view>

namespace formats {
namespace {

std::string param_of(const recdb& table, const char* name) {
    const char* value = table.get_param_val(name);
    return value ? value : "";
}

/// A column that a table's header speaks for where it is empty, and what a header says that doesn't name it.
struct HeaderColumn {
    const char* name;
    const char* winner; ///< the parameter that counts before the one of the column's name
    const char* otherwise;
};

constexpr HeaderColumn film_column{"film label_std", "film label_std", "35mm-4p"};
constexpr HeaderColumn header_columns[] = {
    {"label_std", "label_std", unnamed_standard},
    {"snd label_std", "snd label_std", unnamed_standard},
    {"cam label_std", "cam label_std", ""},
    film_column,
    {"frame origin", "film_origin", "N"},
    {"pulldown", "pulldown", "N"},
    {"sequence", "sequence", "0"},
};

std::string written_in_header(const recdb& table, const HeaderColumn& column) {
    const std::string text = param_of(table, column.winner);
    return text.empty() ? param_of(table, column.name) : text;
}

// A phase counts only where the header doesn't take the pulldown away.
std::string said_by_header(const recdb& table, const HeaderColumn& column) {
    const std::string text = written_in_header(table, column);
    if (text.empty()) return column.otherwise;
    const std::string pulldown = param_of(table, "pulldown");
    const bool is_phase = std::string_view(column.name) == "sequence";
    return is_phase && !pulldown.empty() && !says_pulldown(pulldown) ? column.otherwise : text;
}

bool is_named(const recdb& table, const HeaderColumn& column) { return !written_in_header(table, column).empty(); }

/// A value that is named is kept by name, also where the other header means the same by saying nothing.
bool says_otherwise(const recdb& table, const HeaderColumn& column, const std::string& value, bool named) {
    return value != said_by_header(table, column) || (named && value != written_in_header(table, column));
}

std::string text_in(const recdb& table, unsigned row, const char* column) {
    const int number = table.get_fieldnum(column);
    return number < 0 ? "" : table.getField(row, static_cast<unsigned>(number)).c_str();
}

void write_into_empty(const recdb& table, unsigned first, int column, const std::string& value) {
    for (unsigned i = first; i < table.get_num_records(); ++i) {
        dbrecord& record = *table.get_record(i);
        if (!record.get_field(static_cast<unsigned short>(column))) record.set_field(column, value.c_str(), true);
    }
}

/// What a row of `other` said in the column, and `table`, which lacks it, can't say; empty where there is none.
std::string said_and_lost(const recdb& other, const recdb& table, const HeaderColumn& column) {
    for (unsigned i = 0; i < other.get_num_records(); ++i) {
        const std::string own = text_in(other, i, column.name);
        const std::string said = own.empty() ? said_by_header(other, column) : own;
        if (!said.empty() && said != said_by_header(table, column)) return said;
    }
    return "";
}

bool has_film_numbers(const recdb& table) {
    for (unsigned i = 0; i < table.get_num_records(); ++i)
        if (!text_in(table, i, "start keycode").empty() || !text_in(table, i, "start inkcode").empty()) return true;
    return false;
}

/// The kind of film as which cutlists read all rows.
std::string film_of_all(const recdb& table) {
    const std::string first = table.get_num_records() > 0 ? text_in(table, 0, film_column.name) : "";
    return first.empty() ? said_by_header(table, film_column) : first;
}

} // namespace

embedded::Warnings keep_header_of(const recdb& other, const std::string& path, recdb& table, unsigned first) {
    embedded::Warnings warnings;
    for (const HeaderColumn& column : header_columns) {
        const int number = table.get_fieldnum(column.name);
        const std::string lost = number < 0 ? said_and_lost(other, table, column) : "";
        if (!lost.empty())
            warnings.push_back(path + ": rows are of " + column.name + " \"" + lost +
                               "\", and the first table has no column for it");
        const std::string value = said_by_header(other, column);
        if (number >= 0 && !value.empty() && says_otherwise(table, column, value, is_named(other, column)))
            write_into_empty(table, first, number, value);
    }
    const std::string film = film_of_all(other), film_now = film_of_all(table);
    if (edlstr_to_label_type(film.c_str()) != edlstr_to_label_type(film_now.c_str()) && has_film_numbers(other))
        warnings.push_back(path + ": film is " + film + ", and cutlists read all rows as the first one's, " + film_now);
    return warnings;
}

} // namespace formats
