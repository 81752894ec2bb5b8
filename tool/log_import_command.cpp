// "quillbrook log import" and "quillbrook log merge": logs and tables into one table.

#include "formats/logs/log_table.h"
#include "quillbrook/keylog.h"
#include "tool/open_logs.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

namespace tool {
namespace {

void merge(filmdb& table, filmdb& other, const std::string& path) {
    const unsigned first = table.get_num_records();
    const int outcome = table.add_any_recdb(&other);
    if (outcome == fdb_missing_field) throw JobError(path + ": " + one_line(table.get_error_message()));
    if (outcome != 0) throw JobError(path + ": shares no column with the others");
    formats::keep_header_of(other, table, first);
}

std::unique_ptr<filmdb> read_keylog_file(const std::string& path, const LogImportJob& job) {
    ToolLogger logger(path, job.output.quiet);
    auto table = std::make_unique<ftldb>(wide_path(path), logger, wide_path(job.output.report));
    if (!table->get_valid()) throw JobError(path + ": couldn't be read as a Keylog file");
    if (!job.logs.reel.empty()) table->set_reelid(job.logs.reel.c_str());
    return table;
}

int import_keylog(const LogImportJob& job) {
    std::unique_ptr<filmdb> table;
    for (const std::string& path : job.logs.paths) {
        std::unique_ptr<filmdb> next = read_keylog_file(path, job);
        if (table)
            merge(*table, *next, path);
        else
            table = std::move(next);
    }
    save_log_table(*table, job.output);
    return exit_done;
}

} // namespace

int run(const LogImportJob& job) {
    check_table_output(job.logs.paths, job.output);
    if (job.as_keylog) return import_keylog(job);
    embedded::Warnings warnings;
    const std::vector<formats::LogRow> rows = open_logs(job.logs, warnings);
    tell_warnings(warnings, job.output.quiet);
    filmdb table;
    formats::fill_table(table, rows);
    save_log_table(table, job.output);
    return exit_done;
}

int run(const LogMergeJob& job) {
    check_table_output(job.tables, job.output);
    const std::unique_ptr<filmdb> table = open_log_table(job.tables.front());
    for (std::size_t i = 1; i < job.tables.size(); ++i)
        merge(*table, *open_log_table(job.tables[i]), job.tables[i]);
    save_log_table(*table, job.output);
    return exit_done;
}

} // namespace tool
