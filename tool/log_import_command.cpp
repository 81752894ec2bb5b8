// "quillbrook log import": logs into one table.

#include "embedded/table_door.h"
#include "formats/logs/log_table.h"
#include "quillbrook/keylog.h"
#include "tool/command.h"
#include "tool/open_logs.h"
#include "tool/output_files.h"
#include "tool/shared_options.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"
#include "tool/wrong_file.h"

namespace tool {
namespace {

struct LogImportJob {
    LogInput logs;
    Output output;
    bool as_keylog = false; ///< by the library's own reader of Keylog files
};

std::unique_ptr<filmdb> read_keylog_file(const std::string& path, const LogImportJob& job) {
    check_kind(path, {formats::FileKind::keylog, formats::FileKind::text}, "a Keylog log");
    ToolLogger logger(path, job.output.quiet);
    auto table = std::make_unique<ftldb>(wide_path(plain_copy_of(path)), logger, wide_path(job.output.report));
    if (!table->get_valid()) throw JobError(path + ": couldn't be read as a Keylog file");
    if (!job.logs.reel.empty()) table->set_reelid(job.logs.reel.c_str());
    embedded::receive_rows(*table, path);
    return table;
}

int import_keylog(const LogImportJob& job) {
    receive_tables(job.output.quiet);
    std::unique_ptr<filmdb> table;
    for (const std::string& path : job.logs.paths) {
        std::unique_ptr<filmdb> next = read_keylog_file(path, job);
        if (table)
            merge_log_table(*table, *next, path, job.output.quiet);
        else
            table = std::move(next);
    }
    save_log_table(*table, job.output);
    return exit_done;
}

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

void add_options(OptionTable& options, LogImportJob& job) {
    add_log_input(options, job.logs, "Logs: ALE, FLEx, Keylog, or text parted by tabs or commas");
    options.add({
        output_file(job.output, "The table to write"),
        overwrite(job.output, "Replace a table that is there"),
        quiet(job.output),
        {"--as-keylog", "", "Read Keylog files by the places of their columns", job.as_keylog},
    });
    options.add_check([&job] {
        if (job.as_keylog && (job.logs.rate || job.logs.film))
            throw UsageError("log import: --as-keylog takes rate and film from the file");
    });
}

constexpr const char* examples = R"(Examples:
  quillbrook log import dailies/*.ale -o show.RDB
      all of the dailies' logs as one table
  quillbrook log import day3.csv -o day3.RDB --rate 29.97 --film "35mm,3perf" --reel 003
      a log that says neither its rate nor its film nor its tape
  quillbrook log import transfer.ftl -o transfer.RDB --as-keylog
      a Keylog file, read column by column as the library has always read it)";

} // namespace

extern const Command log_import_command{"log import", "Make a logging table (.RDB) of logs", examples,
                                        prepare<LogImportJob, add_options, run>};

} // namespace tool
