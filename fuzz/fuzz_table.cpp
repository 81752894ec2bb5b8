// Reads any bytes as a record table, in spite of its seal too; what is read must come back the same from its saved
// form, and what fits its seal must read the same in both ways.

#include "embedded/services.h"
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

bool read_table(std::string_view bytes, bool broken_too, embedded::TableData* table) {
    embedded::set_host_setting("read_broken_tables", broken_too ? 1 : 0);
    std::string why;
    const bool read = embedded::read_table(bytes, all_records, table, &why);
    if (read != why.empty()) std::abort();
    if (!read && (!table->columns.empty() || !table->rows.empty() || !table->parameters.empty())) std::abort();
    return read;
}

/// The saved form; it must read back the same.
std::string save_and_read(const embedded::TableData& table) {
    std::string saved = embedded::table_text(table);
    embedded::TableData back;
    if (!read_table(saved, false, &back)) std::abort();
    if (embedded::table_text(back) != saved) std::abort();
    if (back.rows.size() != table.rows.size()) std::abort();
    return saved;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    embedded::TableData table, broken_too;
    const bool fits = read_table(bytes, false, &table);
    if (!read_table(bytes, true, &broken_too)) {
        if (fits) std::abort();
        return 0;
    }
    const std::string saved = save_and_read(broken_too);
    if (fits && save_and_read(table) != saved) std::abort();
    use_table(broken_too);
    return 0;
}
