// "quillbrook print": the lists of a saved table.

#include "host/recdb.h"
#include "quillbrook/cutlist.h"
#include "tool/output_files.h"
#include "tool/run_setup.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <climits>
#include <cstring>

namespace tool {
namespace {

constexpr const char* kind_names[] = {"", "picture", "sound"};

LightweightString<wchar_t> wide(const std::string& text) {
    return fromUTF8(LightweightString<char>(text.c_str(), text.size()));
}

/// 1 picture, 2 sound, 0 where the table doesn't say.
int kind_of_table(const std::string& path) {
    const recdb table(wide(path), INT_MAX, false);
    const char* channel = table.get_valid() ? table.get_param_val("channel") : nullptr;
    if (!channel || !*channel) return 0;
    return *channel == 'A' || *channel == 'a' ? 2 : 1;
}

int kind_asked_for(const Options& options) {
    const auto found = options.find("chan_type");
    return found != options.end() && found->second == "2" ? 2 : 1;
}

// The options aren't derived from the table, so one of the other kind prints with the wrong headings.
embedded::Warnings warnings_of(const PrintJob& job) {
    const int kind = kind_of_table(job.table);
    const int asked = kind_asked_for(job.options);
    if (kind == 0 || kind == asked) return {};
    return {job.table + " lists a " + kind_names[kind] + " channel and is printed as " + kind_names[asked] +
            "; --set chan_type=" + std::to_string(kind) + " prints it as " + kind_names[kind]};
}

} // namespace

int run(const PrintJob& job) {
    check_plain(job.table);
    check_readable(job.table);
    check_outputs(job.table, job.output, {});
    apply_settings(job.settings);
    tell_warnings(warnings_of(job), job.output.quiet);

    embedded::settings_block options;
    apply_options(job.options, options);
    ToolLogger logger(job.table, job.output.quiet);
    const bool done = print_cutlist_reports(wide(job.table), wide(job.output.report), logger, false, &options);
    if (logger.failed()) return exit_failed;
    check_written();
    if (!done) throw JobError(job.table + ": couldn't be printed");
    return exit_done;
}

} // namespace tool
