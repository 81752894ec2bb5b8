// The film that has to be found for the new cut, in the order of the steps that put it in.

#include "base/code_text.h"
#include "base/messages.h"
#include "base/table_order.h"
#include "changelist/change_reports.h"
#include "changelist/changelist_options.h"
#include "changelist/lists/change_units.h"
#include "changelist/lists/list_section.h"
#include "changelist/lists/listed_row.h"
#include "host/settings.h"
#include "reports/report.h"

namespace {

constexpr int scene_take_key_stops[] = {1, 22, 43, 59, 79, 95, 0};
constexpr int scene_take_stops[] = {1, 22, 43, 59, 75, 0};
constexpr int name_key_stops[] = {1, 22, 38, 58, 74, 0};
constexpr int name_stops[] = {1, 22, 38, 54, 0};

constexpr ListLayouts layouts = {
    {scene_take_key_stops, "\t        Scene\t         Take\t  First/Last\t      First/Last\t      Length\t  Step",
     "\t\t\t     Clip TC\t           Key"},
    {scene_take_stops, "\t        Scene\t         Take\t  First/Last\t      Length\t  Step", "\t\t\t     Clip TC"},
    {name_key_stops, "\t         Name\t  First/Last\t      First/Last\t       Length\t  Step",
     "\t\t     Clip TC\t           Key"},
    {name_stops, "\t         Name\t  First/Last\t       Length\t  Step", "\t\t     Clip TC"},
};

void show_new_material(chgdb& changes) {
    show_all(changes);
    tag_kind(changes, "I", 0);
    changes.set_show_tags_only(1);
    sort_by(changes, {hf_event2, -1});
}

// In timecode the length counts as the clip does, not as the sequence.
LengthText material_length(const ChangeUnits& units, LabelPoint clip_in, int frames) {
    if (units.unit() != LengthUnit::timecode) return units.length(frames);
    clip_in.set_sample(frames);
    return {"", clip_in.get_string()};
}

void print_material(report& out, const ListedRow& row, const ChangeUnits& units) {
    const ChangelistOptions& options = changelist_options();
    const LabelPoint clip_in = row.timecode(hf_prim_tc_in);
    row.print_shot(out);
    out.print("\t %s", point_text(clip_in).text);
    if (options.show_edge_codes) out.print("\t %s", point_text(row.key(hf_keycode_in)).text);
    out.print("\t %s\t %5d\n", material_length(units, clip_in, row.number(hf_edit_length)).text, row.number(hf_event2));

    out.print(options.use_scene_take ? "\t\t\t %s" : "\t\t %s", point_text(row.timecode(hf_prim_tc_out)).text);
    if (options.show_edge_codes) out.print("\t %s", point_text(row.key(hf_keycode_out)).text);
    out.print("\n");
}

} // namespace

void write_new_material(report& out, chgdb& changes, LoggerHandle& log) {
    say(log, text_writing_new_material);
    start_section(out, "NEW MATERIAL:\n\n", chosen_heads(layouts));
    show_new_material(changes);
    if (changes.get_num_records() == 0) {
        out.print("\tThere are no new inserts\n");
        return;
    }
    const RowLabels labels(changes.film_std());
    const ChangeUnits units(changes.film_std());
    for (unsigned index = 0; const dbrecord* record = changes.get_record(index); ++index)
        print_material(out, ListedRow(*record, labels), units);
    out.plain_rule();
}
