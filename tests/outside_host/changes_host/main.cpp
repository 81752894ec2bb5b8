// A whole host for changelists and nothing else: it has no edits, and leaves undefined what only they need. Two cuts
// are put down as tables, the second lacking the middle shot of the first.

#include "changes_host/records.h"
#include "changes_host/services.h"

#include <host/recdb.h>
#include <quillbrook/changelist.h>

#include <cstdio>
#include <iostream>

namespace {

class Quiet : public LoggerHandle {
public:
    void message(const LightweightString<wchar_t>&, int) override {}
};

/// Numbers by key; every other one is absent.
class Options : public configb {
public:
    int in(const LightweightString<char>& key, int& value) const override {
        if (key.view() != "chg_verbose_list" && key.view() != "chg_summary_list") return -1;
        value = 1;
        return 0;
    }
    int in(const LightweightString<char>&, unsigned int&) const override { return -1; }
    int in(const LightweightString<char>&, bool&) const override { return -1; }
    int in(const LightweightString<char>&, LightweightString<char>&) const override { return -1; }
    int in(const LightweightString<char>&, char*) const override { return -1; }
    int in(const LightweightString<char>&, strp_field&) const override { return -1; }
};

/// Places of a cutlist's columns; the library reads them by number.
enum column : int {
    event = 0,
    track = 3,
    edit_in = 7,
    edit_out = 8,
    shot_name = 12,
    cam_reel = 16,
    keycode_in = 17,
    keycode_out = 18,
    keycode_missing = 19,
    key_type = 22,
    speed = 31,
    special = 33,
    all_columns = 54,
};

/// Forty frames of a roll from each of some frames on.
void put_down(const wchar_t* name, const std::vector<int>& first_frames) {
    DBFieldDesc columns[all_columns + 1];
    for (int i = 0; i < all_columns; ++i)
        columns[i] = {("column " + std::to_string(i)).c_str(), DBFieldTypes::text};
    recdb table(columns);
    for (const auto& [key, value] :
         {std::pair("CUTDB", "Rev 22"), std::pair("channel", "V00"), std::pair("cutlist_type", "cutting-copy"),
          std::pair("mixed_kc_standard", "0"), std::pair("film label_std", "35mm-4p"),
          std::pair("edit_vidtc_std", "24fps"), std::pair("edit_vidtc_start", "01:00:00:00")})
        table.add_param(key, value);
    int place = 0;
    for (const int frame : first_frames) {
        dbrecord& row = *table.get_record(static_cast<unsigned>(table.add_records(1)));
        LabelPoint key(0, label_key_35mm_4p);
        key.set_prefix("KJ123456");
        key.set_sample(4 * frame);
        row.set_field(keycode_in, key.get_string(), true);
        key.set_sample(4 * (frame + 40));
        row.set_field(keycode_out, key.get_string(), true);
        row.set_field(event, place / 40 + 1);
        row.set_field(track, 1);
        row.set_field(edit_in, place);
        row.set_field(edit_out, place += 40);
        row.set_field(shot_name, "shot", true);
        row.set_field(cam_reel, "A001", true);
        row.set_field(keycode_missing, 0);
        row.set_field(key_type, "35mm-4p", true);
        row.set_field(speed, 1);
        row.set_field(special, 0);
    }
    table.set_filename(name);
    table.save_text();
}

bool fails(const char* what) {
    std::cerr << what << "\n" << report_bytes();
    return false;
}

bool lists_the_cut() {
    put_down(L"old.cdb", {0, 200, 400});
    put_down(L"new.cdb", {0, 400});
    changelist_reels reels{{L"old.cdb", L"new.cdb"}};
    Options options;
    Quiet logger;
    if (const char* error = mr_make_changelist(reels, L"changes.txt", &options, logger)) return fails(error);
    unsigned count = 0;
    const change_step* steps = change_steps(detailed_changes, count);
    if (count != 1 || steps->action != change_remove || steps->position != 40 || steps->length != 40)
        return fails("the steps aren't those of the cut");
    LabelPoint first = steps->first_key;
    if (std::string(first.get_string()) != "KJ1234560012+08") return fails(first.get_string());
    if (!prove_change_steps(detailed_changes).proved) return fails("the steps don't lead to the new cut");
    return report_bytes().find("KJ1234560012+08") != std::string::npos || fails("the report lacks the key number");
}

} // namespace

int main() {
    const bool listed = lists_the_cut();
    forget_tables();
    return listed ? 0 : 1;
}
