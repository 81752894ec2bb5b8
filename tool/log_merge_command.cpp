// "quillbrook log merge": logging tables into one.

#include "tool/command.h"
#include "tool/open_logs.h"
#include "tool/shared_options.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

namespace tool {
namespace {

struct LogMergeJob {
    std::vector<std::string> tables;
    Output output;
    bool force = false;
};

int run(const LogMergeJob& job) {
    check_table_output(job.tables, job.output);
    if (job.force) read_in_spite_of_seals(job.tables, job.output.quiet);
    receive_tables(job.output.quiet);
    const std::unique_ptr<filmdb> table = open_log_table(job.tables.front());
    for (std::size_t i = 1; i < job.tables.size(); ++i)
        merge_log_table(*table, *open_log_table(job.tables[i]), job.tables[i], job.output.quiet);
    save_log_table(*table, job.output);
    return exit_done;
}

void add_options(OptionTable& options, LogMergeJob& job) {
    options.add({
        {"TABLE", "", "Logging tables (.RDB)", InputFiles{job.tables}, Needed::yes},
        output_file(job.output, "The table to write"),
        overwrite(job.output, "Replace a table that is there"),
        force(job.force),
        quiet(job.output),
    });
}

constexpr const char* examples = R"(Examples:
  quillbrook log merge week1.RDB week2.RDB -o show.RDB)";

} // namespace

extern const Command log_merge_command{"log merge", "Put logging tables together", examples,
                                       prepare<LogMergeJob, add_options, run>};

} // namespace tool
