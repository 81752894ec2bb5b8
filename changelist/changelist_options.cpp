#include "changelist/changelist_options.h"

#include "host/settings.h"
#include "quillbrook/changelist.h"

#include <iterator>

namespace {

/// One key of the block and the member that it fills.
struct OptionField {
    const char* name;
    int ChangelistOptions::*list = nullptr;
    unsigned ChangelistOptions::*number = nullptr;
    bool ChangelistOptions::*flag = nullptr;
    Cookie ChangelistOptions::*cookie = nullptr;
};

constexpr const char* units_key = "chg_lengthunits";
constexpr const char* bench_key = "chg_bench_list";
constexpr const char* cost_key = "chg_bench_cost";

// In the order in which the block is read.
constexpr OptionField option_fields[] = {
    {.name = "chg_summary_list", .list = &ChangelistOptions::summary_list},
    {.name = "chg_pull_list", .list = &ChangelistOptions::pull_list},
    {.name = "chg_verbose_list", .list = &ChangelistOptions::verbose_list},
    {.name = "chg_dissolve_list", .list = &ChangelistOptions::dissolve_list},
    {.name = bench_key, .list = &ChangelistOptions::bench_list},
    {.name = cost_key},
    {.name = "chg_useshotscenetake", .number = &ChangelistOptions::use_scene_take},
    {.name = "chg_showedgecodes", .flag = &ChangelistOptions::show_edge_codes},
    {.name = units_key},
    {.name = "CHAN_TYPE", .number = &ChangelistOptions::chan_type},
    {.name = "CHAN_NUM", .number = &ChangelistOptions::chan_num},
    {.name = "old_cookie", .cookie = &ChangelistOptions::old_cookie},
    {.name = "new_cookie", .cookie = &ChangelistOptions::new_cookie},
};

void read_field(const configb& block, const OptionField& field, ChangelistOptions& options) {
    if (field.list) block.in(field.name, options.*field.list);
    if (field.number) block.in(field.name, options.*field.number);
    if (field.flag) block.in(field.name, options.*field.flag);
    if (field.cookie) {
        LightweightString<char> text;
        if (block.in(field.name, text) != -1) options.*field.cookie = Cookie(text.c_str(), false);
    }
}

// The units, the bench list and its cost start afresh with every run. Hosts that don't know of the bench list never
// turn it off: left on, it would be a list that nobody asked for.
void start_afresh(const configb* block, ChangelistOptions& options) {
    options.bench_list = 0;
    options.bench_cost = 0;
    if (block) block->in(bench_key, options.bench_list);
    if (block) block->in(cost_key, options.bench_cost);
    unsigned units = 0;
    if (block) block->in(units_key, units);
    options.units_frames = units == 0;
    options.units_feet = units == 1;
    options.units_timecode = units > 1;
}

} // namespace

ChangelistOptions& changelist_options() {
    static ChangelistOptions options;
    return options;
}

void read_changelist_options(const configb* block) {
    ChangelistOptions& options = changelist_options();
    if (block) {
        for (const OptionField& field : option_fields)
            read_field(*block, field, options);
    }
    start_afresh(block, options);
}

const changelist_option_key* changelist_option_keys() {
    struct KeyTable {
        changelist_option_key keys[std::size(option_fields) + 1] = {};
        KeyTable() {
            for (std::size_t i = 0; i < std::size(option_fields); ++i)
                keys[i] = {option_fields[i].name, option_fields[i].cookie != nullptr, option_fields[i].list != nullptr};
        }
    };
    static const KeyTable table;
    return table.keys;
}
