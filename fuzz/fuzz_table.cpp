// Reads any bytes as a record table; what is read must come back the same from its saved form.

#include "embedded/table_file.h"

#include <cstdint>
#include <cstdlib>

namespace {

constexpr std::size_t all_records = SIZE_MAX;

void use_table(embedded::TableData& table) {
    for (std::size_t field = 0; field < table.columns.size() && field < 4; ++field)
        table.sort_fields.push_back(field);
    table.sort(true, true);
    table.tag_different(0);
    table.show_tagged_only(true);
    for (std::size_t index = 0; index < table.count_shown(); ++index) {
        if (!table.shown_row(index)) std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    embedded::TableData table;
    if (!embedded::read_table(bytes, all_records, &table)) {
        if (!table.columns.empty() || !table.rows.empty() || !table.parameters.empty()) std::abort();
        return 0;
    }
    const std::string saved = embedded::table_text(table);
    embedded::TableData back;
    if (!embedded::read_table(saved, all_records, &back)) std::abort();
    if (embedded::table_text(back) != saved) std::abort();
    if (back.rows.size() != table.rows.size()) std::abort();
    use_table(table);
    return 0;
}
