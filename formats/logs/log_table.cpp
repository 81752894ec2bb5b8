#include "formats/logs/log_table.h"

#include "embedded/decimal_text.h"
#include "embedded/table_file.h"
#include "formats/logs/film_values.h"

#include <algorithm>
#include <cstdio>

namespace formats {
namespace {

constexpr std::string_view table_mark = "%recdb ";
constexpr int pulldown_cycle = 5;

struct TableColumn {
    LogField field;
    const char* name;
};

constexpr TableColumn table_columns[] = {
    {LogField::name, "name"},
    {LogField::reel, "reel"},
    {LogField::start, "start time"},
    {LogField::end, "end time"},
    {LogField::start_24p, "start 24p code"},
    {LogField::reel_24p, "24p reel"},
    {LogField::cam_reel, "cam reel"},
    {LogField::key_start, "start keycode"},
    {LogField::perforation, "start perf"},
    {LogField::cam_code, "start camcode"},
    {LogField::cam_date, "cam_date"},
    {LogField::snd_reel, "snd reel"},
    {LogField::snd_start, "snd start"},
    {LogField::lab_reel, "lab reel"},
    {LogField::comp_reel, "comp reel"},
    {LogField::ink_start, "start inkcode"},
    {LogField::scene, "scene"},
    {LogField::take, "shot"},
    {LogField::who, "who"},
    {LogField::description, "description"},
    {LogField::notes, "notes"},
    {LogField::tag, "tag"},
    {LogField::duration, "duration"},
};

int remainder(std::int64_t value, int divisor) { return static_cast<int>(((value % divisor) + divisor) % divisor); }

int midnight_phase(const LogRow& row) { return remainder(std::int64_t{row.phase} - row.start.sample, pulldown_cycle); }

/// Puts texts into the columns of a table by name; columns that it lacks are passed over.
class RowWriter {
public:
    explicit RowWriter(recdb& table) : table_(table) {
        for (const TableColumn& column : table_columns)
            columns_.push_back({column.field, table.get_fieldnum(column.name)});
    }

    void write(const LogRow& row) const {
        dbrecord& record = *table_.get_record(static_cast<unsigned>(table_.add_records(1)));
        for (const auto& [field, column] : columns_) {
            const bool refused = field == LogField::key_start && row.key_refused;
            if (!row[field].empty() && !refused) set(record, column, row[field].c_str());
        }
        if (row.standard.rate) set(record, label_std_, tv_standard_to_edlstr(row.standard));
        if (row.snd_standard.rate) set(record, snd_label_std_, tv_standard_to_edlstr(row.snd_standard));
        if (row.film) set(record, film_label_std_, label_type_to_edlstr(row.film));
        set(record, pulldown_, row.pulldown ? "Y" : "N");
        if (row.pulldown) set(record, sequence_, std::to_string(midnight_phase(row)).c_str());
    }

private:
    static void set(dbrecord& record, int column, const char* text) {
        if (column >= 0) record.set_field(column, text, true);
    }

    struct Column {
        LogField field;
        int number;
    };

    recdb& table_;
    std::vector<Column> columns_;
    int label_std_ = table_.get_fieldnum("label_std");
    int snd_label_std_ = table_.get_fieldnum("snd label_std");
    int film_label_std_ = table_.get_fieldnum("film label_std");
    int pulldown_ = table_.get_fieldnum("pulldown");
    int sequence_ = table_.get_fieldnum("sequence");
};

void add_standard(recdb& table, const char* name, TCInf standard) {
    if (standard.rate) table.add_param(name, tv_standard_to_edlstr(standard));
}

void add_film_rate(recdb& table, const LogRow& row) {
    const embedded::RateInfo* rate = embedded::rate_info(row.standard.rate);
    if (!rate) return;
    char text[24];
    std::snprintf(text, sizeof text, "%-6g", embedded::film_rate_of(*rate).to_double());
    for (char& c : text)
        if (c == ',') c = '.';
    table.add_param("film rate", text);
}

void write_header(recdb& table, const LogRow& row) {
    table.add_param("label_std", tv_standard_to_edlstr(row.standard));
    add_standard(table, "snd label_std", row.snd_standard);
    if (row.film)
        table.add_param("film label_std", film_gauge_to_edlstr(edlstr_to_film_gauge(label_type_to_edlstr(row.film))));
    add_film_rate(table, row);
    table.add_param("pulldown", row.pulldown ? "Y" : "N");
    if (row.pulldown) table.add_param("sequence", std::to_string(midnight_phase(row)).c_str());
}

/// What a saved table says of one of its rows, in the words of a reader of logs.
class TableReader {
public:
    TableReader(const embedded::TableData& table, const std::string& path) : table_(table), path_(path) {
        for (const TableColumn& column : table_columns)
            columns_.push_back({column.field, table_.find_column(column.name)});
    }

