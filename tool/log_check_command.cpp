// "quillbrook log show" and "quillbrook log check": what a log or logging table holds, and what is wrong with it.

#include "formats/logs/log_check.h"
#include "tool/open_logs.h"
#include "tool/text_table.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <iostream>

namespace tool {
namespace {

using formats::LogField;
using formats::LogRow;

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

} // namespace

int run(const LogShowJob& job) {
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

int run(const LogCheckJob& job) {
    embedded::Warnings warnings;
    const std::vector<LogRow> rows = open_logs(job.logs, warnings);
    tell_warnings(warnings, false);
    const std::vector<formats::LogFinding> findings = formats::check_log(rows, job.tolerance);
    for (const formats::LogFinding& finding : findings)
        std::cout << finding.file << ':' << finding.line << ": " << one_line(finding.text) << '\n';
    const bool good = findings.empty() && warnings.empty();
    std::cout << rows.size() << (rows.size() == 1 ? " row" : " rows") << (good ? ", nothing wrong\n" : ", ");
    if (!good)
        std::cout << findings.size() << (findings.size() == 1 ? " finding, " : " findings, ") << warnings.size()
                  << (warnings.size() == 1 ? " warning\n" : " warnings\n");
    return good ? exit_done : exit_failed;
}

} // namespace tool
