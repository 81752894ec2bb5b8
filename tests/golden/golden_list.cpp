#include "golden_list.h"

#include "embedded/edit_builder.h"
#include "embedded/services.h"
#include "formats/otio/otio_reader.h"
#include "quillbrook/cutlist.h"
#include "tests/support/project_paths.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <ostream>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace golden {
namespace {

constexpr int sound = 2;

class StderrLogger : public LoggerHandle {
public:
    void message(const LightweightString<wchar_t>& text, int level) override {
        if (level > 0) std::fprintf(stderr, "%s\n", toUTF8(text).c_str());
    }
};

std::string edit_path(const List& list) { return examples_folder() + "/" + list.folder + "/" + list.edit + ".otio"; }

embedded::settings_block options_of(const List& list, const EditPtr& edit, const std::string& stem) {
    embedded::settings_block block;
    block.set("proj_name", embedded::EditBuilder::project_of(edit));
    block.set("chan_type", std::to_string(list.channel_kind));
    block.set("chan_num", std::to_string(list.channel_number - 1));
    block.set("pull_match_assembly", list.neg_cut ? "0" : "1");
    block.set("edit_units", list.frames ? "1" : "0");
    block.set("output_file", stem + ".txt");
    for (const char* type : {"fsl_type1_file", "fsl_type2_file", "fsl_type3_file", "fsl_type4_file"})
        block.set(type, list.single_layer ? "1" : "0");
    return block;
}

bool make_here(const List& list, const std::string& stem) {
    pin_surroundings(stem + ".work", list.by_timecode);
    const formats::ReadResult read = formats::read_otio(edit_path(list), {});
    if (!read.edit) {
        std::fprintf(stderr, "%s\n", read.error.c_str());
        return false;
    }
    const embedded::settings_block options = options_of(list, read.edit, stem);
    StderrLogger logger;
    return make_cutlist_from_edit(read.edit, logger, 0, &options, embedded::EditBuilder::cues_of(read.edit), true);
}

} // namespace

void PrintTo(const List& list, std::ostream* out) { *out << list.folder << '/' << list.name(); }

std::string test_name_of(const List& list) {
    std::string name = list.name();
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

std::vector<List> all_lists() {
    std::vector<List> lists;
    const std::pair<const char*, const char*> edits[] = {
        {"reel", "reel"},    {"16mm", "heron"},       {"3perf", "harbour"}, {"65mm", "desert"},
        {"25fps", "market"}, {"29.97df", "newsroom"}, {"23.976", "ferry"},
    };
    for (const auto& [folder, edit] : edits) {
        lists.push_back({folder, edit, ""});
        lists.push_back({folder, edit, "-neg", 1, 1, true});
    }
    lists.push_back({"reel", "reel", "-frames", 1, 1, false, true});
    lists.push_back({"reel", "reel", "-a1", sound, 1});
    lists.push_back({"reel", "reel", "-a2", sound, 2});
    lists.push_back({"reel", "reel", "-a1-timecode", sound, 1, false, false, true});
    lists.push_back({"29.97df", "newsroom", "-a1", sound, 1});
    lists.push_back({"29.97df", "newsroom", "-a1-timecode", sound, 1, false, false, true});
    lists.push_back({"opticals", "lantern", "", 1, 1, false, false, false, true});
    lists.push_back({"opticals", "lantern", "-neg", 1, 1, true});
    lists.push_back({"opticals", "lantern", "-frames", 1, 1, false, true});
    for (const char* edit : {"weir-old-r1", "weir-old-r2", "weir-new-r1", "weir-new-r2"})
        lists.push_back({"recut", edit, ""});
    return lists;
}

std::vector<std::string> extensions_of(const List& list) {
    if (!list.single_layer) return {".cdb", ".txt"};
    return {".cdb", ".txt", ".sl1", ".sl2", ".sl3", ".sl4"};
}

std::string examples_folder() { return project_folder() + "/examples"; }

std::string expected_stem(const List& list) {
    return examples_folder() + "/" + list.folder + "/expected/" + list.name();
}

void pin_surroundings(const std::string& work_folder, bool by_timecode) {
    ::setenv("SOURCE_DATE_EPOCH", "1790000000", 1);
    ::setenv("TZ", "UTC", 1);
    ::tzset();
    embedded::set_work_directory(work_folder);
    embedded::set_host_setting("allow_auto_unrender", 1);
    embedded::set_host_setting("audio_cutlist_24P", 0);
    embedded::set_host_setting("audio_cutlist_by_timecode_test", by_timecode ? 1 : 0);
}

bool in_own_process(const std::function<bool()>& work) {
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0) ::_exit(work() ? 0 : 1);
    int status = 0;
    return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

bool make_list(const List& list, const std::string& stem) {
    return in_own_process([&] { return make_here(list, stem); });
}

std::string complaints_about(const List& list) {
    const formats::ReadResult read = formats::read_otio(edit_path(list), {});
    std::string complaints = read.error;
    for (const std::string& warning : read.warnings)
        complaints += warning + "\n";
    return complaints;
}

} // namespace golden