    LogRow row(std::size_t index) const {
        LogRow row;
        row.file = path_;
        // The mark, the parameters, an empty line, names and types come first.
        row.line = static_cast<int>(table_.parameters.size() + 4 + index + 1);
        for (const auto& [field, column] : columns_)
            row[field] = text(index, column);
        read_standards(index, row);
        read_points(row);
        read_pulldown(index, row);
        return row;
    }

private:
    struct Column {
        LogField field;
        int number;
    };

    /// A column, and what the header says where it is empty.
    struct HeaderColumn {
        int number;
        std::string otherwise;
    };

    std::string text(std::size_t index, int column) const {
        const char* found = column < 0 ? nullptr : table_.rows[index]->fields.get(static_cast<std::size_t>(column));
        return found ? found : "";
    }

    static std::string value_of(const embedded::TableData& table, const char* parameter) {
        const embedded::Parameter* found = table.find_parameter(parameter);
        return found ? found->value : "";
    }

    HeaderColumn header_column(const char* name, const char* otherwise = "") const {
        const std::string value = value_of(table_, name);
        return {table_.find_column(name), value.empty() ? otherwise : value};
    }

    std::string text_of(std::size_t index, const HeaderColumn& column) const {
        std::string own = text(index, column.number);
        return own.empty() ? column.otherwise : own;
    }

    void read_standards(std::size_t index, LogRow& row) const {
        row.standard = edlstr_to_tv_standard(text_of(index, label_std_).c_str());
        row.snd_standard = edlstr_to_tv_standard(text_of(index, snd_label_std_).c_str());
        row.film = edlstr_to_label_type(text_of(index, film_label_std_).c_str());
    }

    static void read_points(LogRow& row) {
        const label_t kind = TvStd_to_label_type(row.standard);
        row.start.set_type(kind);
        row.start.set_sample(row[LogField::start].c_str());
        row.end.set_type(kind);
        row.end.set_sample(row[LogField::end].c_str());
        const label_t film = row.film ? row.film : label_key_35mm_4p;
        const FilmNumber outcome = read_key_number(row[LogField::key_start], {}, film, row.key_start);
        row.key_refused = outcome == FilmNumber::bad;
    }

    /// As cutlists take it: a row's own phase counts for itself, and a negative one takes the pulldown away.
    void read_pulldown(std::size_t index, LogRow& row) const {
        const std::string own = text(index, pulldown_), own_phase = text(index, sequence_);
        row.pulldown = has_pulldown_;
        int midnight = midnight_phase_;
        if (says_pulldown(own) || says_no_pulldown(own)) row.pulldown = says_pulldown(own);
        if (!own_phase.empty()) midnight = embedded::int_of_text(own_phase.c_str());
        if (midnight < 0 && pulldown_ >= 0) row.pulldown = false;
        if (row.pulldown) row.phase = remainder(std::int64_t{std::max(midnight, 0)} + row.start.sample, pulldown_cycle);
    }

    static int phase_of_header(const embedded::TableData& table) {
        const std::string on = value_of(table, "pulldown");
        if (!on.empty() && !says_pulldown(on)) return 0;
        return std::max(0, embedded::int_of_text(value_of(table, "sequence").c_str()));
    }

    const embedded::TableData& table_;
    const std::string& path_;
    std::vector<Column> columns_;
    HeaderColumn label_std_ = header_column("label_std", unnamed_standard);
    HeaderColumn snd_label_std_ = header_column("snd label_std", unnamed_standard);
    HeaderColumn film_label_std_ = header_column("film label_std");
    int pulldown_ = table_.find_column("pulldown");
    int sequence_ = table_.find_column("sequence");
    bool has_pulldown_ = says_pulldown(value_of(table_, "pulldown"));
    int midnight_phase_ = phase_of_header(table_);
};

} // namespace

void fill_table(recdb& table, const std::vector<LogRow>& rows) {
    if (rows.empty()) return;
    write_header(table, rows.front());
    const RowWriter writer(table);
    for (const LogRow& row : rows)
        writer.write(row);
}

bool is_table(std::string_view bytes) { return bytes.substr(0, table_mark.size()) == table_mark; }

Log read_log_table(std::string_view bytes, const std::string& path) {
    Log log;
    embedded::TableData table;
    std::string why;
    if (!embedded::read_table(bytes, most_table_rows + 1, &table, &why)) {
        log.error = path + ": " + why;
        return log;
    }
    if (!table.find_parameter("FILMDB")) {
        log.error = path + ": isn't a logging table";
        return log;
    }
    if (table.rows.size() > most_table_rows) {
        log.error = path + ": holds more rows than a logging table can, " + std::to_string(most_table_rows);
        return log;
    }
    const TableReader reader(table, path);
    log.rows.reserve(table.rows.size());
    for (std::size_t i = 0; i < table.rows.size(); ++i)
        log.rows.push_back(reader.row(i));
    return log;
}

} // namespace formats
