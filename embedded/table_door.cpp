#include "embedded/table_door.h"

#include "embedded/table_data.h"
#include "embedded/visible_text.h"
#include "host/recdb.h"

#include <set>

namespace embedded {
namespace {

struct Door {
    std::function<void(const Warning&)> tell;
    std::set<std::string> told;
};

Door& door() {
    static Door only;
    return only;
}

/// What was found in a table, and where first.
struct Findings {
    std::size_t texts = 0;
    Warnings first;

    /// False of a plain text. `owner` makes the name of what has it.
    template <class Owner> bool take(std::string& text, const Owner& owner) {
        const Received what = receive(text);
        if (what.is_plain()) return false;
        if (++texts == 1) first = embedded::told(what, owner(), text);
        return true;
    }
    /// Once a file.
    void tell_of(const std::string& path) const {
        if (texts == 0 || !door().told.insert(path).second) return;
        const std::string more = texts > 1 ? "; " + std::to_string(texts - 1) + " more of its texts, too" : "";
        for (const Warning& line : first)
            door().tell({line.kind, path + ": " + line.text + more});
    }
};

std::string owner_of(std::size_t row, const std::string& column) {
    return "row " + std::to_string(row) + ", " + column;
}

void receive_row(RowFields& fields, std::size_t number, const TableData& table, Findings& findings) {
    for (std::size_t field = 0; field < fields.count(); ++field) {
        const char* text = fields.get(field);
        if (!text || is_surely_plain(text)) continue;
        std::string name(text);
        if (findings.take(name, [&] { return owner_of(number, table.columns[field].name); })) fields.set(field, name);
    }
}

} // namespace

void receive_tables(std::function<void(const Warning&)> tell) { door() = {std::move(tell), {}}; }

void receive_table(TableData& table, const std::string& path) {
    if (!door().tell) return;
    Findings findings;
    for (Parameter& parameter : table.parameters)
        findings.take(parameter.value, [&parameter] { return parameter.name; });
    for (std::size_t row = 0; row < table.rows.size(); ++row)
        receive_row(table.rows[row]->fields, row + 1, table, findings);
    findings.tell_of(path);
}

void receive_rows(recdb& table, const std::string& path) {
    if (!door().tell) return;
    Findings findings;
    for (unsigned row = 0; row < table.get_num_records(); ++row) {
        for (unsigned field = 0; field < table.get_num_fields(); ++field) {
            const LightweightString<char> kept = table.getField(row, field);
            if (is_surely_plain(kept.view())) continue;
            std::string text = kept.c_str();
            if (findings.take(text, [&] { return owner_of(row + 1, table.get_fieldname(field)); }))
                table.set_field(row, field, text.c_str());
        }
    }
    findings.tell_of(path);
}

} // namespace embedded
