// Builds an edit in code, makes a cutlist of it in the folder of the first argument, compares that with itself, takes
// key numbers from a logging table of its own, and looks at the files.

#include <embedded/edit_builder.h>
#include <embedded/services.h>
#include <quillbrook/changelist.h>
#include <quillbrook/cutlist.h>
#include <quillbrook/keylog.h>
#include <quillbrook/logging_tables.h>

#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

namespace {

class PrintingLogger : public LoggerHandle {
public:
    void message(const LightweightString<wchar_t>& text, int level) override {
        std::cout << level << ": " << toUTF8(text).c_str() << '\n';
    }
};

embedded::SourceDescription camera_roll(const std::string& name, const std::string& key) {
    embedded::SourceDescription source;
    source.identity = "camera/" + name;
    source.name = name;
    source.reels[{1, 2}] = name;
    source.video_timecode = embedded::LabelDescription{label_tc_24, "00:00:00:00", {}, {}};
    source.key = embedded::LabelDescription{label_key_35mm_4p, key, {}, {}};
    return source;
}

void add_shot(embedded::EditBuilder& builder, int channel, embedded::SourceId source, int frames) {
    embedded::EventDescription event;
    event.source = source;
    event.duration = embedded::Fraction(frames, 24);
    event.label = "shot";
    builder.add_event(channel, event);
}

EditPtr build_edit() {
    embedded::EditDescription description;
    description.name = "Outside";
    description.rate = embedded::nearest_rate(24.0);
    embedded::EditBuilder builder(description);
    const int channel = builder.add_channel(1);
    const embedded::SourceId first = builder.add_source(camera_roll("A001", "KJ1234560100+00"));
    const embedded::SourceId second = builder.add_source(camera_roll("A002", "KJ6543210200+00"));
    add_shot(builder, channel, first, 48);
    add_shot(builder, channel, second, 36);
    return builder.finish();
}

std::string contents(const std::string& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

bool holds(const std::string& path, const char* text) {
    if (contents(path).find(text) != std::string::npos) return true;
    std::cerr << path << " lacks \"" << text << "\"\n";
    return false;
}

bool compare_with_itself(const std::string& stem, LoggerHandle& logger) {
    const auto wide = [](const std::string& text) { return fromUTF8(text.c_str(), -1); };
    embedded::settings_block options;
    options.set("chg_verbose_list", "1");
    changelist_reels reels{{wide(stem + ".cdb"), wide(stem + ".cdb")}};
    if (const char* error = mr_make_changelist(reels, wide(stem + "-changes.txt"), &options, logger)) {
        std::cerr << error << '\n';
        return false;
    }
    return prove_change_steps(detailed_changes).proved && holds(stem + "-changes.txt", "THERE ARE NO CHANGES TO MAKE");
}

/// A logging table of one shot, saved and read again.
bool make_log(const std::string& path) {
    const LightweightString<wchar_t> name = fromUTF8(path.c_str(), -1);
    filmdb log(L"rushes.txt", name);
    log.set_vid_std(edlstr_to_tv_standard("24fps"));
    log.set_film_std(gauge_35mm_4p);
    const auto row = static_cast<unsigned>(log.add_records(1));
    const std::pair<const char*, const char*> fields[] = {{"name", "12/3"},
                                                          {"reel", "A001"},
                                                          {"start time", "00:00:00:00"},
                                                          {"end time", "00:10:00:00"},
                                                          {"cam reel", "A77"},
                                                          {"start keycode", "KZ9876540500+00"}};
    for (const auto& [column, text] : fields)
        log.set_field(row, static_cast<unsigned>(log.get_fieldnum(column)), text);
    if (log.save_text() != 0) return false;
    const filmdb again(name);
    return again.get_valid() && again.get_num_records() == 1 && filmdb(again).get_num_records() == 1;
}

bool import_keylog(LoggerHandle& logger) {
    ftldb keylog(L"no such file", logger, {});
    return !keylog.get_valid() && *keylog.get_reelid() == 0;
}

bool list_by_log(const std::string& stem, LoggerHandle& logger) {
    embedded::settings_block options;
    options.set("log_file", stem + ".RDB");
    options.set("output_file", stem + "-logged.txt");
    const EditPtr edit = build_edit();
    return make_log(stem + ".RDB") && make_cutlist_from_edit(edit, logger, 1, &options, nullptr, false) &&
           holds(stem + "-logged.cdb", "KZ9876540500+00") && holds(stem + "-logged.cdb", "A77") && *filmDllVersionStr();
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const std::string stem = std::string(argv[1]) + "/outside";
    embedded::settings_block options;
    options.set("chan_type", "1");
    options.set("chan_num", "0");
    options.set("output_file", stem + ".txt");

    const EditPtr edit = build_edit();
    PrintingLogger logger;
    CueList* cues = embedded::EditBuilder::cues_of(edit);
    if (!make_cutlist_from_edit(edit, logger, 0, &options, cues, false)) return 1;
    const bool table = holds(stem + ".cdb", "edit_name=Outside") && holds(stem + ".cdb", "KJ1234560100+00");
    const bool report = holds(stem + ".txt", "OUTSIDE") && holds(stem + ".txt", "KJ654321");
    return table && report && compare_with_itself(stem, logger) && list_by_log(stem, logger) && import_keylog(logger)
               ? 0
               : 1;
}
