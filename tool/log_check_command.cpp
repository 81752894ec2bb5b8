// "quillbrook log check": what is wrong with logs and logging tables.

#include "formats/logs/log_check.h"
#include "tool/command.h"
#include "tool/open_logs.h"
#include "tool/shared_options.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <iostream>

namespace tool {
namespace {

struct LogCheckJob {
    LogInput logs;
    int tolerance = 2; ///< film frames, where there is pulldown
};

/// The exit status; also 1 when something was found.
int run(const LogCheckJob& job) {
    receive_tables(false);
    embedded::Warnings warnings;
    const std::vector<formats::LogRow> rows = open_logs(job.logs, warnings);
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

void add_options(OptionTable& options, LogCheckJob& job) {
    add_log_input(options, job.logs, "Logging tables (.RDB) or logs; checked together");
    options.add({
        {"--tolerance", "N", "Film frames by which lengths may differ where there is pulldown",
         WholeNumber{job.tolerance, 0, 1000}},
    });
}

constexpr const char* examples = R"(Examples:
  quillbrook log check show.RDB && quillbrook cutlist reel1.edl --rate 24 --log show.RDB -o lists/reel1.txt
      goes on only when nothing is wrong
  quillbrook log check dailies/*.ale
      all of the dailies as one log, so that overlaps between files are found too

Exit status: 0 nothing is wrong, 1 something is, 2 wrong usage.)";

} // namespace

extern const Command log_check_command{"log check", "Find what in logs would spoil a conform", examples,
                                       prepare<LogCheckJob, add_options, run>};

} // namespace tool
