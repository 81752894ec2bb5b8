#include "tool/shared_options.h"

#include "embedded/services.h"
#include "tool/key_values.h"
#include "tool/list_switches.h"
#include "tool/log_match.h"
#include "tool/open_logs.h"
#include "tool/tool_error.h"

namespace tool {
namespace {

/// Whether it is the frame that is shown first.
constexpr std::pair<const char*, bool> readings_of_reverse[] = {{"first", true}, {"low", false}};

} // namespace

void add_edit_input(OptionTable& options, EditInput& edit) {
    options.add({{"EDIT", "", "The edit (.otio, .xml, .fcpxml, .aaf), or the edit lists of one programme (.edl)",
                  InputFiles{edit.paths}, Needed::yes}});
    add_edit_reading(options, edit);
}

void add_edit_reading(OptionTable& options, EditInput& edit) {
    options.add({
        {"--sequence", "NAME", "Which sequence of a file that holds several", edit.sequence},
        rate(edit.rate, "Frames a second of the edit, in place of what the file says"),
        {"--all-effects", "", "Every effect of the file is the lab's to make", edit.all_effects},
        {"--edl-reverse", "WHICH",
         "What an edit list's source in of a reverse shot is: the frame shown first, or the lowest",
         one_of(readings_of_reverse, edit.reverse_from_first, "low")},
    });
}

void add_log_input(OptionTable& options, LogInput& logs, const char* what) {
    options.add({
        {"LOG", "", what, InputFiles{logs.paths}, Needed::yes},
        rate(logs.rate, "Frames a second of the timecodes, in place of what the files say"),
        {"--film", "KIND", "The kind of film, in place of what the files say",
         OneText{[&logs](const std::string& text) { logs.film = text.empty() ? 0 : parse_film_kind(text); }}},
        {"--reel", "REEL", "The reel of every row, in place of what the files say", logs.reel},
        force(logs.force),
    });
}

void add_report_options(OptionTable& options, LibraryOptions& library, Settings& settings, bool& doubts) {
    options.add({
        printed_lists_option(library, doubts),
        library_frames("--handles", library, "pull_handle", "Frames to pull at each end beyond what is cut"),
        library_frames("--butt", library, "butt",
                       "Frames apart at which two cuts of a roll still count as re-use; by default 1"),
        library_switch("--sort-by-key", library, "pull_sort_by_keycode", "1",
                       "Pull lists by key number in place of by roll"),
        library_set(library, parse_options),
        host_setting(settings),
    });
}

Option host_setting(Settings& settings) {
    return {"--config", "KEY=VALUE", "A host-wide setting",
            EachText{[&settings](const std::vector<std::string>& pairs) { settings = parse_settings(pairs); }}};
}

Option output_file(Output& output, const char* what) { return {"-o", "FILE", what, output.report, Needed::yes}; }

Option overwrite(Output& output, const char* what) { return {"--overwrite", "", what, output.overwrite}; }

Option quiet(Output& output) { return {"--quiet", "", "Tell neither progress nor warnings", output.quiet}; }

Option force(bool& force) {
    return {"--force", "", "Read tables that were cut off or changed since, as far as they go", force};
}

Option no_progress(Output& output) {
    return {"--no-progress", "", "Tell warnings, but no progress", output.no_progress};
}

void add_channel_and_log(OptionTable& options, ChannelName& channel, std::string& log) {
    options.add({
        {"--channel", "CHANNEL", "The channel to list: V1, V2, ... or A1, A2, ...",
         OneText{[&channel](const std::string& text) { channel = parse_channel(text); }, text_of(channel)}},
        log_table(log),
    });
}

Option log_table(std::string& log) {
    const auto fault_of_log = [](const std::string& path) {
        return std::string(path.empty() ? "a logging table is wanted" : "");
    };
    return {"--log", "TABLE", "The logging table that key numbers come from, by reel and timecode",
            InputFile{log, fault_of_log}};
}

void add_log_matching(OptionTable& options, EditInput& edit, const std::string& log) {
    LogMatching& matching = edit.matching;
    options.add({
        {"--match", "KEY", "By what rows of the log are found: reel, tape, clip, file or camera-roll",
         one_of(match_names(), [&matching](const std::string& text) { matching.key = text; })},
        {"--log-time", "WHICH", "By which timecode of the rows: source, camera or sound",
         one_of(log_time_names(), [&matching](const std::string& text) { matching.time = text; })},
        {"--aliases", "FILE", "What reels of the edit are called in the log, as \"A12 = A012\", a line each",
         InputFile{matching.aliases}},
    });
    options.add_check([&matching, &log] {
        matching.log = log;
        if (log.empty() && !(matching.key.empty() && matching.time.empty()))
            throw UsageError("--match and --log-time need --log");
    });
}

Option rate(const embedded::RateInfo*& rate, const char* what) {
    return {"--rate", "RATE", what,
            OneText{[&rate](const std::string& text) { rate = text.empty() ? nullptr : parse_rate(text); }}};
}

Option library_switch(const char* name, LibraryOptions& library, const char* key, const char* value, const char* what) {
    return {name, "", what, Switch{[&library, key, value] { library.switches[key] = value; }}};
}

Option library_frames(const char* name, LibraryOptions& library, const char* key, const char* what) {
    return {name, "N", what, OneText{[&library, name, key](const std::string& text) {
                library.switches[key] = parse_frames(name, text);
            }}};
}

Option library_set(LibraryOptions& library, PairsParser parse) {
    return {"--set", "KEY=VALUE", "An option of the library; wins over all else",
            EachText{[&library, parse](const std::vector<std::string>& pairs) { library.set = parse(pairs); }}};
}

} // namespace tool
