#include "changelist/bench_list.h"

#include "changelist/change_units.h"
#include "changelist/changelist_options.h"
#include "changelist/list_section.h"
#include "changelist/run_state.h"
#include "host/fixed_text.h"

#include <cstdio>
#include <string_view>

namespace {

constexpr std::size_t name_chars = 16;

constexpr int bench_stops[] = {1, 8, 14, 24, 46, 56, 77, 94, 112, 0};

constexpr ListHeads shot_heads = {
    bench_stops,
    "\t  Step\t Reel\t      At\t Do This\t  Length\t First/Last KEY\t First/Last INK\t Shot Name\t    Reel",
    "\t\t\t    Feet\t\t    Feet\t\t\t\t  Length"};
constexpr ListHeads take_heads = {
    bench_stops, "\t  Step\t Reel\t      At\t Do This\t  Length\t First/Last KEY\t First/Last INK\t Scene\t    Reel",
    "\t\t\t    Feet\t\t    Feet\t\t\t Take\t  Length"};

ListText feet(int frames) { return foot_text(label_t_to_foot_label_t(change_run().old_side.film_std), frames); }

ListText action(const change_step& step) {
    ListText words;
    switch (step.action) {
    case change_remove:
        put_text(words.text, "DELETE");
        break;
    case change_pick_up:
        std::snprintf(words.text, sizeof words.text, "PICK UP  TO %d", step.other_step);
        break;
    case change_put_down:
        std::snprintf(words.text, sizeof words.text, "PUT DOWN FROM %d", step.other_step);
        break;
    case change_insert:
        put_text(words.text, "INSERT");
        break;
    }
    return words;
}

LightweightString<char> short_name(const change_step& step) {
    return toUTF8(LightweightString<wchar_t>(step.shot_name.view().substr(0, name_chars)));
}

/// What the film is called: on the first line its scene or its name, on the second its take.
struct Names {
    LightweightString<char> first;
    LightweightString<char> second;
};

Names names_of(const change_step& step) {
    if (!changelist_options().use_scene_take) return {short_name(step), {}};
    return {LightweightString<char>(std::string_view(step.scene).substr(0, name_chars)),
            LightweightString<char>(std::string_view(step.take).substr(0, name_chars))};
}

void print_step(report& out, const change_step& step) {
    const Names names = names_of(step);
    out.need_lines(2);
    out.print("\t %5d\t %4d\t %07d\t %s\t %07d", step.step, step.reel, step.position, action(step).text, step.length);
    out.print("\t %s\t %s\t %s\t %07d\n", point_text(step.first_key).text, point_text(step.first_ink).text,
              names.first.c_str(), step.reel_length);
    out.print("\t\t\t %s\t\t %s", feet(step.position).text, feet(step.length).text);
    out.print("\t %s\t %s\t %s\t %s\n", point_text(step.last_key).text, point_text(step.last_ink).text,
              names.second.c_str(), feet(step.reel_length).text);
}

} // namespace

void write_bench_list(report& out, const KeptRun& run) {
    start_section(out, "BENCH LIST:\n\n", changelist_options().use_scene_take ? take_heads : shot_heads);
    if (run.bench.empty()) {
        out.print("\tTHERE ARE NO CHANGES TO MAKE\n");
        return;
    }
    for (const change_step& step : run.bench)
        print_step(out, step);
    out.plain_rule();
}
