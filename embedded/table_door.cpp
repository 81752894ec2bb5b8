#include "embedded/table_door.h"

#include "embedded/table_data.h"
#include "embedded/visible_text.h"

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

    void take(std::string& text, const std::string& owner) {
        const Received what = receive(text);
        if (!what.is_plain() && ++texts == 1) first = embedded::told(what, owner, text);
    }
};

void receive_row(RowFields& fields, std::size_t number, const TableData& table, Findings& findings) {
    for (std::size_t field = 0; field < fields.count(); ++field) {
        const char* text = fields.get(field);
        if (!text) continue;
        std::string name(text);
        const std::size_t before = findings.texts;
        findings.take(name, "row " + std::to_string(number) + ", " + table.columns[field].name);
        if (findings.texts > before) fields.set(field, name);
    }
}

} // namespace

void receive_tables(std::function<void(const Warning&)> tell) { door() = {std::move(tell), {}}; }

void receive_table(TableData& table, const std::string& path) {
    if (!door().tell) return;
    Findings findings;
    for (Parameter& parameter : table.parameters)
        findings.take(parameter.value, parameter.name);
    for (std::size_t row = 0; row < table.rows.size(); ++row)
        receive_row(table.rows[row]->fields, row + 1, table, findings);
    if (findings.texts == 0 || !door().told.insert(path).second) return;
    const std::string more =
        findings.texts > 1 ? "; " + std::to_string(findings.texts - 1) + " more of its texts, too" : "";
    for (const Warning& line : findings.first)
        door().tell({line.kind, path + ": " + line.text + more});
}

} // namespace embedded
