// "quillbrook log show": what a log or logging table holds.

#include "tool/command.h"
#include "tool/open_logs.h"
#include "tool/shared_options.h"
#include "tool/text_table.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <iostream>

namespace tool {
namespace {

using formats::LogField;
using formats::LogRow;

struct LogShowJob {
    LogInput logs;
};

struct ShownColumn {
    const char* heading;
    LogField field;
};

constexpr ShownColumn shown_columns[] = {
    {"name", LogField::name},
    {"reel", LogField::reel},
    {"start", LogField::start},
    {"end", LogField::end},
    {"duration", LogField::duration},
    {"cam roll", LogField::cam_reel},
    {"key number", LogField::key_start},
    {"ink number", LogField::ink_start},
    {"lab roll", LogField::lab_reel},
    {"snd roll", LogField::snd_reel},
    {"snd start", LogField::snd_start},
    {"24p start", LogField::start_24p},
    {"scene", LogField::scene},
    {"take", LogField::take},
    {"description", LogField::description},
    {"notes", LogField::notes},
};

constexpr const char* phase_names[] = {"A", "B", "X", "C", "D"};

std::vector<std::string> cells_of(const LogRow& row) {
    std::vector<std::string> cells{std::to_string(row.line)};
    for (const ShownColumn& column : shown_columns)
        cells.push_back(one_line(row[column.field]));
    cells.push_back(row.standard.rate ? tv_standard_to_edlstr(row.standard) : "");
    cells.push_back(label_type_to_edlstr(row.film));
    cells.push_back(row.pulldown ? phase_names[row.phase % 5] : "");
    return cells;
}

void show_file(const std::string& path, const std::vector<LogRow>& rows) {
    TextTable table;
    table.add_column("line", TextTable::Align::right);
    for (const ShownColumn& column : shown_columns)
        table.add_column(column.heading);
    for (const char* heading : {"rate", "film", "pulldown"})
        table.add_column(heading);
    for (const LogRow& row : rows)
        table.add_row(cells_of(row));
    std::cout << path << ": " << rows.size() << (rows.size() == 1 ? " row\n" : " rows\n") << table.text();
}

int run(const LogShowJob& job) {
    receive_tables(false);
    for (const std::string& path : job.logs.paths) {
        LogInput input = job.logs;
        input.paths = {path};
        embedded::Warnings warnings;
        const std::vector<LogRow> rows = open_logs(input, warnings);
        tell_warnings(warnings, false);
        show_file(path, rows);
    }
    return exit_done;
}

void add_options(OptionTable& options, LogShowJob& job) {
    add_log_input(options, job.logs, "Logging tables (.RDB) or logs");
}

constexpr const char* examples = R"(Examples:
  quillbrook log show show.RDB
  quillbrook log show day1.ale)";

} // namespace

extern const Command log_show_command{"log show", "Show the rows of a logging table or log", examples,
                                      prepare<LogShowJob, add_options, run>};

} // namespace tool
