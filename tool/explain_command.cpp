// "quillbrook explain": how the film of one place of an edit is found, step by step.

#include "film/explain.h"
#include "tool/command.h"
#include "tool/film_check.h"
#include "tool/key_values.h"
#include "tool/log_use.h"
#include "tool/open_edit.h"
#include "tool/output_files.h"
#include "tool/shared_options.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"
#include "tool/wrong_file.h"

#include <cstdlib>
#include <iostream>
#include <optional>

namespace tool {
namespace {

struct ExplainJob {
    EditInput edit;
    ChannelName channel;
    std::string log;
    bool neg_cut = false;
    LibraryOptions options;
    std::optional<std::string> at, event;
};

bool is_number(const std::string& text) {
    return !text.empty() && text.size() <= 9 && text.find_first_not_of("0123456789") == std::string::npos;
}

/// A film frame of the edit, from a number or from a timecode of the edit.
std::int64_t frame_of(const EditPtr& edit, const std::string& text) {
    if (is_number(text)) return std::atoi(text.c_str());
    const std::optional<std::int64_t> frame = film::frame_of_timecode(edit, text);
    if (!frame) throw JobError("--at: \"" + text + "\" is neither a number of frames nor a timecode of the edit");
    return *frame;
}

int run(const ExplainJob& job) {
    for (const std::string& path : job.edit.paths)
        check_readable(path);
    if (!job.log.empty()) check_is_log_table(job.log);
    embedded::Warnings warnings;
    const EditPtr edit = open_edit(job.edit, warnings);
    const film::CheckOptions options = check_options(job.edit, job.channel, job.log, job.neg_cut, job.options, {});
    const auto log = job.log.empty() ? nullptr : open_log_rows(job.log);
    const film::Explanation explanation =
        job.event ? film::explain_event(edit, options, log.get(), std::atoi(job.event->c_str()))
                  : film::explain_frame(edit, options, log.get(), job.at ? frame_of(edit, *job.at) : 0);
    for (const std::string& line : explanation)
        std::cout << one_line(line) << '\n';
    if (explanation.empty())
        throw JobError(job.edit.paths.front() + ": nothing of " + text_of(job.channel) + " is there");
    return exit_done;
}

void add_options(OptionTable& options, ExplainJob& job) {
    add_edit_input(options, job.edit);
    add_channel_and_log(options, job.channel, job.log);
    add_log_matching(options, job.edit, job.log);
    options.add({
        {"--at", "POSITION", "A place of the edit: film frames from its start, or its timecode; by default its start",
         job.at},
        {"--event", "N", "An event, as the assembly numbers it", job.event},
        {"--neg-cut", "", "As a neg-cut list numbers the events", job.neg_cut},
        library_set(job.options, parse_options),
    });
    options.add_check([&job] {
        if (job.at && job.event) throw UsageError("give either --at or --event");
        if (job.event && !is_number(*job.event)) throw UsageError("--event: \"" + *job.event + "\" is no number");
    });
}

constexpr const char* examples = R"(Examples:
  quillbrook explain reel.otio --event 4
      event, source, key arithmetic and printed number of the fourth event, a line a step
  quillbrook explain reel1.edl --rate 24 --log show.RDB --at 01:00:10:00
      what the edit shows there, and the row of the log that says so)";

} // namespace

extern const Command explain_command{"explain", "Tell how the film of one place of an edit is found", examples,
                                     prepare<ExplainJob, add_options, run>};

} // namespace tool
