#include "documents/table_head.h"

#include <cstdlib>

namespace documents {
namespace {

/// Columns by number, as two of their names stand twice.
enum Column : unsigned short {
    column_optical_record = 1,
    column_optical = 2,
    column_track = 3,
    column_optical_tracks = 4,
    column_optical_error = 6,
    column_edit_in = 7,
    column_edit_out = 8,
    column_optical_in = 9,
    column_optical_out = 10,
    column_optical_name = 11,
    column_fx_out = 27,
    column_fx_mod_out = 28,
    column_fx_len_out = 29,
    column_fx_name_out = 30,
};

std::string parameter(const recdb& table, const char* name) {
    const char* value = table.get_param_val(name);
    return value ? value : "";
}

std::string text_of(const dbrecord& record, Column column) {
    const char* text = record.get_field(column);
    return text ? text : "";
}

int number_of(const dbrecord& record, Column column) { return std::atoi(text_of(record, column).c_str()); }

TableRow row_of(const dbrecord& record) {
    TableRow row;
    row.is_optical = number_of(record, column_optical_record) != 0;
    const int track = number_of(record, column_track);
    row.layer = track > 1 ? track - 1 : 0;
    row.start = number_of(record, column_edit_in);
    row.end = number_of(record, column_edit_out);
    row.transition_kind = text_of(record, column_fx_out);
    row.transition_mode = text_of(record, column_fx_mod_out);
    row.transition_name = text_of(record, column_fx_name_out);
    row.transition_length = row.transition_kind.empty() ? 0 : number_of(record, column_fx_len_out);
    row.optical = number_of(record, column_optical);
    row.optical_start = number_of(record, column_optical_in);
    row.optical_end = number_of(record, column_optical_out);
    row.optical_name = text_of(record, column_optical_name);
    row.has_effect = number_of(record, column_optical_tracks) != 0;
    row.optical_error = number_of(record, column_optical_error) != 0;
    return row;
}

std::string track_words(const TableHead& head) {
    if (head.channel.empty()) return "";
    const int number = std::atoi(head.channel.c_str() + 1);
    return head.sound ? "sound track " + std::to_string(number) : "picture " + std::to_string(number + 1);
}

} // namespace

TableHead head_of(const recdb& table) {
    TableHead head;
    head.edit = parameter(table, "edit_name");
    head.project = parameter(table, "project_name");
    head.date = parameter(table, "edit_date");
    head.rate = parameter(table, "edit_vidtc_std");
    head.gauge = parameter(table, "film label_std");
    head.channel = parameter(table, "channel");
    head.film = edlstr_to_label_type(head.gauge.c_str());
    head.neg_cut = parameter(table, "cutlist_type") == "neg-cut";
    head.sound = !head.channel.empty() && (head.channel[0] == 'A' || head.channel[0] == 'a');
    return head;
}

TitleBlock title_of(const TableHead& head) {
    TitleBlock title;
    title.edit = head.edit;
    title.project = head.project;
    title.track = track_words(head);
    title.gauge = gauge_words(head.gauge);
    title.rate = rate_words(head.rate);
    title.cut_date = head.date;
    return title;
}

std::string gauge_words(const std::string& gauge) {
    const std::size_t dash = gauge.find('-');
    if (dash == std::string::npos) return gauge;
    const std::size_t end = gauge.find_first_not_of("0123456789", dash + 1);
    const std::string perforations = gauge.substr(dash + 1, end == std::string::npos ? end : end - dash - 1);
    return gauge.substr(0, dash) + (perforations.empty() ? "" : ' ' + perforations + "-perf");
}

std::string rate_words(const std::string& rate) {
    const std::size_t end = rate.find_first_not_of("0123456789");
    if (end == 0 || end == std::string::npos) return rate;
    return rate.substr(0, end) + (rate.substr(end) == "df" ? " fps drop frame" : " fps");
}

std::vector<TableRow> rows_of(const recdb& table) {
    std::vector<TableRow> rows;
    for (unsigned i = 0; i < table.get_num_records(); ++i)
        rows.push_back(row_of(*table.get_record(i)));
    return rows;
}

} // namespace documents
