#include "tests/tool/cut_table.h"

#include <cstdio>

namespace {

constexpr int column_count = 54;

// The numbers of the columns that are filled here.
enum Column {
    column_event = 0,
    column_optical_record = 1,
    column_optical_ref = 2,
    column_track = 3,
    column_edit_in = 7,
    column_edit_out = 8,
    column_shot_name = 12,
    column_cam_reel = 16,
    column_key_in = 17,
    column_key_out = 18,
    column_key_missing = 19,
    column_ink_in = 20,
    column_key_type = 22,
    column_ink_type = 23,
    column_speed = 31,
    column_special = 33,
    column_tc_in = 35,
    column_tc_out = 36,
    column_tc_type = 37,
    column_scene = 47,
    column_take = 48,
};

std::string timecode(int frame) {
    char text[16];
    std::snprintf(text, sizeof text, "01:%02d:%02d:%02d", frame / 1440 % 60, frame / 24 % 60, frame % 24);
    return text;
}

std::string joined(const std::vector<std::string>& fields) {
    std::string line = fields.front();
    for (std::size_t i = 1; i < fields.size(); ++i)
        line += '\t' + fields[i];
    return line + '\n';
}

std::string row(const CutShot& shot, int number, int at) {
    std::vector<std::string> fields(column_count);
    fields[column_event] = std::to_string(number);
    fields[column_optical_record] = fields[column_optical_ref] = fields[column_special] = "0";
    fields[column_track] = "1";
    fields[column_edit_in] = std::to_string(at);
    fields[column_edit_out] = std::to_string(at + shot.length);
    fields[column_shot_name] = shot.name;
    fields[column_cam_reel] = "A" + shot.strip.substr(shot.strip.size() - 3);
    fields[column_key_in] = key_text(shot.strip, shot.frame);
    fields[column_key_out] = key_text(shot.strip, shot.frame + shot.length);
    fields[column_key_missing] = "0";
    fields[column_key_type] = "35mm-4p";
    fields[column_ink_in] = shot.ink;
    fields[column_ink_type] = shot.ink.empty() ? "" : "35mm-4p-ink";
    fields[column_speed] = shot.speed;
    fields[column_tc_in] = timecode(shot.frame);
    fields[column_tc_out] = timecode(shot.frame + shot.length);
    fields[column_tc_type] = "24fps";
    fields[column_scene] = shot.scene;
    fields[column_take] = shot.take;
    return joined(fields);
}

std::string header(const std::map<std::string, std::string>& parameters) {
    std::map<std::string, std::string> values{{"CUTDB", "Rev 22"},         {"cutlist_type", "cutting-copy"},
                                              {"channel", "V00"},          {"edit_vidtc_start", "01:00:00:00"},
                                              {"edit_vidtc_std", "24fps"}, {"film label_std", "35mm-4p"},
                                              {"mixed_kc_standard", "0"}};
    for (const auto& [name, value] : parameters)
        values[name] = value;
    std::string text;
    for (const auto& [name, value] : values)
        text += name + '=' + value + '\n';
    return text;
}

std::string columns() {
    std::vector<std::string> names(column_count), types(column_count, "a");
    for (std::size_t i = 0; i < names.size(); ++i)
        names[i] = "c" + std::to_string(i);
    return joined(names) + joined(types);
}

} // namespace

std::string key_text(const std::string& strip, int frame) {
    char count[16];
    std::snprintf(count, sizeof count, "%04d+%02d", frame / 16, frame % 16);
    return strip + count;
}

std::string cut_table(const std::vector<CutShot>& shots, const std::map<std::string, std::string>& parameters) {
    std::string text = "%recdb 1\n" + header(parameters) + '\n' + columns();
    int number = 0, at = 0;
    for (const CutShot& shot : shots) {
        text += row(shot, ++number, at);
        at += shot.length;
    }
    return text;
}
