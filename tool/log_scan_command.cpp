// "quillbrook log scan": scanned pictures into one table.

#include "formats/logs/log_table.h"
#include "formats/scans/scan_files.h"
#include "formats/scans/scan_reader.h"
#include "host/ascii_text.h"
#include "tool/command.h"
#include "tool/key_values.h"
#include "tool/open_logs.h"
#include "tool/output_files.h"
#include "tool/shared_options.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <algorithm>
#include <filesystem>

namespace tool {
namespace {

struct LogScanJob {
    std::vector<std::string> folders;
    formats::ScanOptions scans;
    Output output;
};

int run(const LogScanJob& job) {
    for (const std::string& folder : job.folders) {
        std::error_code ignored;
        if (!std::filesystem::is_directory(folder, ignored)) throw JobError(folder + ": isn't a folder");
    }
    if (formats::is_picture_name(job.output.report))
        throw JobError(job.output.report + ": has the name of a picture, which it might replace");
    check_outputs(job.folders.front(), job.output, {});
    const formats::Log log = formats::read_scans(job.folders, job.scans);
    tell_warnings(log.warnings, job.output.quiet);
    if (!log.error.empty()) throw JobError(one_line(log.error));
    filmdb table;
    formats::fill_table(table, log.rows);
    save_log_table(table, job.output);
    return exit_done;
}

/// "0274=KJ", or "KJ" for all film that isn't named.
void take_letters(std::map<std::string, std::string>& letters, const std::string& text) {
    const std::size_t sign = text.find('=');
    const std::string digits = sign == std::string::npos ? "" : text.substr(0, sign);
    std::string pair = text.substr(sign == std::string::npos ? 0 : sign + 1);
    std::transform(pair.begin(), pair.end(), pair.begin(), ascii::upper);
    const bool of_digits =
        sign == std::string::npos || (digits.size() == 4 && std::all_of(digits.begin(), digits.end(), ascii::is_digit));
    if (!of_digits || pair.size() != 2 || !std::all_of(pair.begin(), pair.end(), ascii::is_capital))
        throw UsageError("--letters: \"" + text + "\" is neither two letters nor four digits and theirs, as 0274=KJ");
    letters[digits] = pair;
}

void add_options(OptionTable& options, LogScanJob& job) {
    options.add({
        {"FOLDER", "", "Folders of DPX and OpenEXR pictures, with those below them", job.folders, Needed::yes},
        output_file(job.output, "The table to write"),
        {"--letters", "DIGITS=LETTERS",
         "Letters of key numbers whose maker and stock the pictures name in digits, as 0274=KJ; or KJ for all others",
         EachText{[&job](const std::vector<std::string>& texts) {
             for (const std::string& text : texts)
                 take_letters(job.scans.letters, text);
         }}},
        rate(job.scans.rate, "Frames a second of the timecodes, in place of what the pictures say"),
        {"--film", "KIND", "The kind of film, in place of what the pictures say",
         OneText{[&job](const std::string& text) {
             job.scans.film = text.empty() ? label_none : static_cast<label_t>(parse_film_kind(text));
         }}},
        {"--reel", "REEL", "The reel of every row, in place of what pictures and files are called", job.scans.reel},
        {"--time-from-names", "", "The number in a file's name is its timecode, counted in frames",
         job.scans.time_from_names},
        overwrite(job.output, "Replace a table that is there"),
        quiet(job.output),
    });
}

constexpr const char* examples = R"(Examples:
  quillbrook log scan scans/ -o show.RDB --letters 0274=KJ
      a row for each stretch of film that was scanned, one folder a roll
  quillbrook log scan scans/A012 -o A012.RDB --letters KJ --rate 24 --film "35mm,3perf"
      pictures that say neither their rate nor their film
  quillbrook log scan scans/A012 -o A012.RDB --rate 25 --time-from-names
      A012.090000.dpx is the frame at 01:00:00:00)";

} // namespace

extern const Command log_scan_command{"log scan", "Make a logging table (.RDB) of scanned pictures", examples,
                                      prepare<LogScanJob, add_options, run>};

} // namespace tool
