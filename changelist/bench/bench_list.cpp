#include "changelist/bench/bench_list.h"

#include "changelist/changelist_options.h"
#include "changelist/lists/change_units.h"
#include "changelist/lists/list_section.h"
#include "changelist/run_state.h"
#include "host/fixed_text.h"
#include "reports/cutdb.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace {

constexpr std::size_t name_chars = 16;

constexpr int bench_stops[] = {1, 8, 14, 24, 46, 56, 77, 94, 112, 0};

constexpr ListHeads shot_heads = {
    bench_stops,
    "\t  Step\t Reel\t      At\t Do This\t  Length\t First/Last KEY\t First/Last INK\t Shot Name\t    Reel",
    "\t\t\t    Feet\t Camera Roll\t    Feet\t\t\t\t  Length"};
constexpr ListHeads take_heads = {
    bench_stops, "\t  Step\t Reel\t      At\t Do This\t  Length\t First/Last KEY\t First/Last INK\t Scene\t    Reel",
    "\t\t\t    Feet\t Camera Roll\t    Feet\t\t\t Take\t  Length"};

struct Words {
    char text[80] = "";
};

ListText feet(int frames) { return foot_text(label_t_to_foot_label_t(change_run().old_side.film_std), frames); }

Words action(const change_step& step) {
    Words words;
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

/// A text of somebody else's, which may hold line ends and tabs.
Words on_one_line(std::string_view text) {
    Words words;
    put_text(words.text, text);
    for (char& c : words.text) {
        if (c != '\0' && static_cast<unsigned char>(c) < ' ') c = ' ';
    }
    return words;
}

Words camera_roll(const change_step& step) { return on_one_line(is_real_reel(step.cam_reel) ? step.cam_reel : ""); }

LightweightString<char> short_name(const change_step& step) {
    return toUTF8(LightweightString<wchar_t>(step.shot_name.view().substr(0, name_chars)));
}

/// What the film is called: on the first line its scene or its name, on the second its take.
struct Names {
    Words first;
    Words second;
};

Names names_of(const change_step& step) {
    if (!changelist_options().use_scene_take) return {on_one_line(short_name(step).view()), {}};
    return {on_one_line(std::string_view(step.scene).substr(0, name_chars)),
            on_one_line(std::string_view(step.take).substr(0, name_chars))};
}

/// A key number that only tells film apart isn't one to print.
Words key_words(const LabelPoint& key, int missing) { return on_one_line(missing ? "no key" : point_text(key).text); }

void print_step(report& out, const change_step& step) {
    const Names names = names_of(step);
    out.need_lines(2);
    out.print("\t %5d\t %4d\t %07d\t %s\t %07d", step.step, step.reel, step.position, action(step).text, step.length);
    out.print("\t %s\t %s\t %s\t %07d\n", key_words(step.first_key, step.first_key_missing).text,
              point_text(step.first_ink).text, names.first.text, step.reel_length);
    out.print("\t\t\t %s\t %s\t %s", feet(step.position).text, camera_roll(step).text, feet(step.length).text);
    out.print("\t %s\t %s\t %s\t %s\n", key_words(step.last_key, step.last_key_missing).text,
              point_text(step.last_ink).text, names.second.text, feet(step.reel_length).text);
}

/// What the plan was to save, and how each way of counting it is told.
struct CostWords {
    bench_goal goal;
    const char* heading;
    const char* name;
    std::int64_t change_cost::*cost;
};

constexpr CostWords cost_words[] = {{bench_fewest_moves, "FEWEST MOVES", "Moves", &change_cost::moves},
                                    {bench_fewest_splices, "FEWEST SPLICES", "Splices", &change_cost::splices},
                                    {bench_least_film, "LEAST FILM", "Frames", &change_cost::frames}};

int shown(std::int64_t frames) { return static_cast<int>(std::clamp<std::int64_t>(frames, 0, INT32_MAX)); }

void print_costs(report& out, const KeptRun& run, bench_goal goal) {
    constexpr int lines = 6;
    out.need_lines(lines);
    for (const CostWords& words : cost_words)
        if (words.goal == goal) out.print("\n\t%-16s    THIS LIST    DELETE AND INSERT\n", words.heading);
    for (const CostWords& words : cost_words)
        out.print("\t%-16s %12d %20d\n", words.name, shown(run.bench_cost.*words.cost),
                  shown(run.simple_cost.*words.cost));
    out.print("\t%-16s %12s %20s\n", "Feet", feet(shown(run.bench_cost.frames)).text,
              feet(shown(run.simple_cost.frames)).text);
}

} // namespace

void write_bench_list(report& out, const KeptRun& run) {
    start_section(out, "BENCH LIST:\n\n", changelist_options().use_scene_take ? take_heads : shot_heads);
    const bench_goal goal = changelist_options().goal();
    if (run.bench.empty()) out.print("\tTHERE ARE NO CHANGES TO MAKE\n");
    for (const change_step& step : run.bench)
        print_step(out, step);
    if (!run.bench.empty()) out.plain_rule();
    if (goal != bench_usual) print_costs(out, run, goal);
}
