#include "tool/open_logs.h"

#include "embedded/services.h"
#include "formats/logs/film_values.h"
#include "formats/logs/joined_events.h"
#include "formats/logs/log_reader.h"
#include "formats/logs/log_table.h"
#include "formats/logs/merged_header.h"
#include "tool/output_files.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"
#include "tool/wrong_file.h"

#include <iostream>
#include <iterator>

namespace tool {

int parse_film_kind(const std::string& text) {
    const label_t kind = formats::film_kind_of_text(text);
    if (!kind) throw UsageError("--film: \"" + text + "\" is not a kind of film such as 35mm,4perf or 16mm");
    return kind;
}

LightweightString<wchar_t> wide_path(const std::string& path) {
    return fromUTF8(LightweightString<char>(path.c_str(), path.size()));
}

namespace {

using formats::FileKind;

const std::vector<FileKind> kinds_of_logs{FileKind::logging_table, FileKind::ale, FileKind::flex, FileKind::keylog,
                                          FileKind::text};

void check_row_count(const std::string& path, std::size_t rows) {
    if (rows > formats::most_table_rows)
        throw JobError(path + ": makes " + std::to_string(rows) + " rows; a logging table holds " +
                       std::to_string(formats::most_table_rows));
}

} // namespace

std::vector<formats::LogRow> open_logs(const LogInput& input, embedded::Warnings& warnings) {
    if (input.force) read_in_spite_of_seals(input.paths, false);
    formats::LogOptions options;
    options.rate = input.rate;
    options.reel = input.reel;
    options.film = static_cast<label_t>(input.film);
    std::vector<formats::LogRow> rows;
    for (const std::string& path : input.paths) {
        check_kind(path, kinds_of_logs, "a log or a logging table (.RDB)");
        formats::Log log = formats::read_log(path, options);
        if (!log.error.empty()) throw JobError(one_line(log.error));
        warnings.insert(warnings.end(), log.warnings.begin(), log.warnings.end());
        rows.insert(rows.end(), std::make_move_iterator(log.rows.begin()), std::make_move_iterator(log.rows.end()));
        check_row_count(path, rows.size());
    }
    formats::join_events(rows, warnings);
    return rows;
}

void read_in_spite_of_seals(const std::vector<std::string>& paths, bool quiet) {
    embedded::set_host_setting("read_broken_tables", 1);
    embedded::Warnings warnings;
    for (const std::string& path : paths) {
        const std::string fault = embedded::fault_of_table(path);
        if (!fault.empty() && recdb(wide_path(path), 0, false).get_valid())
            warnings.push_back(path + ": " + fault + "; read as far as it goes");
    }
    embedded::take_read_failure(nullptr, nullptr);
    tell_warnings(warnings, quiet);
}

std::unique_ptr<filmdb> open_log_table(const std::string& path) {
    check_is_log_table(path);
    auto table = std::make_unique<filmdb>(wide_path(path));
    if (table->get_valid()) return table;
    check_tables_read();
    throw JobError(path + ": " + one_line(table->get_error_message()));
}

void merge_log_table(filmdb& table, filmdb& other, const std::string& path, bool quiet) {
    const unsigned first = table.get_num_records();
    const int outcome = table.add_any_recdb(&other);
    if (outcome == fdb_missing_field) throw JobError(path + ": " + one_line(table.get_error_message()));
    if (outcome != 0) throw JobError(path + ": shares no column with the others");
    tell_warnings(formats::keep_header_of(other, path, table, first), quiet);
}

void check_table_output(const std::vector<std::string>& inputs, const Output& output) {
    for (const std::string& input : inputs) {
        check_readable(input);
        check_outputs(input, output, {});
    }
}

void save_log_table(filmdb& table, const Output& output) {
    const unsigned count = table.get_num_records();
    check_row_count(output.report, count);
    // A new table isn't valid, but counts as badly loaded when something of it couldn't be made.
    if (table.get_error() == fdb_load_failed)
        throw JobError(output.report + ": " + one_line(table.get_error_message()));
    table.set_filename(wide_path(made_at(output.report)));
    const int saved = table.save_text();
    check_written();
    if (saved != 0) throw JobError(output.report + ": couldn't be written");
    deliver(output.report);
    if (!output.quiet) std::cerr << output.report << ": " << count << (count == 1 ? " row\n" : " rows\n");
}

} // namespace tool
