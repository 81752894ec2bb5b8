#include "documents/change_lists.h"

#include "documents/change_drawing.h"
#include "documents/film_cells.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <set>
#include <tuple>
#include <utility>

namespace documents {
namespace {

Units units_of(const ChangeFilm& film) { return {film.film, film.frames}; }

std::string do_text(const change_step& step) {
    const std::string other = std::to_string(step.other_step);
    switch (step.action) {
    case change_pick_up:
        return "Pick up" + (step.other_step > 0 ? " to step " + other : "");
    case change_put_down:
        return "Put down" + (step.other_step > 0 ? " from " + other : "");
    case change_insert:
        return "Insert new";
    default:
        return "Delete";
    }
}

constexpr const char* action_words[] = {"delete", "pick up", "put down", "insert"};

Mark mark_of(const change_step& step) {
    return step.action == change_insert ? Mark::fresh : step.action == change_remove ? Mark::out : Mark::moved;
}

Column do_column() { return {"do", "Do this", Align::left, Wrap::words, {{"action"}, {"other_step"}}}; }

Cell do_cell(const change_step& step) {
    const Value other = step.other_step > 0 ? Value(std::int64_t{step.other_step}) : Value();
    return {{{strong(do_text(step))}}, {Value(std::string(action_words[step.action])), other}};
}

Cell step_shot_cell(const change_step& step) {
    film::Strip strip;
    strip.name = std::string(toUTF8(step.shot_name).view());
    strip.scene = step.scene;
    strip.take = step.take;
    return shot_cell(strip);
}

Cell step_key_cell(const change_step& step) {
    return label_cell(step.first_key, step.last_key, step.first_key_missing != 0, step.last_key_missing != 0);
}

/// Words as "__BLACK" stand in place of rolls.
std::string roll_of(const change_step& step) {
    const std::string roll = step.cam_reel;
    return roll.compare(0, 2, "__") == 0 ? "" : roll;
}

std::optional<std::int64_t> known(std::int32_t frames) {
    return frames < 0 ? std::nullopt : std::optional<std::int64_t>(frames);
}

Cell reel_length_cell(const Units& units, const change_step& step) {
    const std::optional<std::int64_t> length = known(step.reel_length);
    return length ? cell(mono(units.position(*length)), *length) : blank_cell();
}

std::vector<Column> step_columns() {
    return {number_column("step", "Step"),
            do_column(),
            number_column("reel", "Reel"),
            position_column("position", "At"),
            length_column("length", "Length"),
            label_column(),
            shot_column(),
            word_column("roll", "Roll"),
            position_column("reel_length", "Reel is then")};
}

Row step_row(const Units& units, const change_step& step, const std::string& list) {
    Row row;
    row.id = list + '-' + std::to_string(step.step);
    row.film = (list == "bench" ? "step-" : "change-") + std::to_string(step.step);
    row.tick = true;
    row.marks = {mark_of(step)};
    row.cells = {number_cell(step.step),
                 do_cell(step),
                 number_cell(step.reel),
                 position_cell(units, step.position),
                 length_cell(units, step.length),
                 step_key_cell(step),
                 step_shot_cell(step),
                 word_cell(roll_of(step)),
                 reel_length_cell(units, step)};
    return row;
}

std::int64_t length_of(const std::vector<CutFilmPtr>& reels) {
    std::int64_t length = 0;
    for (const CutFilmPtr& reel : reels)
        length += reel->length();
    return length;
}

std::int64_t frames_of(const std::vector<change_step>& steps, change_action action) {
    std::int64_t frames = 0;
    for (const change_step& step : steps)
        if (step.action == action) frames += step.length;
    return frames;
}

std::vector<Fact> facts_of(const ChangeFilm& film, const std::vector<change_step>& steps) {
    const Units units = units_of(film);
    return {{"Old length", {mono(units.position(length_of(film.old_reels)), Weight::strong)}},
            {"New length", {mono(units.position(length_of(film.new_reels)), Weight::strong)}},
            {"New film", {mono(units.length(frames_of(steps, change_insert)), Weight::strong)}},
            {"Steps", {strong(std::to_string(steps.size()))}}};
}

List begun(const ChangeFilm& film, const char* id, const char* title, const std::vector<change_step>& steps) {
    List list;
    list.id = id;
    list.title = title;
    list.facts = facts_of(film, steps);
    list.counting = units_of(film).counting();
    list.parts.resize(1);
    list.parts[0].id = "all";
    return list;
}

/// Film is pulled and put away by its number, and what has none by its name.
std::vector<change_step> sorted_film(const std::vector<change_step>& steps, change_action action) {
    std::vector<change_step> chosen;
    std::copy_if(steps.begin(), steps.end(), std::back_inserter(chosen),
                 [action](const change_step& step) { return step.action == action; });
    const auto place = [](const change_step& step) {
        return std::tuple(step.first_key_missing != 0, std::string(step.first_key.get_prefix()), step.first_key.sample,
                          step.step);
    };
    std::sort(chosen.begin(), chosen.end(),
              [&place](const change_step& a, const change_step& b) { return place(a) < place(b); });
    return chosen;
}

/// Drawings carry the steps of the bench list.
std::string film_of(const ChangeFilm& film, const change_step& step) {
    return (film.bench.empty() ? "change-" : "step-") + std::to_string(step.step);
}

DrawingPtr kept(Drawing drawing) { return std::make_shared<const Drawing>(std::move(drawing)); }

/// The bench list takes film out once where the detailed list may name it in pieces.
const std::vector<change_step>& film_steps(const ChangeFilm& film) {
    return film.bench.empty() ? film.changes : film.bench;
}

Row total_of(const Units& units, const std::vector<change_step>& steps, const std::string& list, std::size_t before) {
    std::int64_t frames = 0;
    for (const change_step& step : steps)
        frames += step.length;
    Row total;
    total.id = list + "-total";
    total.cells.resize(before);
    total.cells.front().lines = {{strong(counted(static_cast<std::int64_t>(steps.size()), "piece", "pieces"))}};
    total.cells.push_back(length_cell(units, frames));
    return total;
}

std::vector<Column> film_columns(const char* step, Column reel, Column place) {
    return {word_column("roll", "Roll"),
            shot_column(),
            length_column("length", "Length"),
            label_column(),
            number_column("step", step),
            std::move(reel),
            std::move(place)};
}

/// The film of all steps of a kind; `place_of` makes the last two cells of a row.
template <class PlaceOf>
void fill_with_film(const ChangeFilm& film, change_action action, List& list, const PlaceOf& place_of) {
    const Units units = units_of(film);
    const std::vector<change_step> steps = sorted_film(film_steps(film), action);
    std::vector<Row>& rows = list.parts[0].rows;
    for (const change_step& step : steps) {
        auto [reel, place] = place_of(step);
        Row row;
        row.id = list.id + '-' + std::to_string(rows.size() + 1);
        row.film = film_of(film, step);
        row.tick = true;
        row.marks = {mark_of(step)};
        row.cells = vector_of<Cell>(word_cell(roll_of(step), Weight::strong), step_shot_cell(step),
                                    length_cell(units, step.length), step_key_cell(step), number_cell(step.step),
                                    std::move(reel), std::move(place));
        rows.push_back(std::move(row));
    }
    list.totals = {total_of(units, steps, list.id, 2)};
}

Part* part_of_reel(List& list, std::int32_t reel) {
    const std::string id = "reel-" + std::to_string(reel);
    const auto part =
        std::find_if(list.parts.begin(), list.parts.end(), [&id](const Part& one) { return one.id == id; });
    return part == list.parts.end() ? nullptr : &*part;
}

/// The reel ahead of each step and behind it.
void draw_steps(const ChangeFilm& film, List& list) {
    constexpr std::size_t most = 100;
    if (film.bench.size() > most) {
        list.notes.push_back({Mark::moved, "Without pictures",
                              "There are more than " + std::to_string(most) + " steps.", "", "not-drawn"});
        return;
    }
    std::vector<Drawing> drawings = step_drawings({film.old_reels, film.new_reels, film.bench});
    for (std::size_t i = 0; i < drawings.size() && i < film.bench.size(); ++i)
        if (Part* part = part_of_reel(list, film.bench[i].reel)) part->drawings.push_back(kept(std::move(drawings[i])));
}

} // namespace

ChangeFilm changes_of_last_run(std::vector<CutFilmPtr> old_reels, std::vector<CutFilmPtr> new_reels, bool frames) {
    ChangeFilm film;
    film.title = new_reels.front()->title;
    film.title.reel.clear();
    const std::string& old_date = old_reels.front()->title.cut_date;
    if (!old_date.empty() && !film.title.cut_date.empty())
        film.title.cut_date = old_date + " to cut of " + film.title.cut_date;
    film.film = new_reels.front()->film;
    film.frames = frames;
    for (const auto& [list, steps] :
         {std::pair(detailed_changes, &film.changes), std::pair(bench_changes, &film.bench)}) {
        unsigned count = 0;
        const change_step* const first = change_steps(list, count);
        steps->assign(first, first + count);
    }
    film.old_reels = std::move(old_reels);
    film.new_reels = std::move(new_reels);
    return film;
}

List change_list_of(const ChangeFilm& film) {
    List list = begun(film, "changes", "Changes", film.changes);
    list.counting = "Positions are of the reel as it stands when the step begins. " + list.counting;
    list.columns = step_columns();
    for (const change_step& step : film.changes)
        list.parts[0].rows.push_back(step_row(units_of(film), step, list.id));
    show_where_filled(list, "reel_length");
    list.empty = "Nothing has changed.";
    return list;
}

List bench_list_of(const ChangeFilm& film) {
    List list = begun(film, "bench", "Bench list", film.bench);
    list.picture_first = true;
    list.counting = "Positions are of the reel as it stands when the step begins. " + list.counting;
    list.columns = step_columns();
    for (const change_step& step : film.bench)
        list.parts[0].rows.push_back(step_row(units_of(film), step, list.id));
    show_where_filled(list, "reel_length");
    for (Drawing& drawing : change_drawings({film.old_reels, film.new_reels, film.bench}))
        list.drawings.push_back(kept(std::move(drawing)));
    list.empty = "There is nothing to do.";
    return list;
}

List change_pull_of(const ChangeFilm& film) {
    const Units units = units_of(film);
    List list = begun(film, "change-pull", "New film to pull", film_steps(film));
    list.counting = "First and last frame both belong to the piece. " + list.counting;
    list.columns = film_columns("For step", number_column("reel", "Reel"), position_column("position", "At"));
    list.empty = "No film is new.";
    fill_with_film(film, change_insert, list, [&units](const change_step& step) {
        return std::pair(number_cell(step.reel), position_cell(units, step.position));
    });
    return list;
}

List discard_list_of(const ChangeFilm& film) {
    const Units units = units_of(film);
    List list = begun(film, "discard", "Film that comes out", film_steps(film));
    list.counting = "First and last frame both belong to the piece; old places count from the start of their reel. " +
                    list.counting;
    list.columns =
        film_columns("By step", number_column("old_reel", "Old reel"), position_column("old_start", "Old place"));
    list.empty = "No film comes out.";
    fill_with_film(film, change_remove, list, [&units](const change_step& step) {
        return std::pair(event_cell(step.old_reel),
                         step.old_reel > 0 ? position_cell(units, step.old_frame) : blank_cell());
    });
    return list;
}

List transition_list_of(const ChangeFilm& film) {
    const Units units = units_of(film);
    List list = begun(film, "transitions", "Transitions of the new cut", film.changes);
    list.counting = "Positions count from the start of their reel. " + list.counting;
    Column from = key_column(), to = key_column();
    from.title = "From";
    from.fields = {{"from_first"}, {"from_last"}, {"from_known"}, {"from_tolerance", "frames"}};
    to.key = "to";
    to.title = "To";
    to.fields = {{"to_first"}, {"to_last"}, {"to_known"}, {"to_tolerance", "frames"}};
    list.columns = {number_column("reel", "Reel"),
                    position_column("start", "At"),
                    word_column("kind", "Transition"),
                    length_column("length", "Length"),
                    from,
                    to};
    list.empty = "There are no transitions.";
    for (std::size_t reel = 0; reel < film.new_reels.size(); ++reel)
        for (const Joint& joint : film.new_reels[reel]->joints) {
            if (joint.layer != 0) continue;
            const std::int64_t end = joint.start + joint.length;
            Row row;
            row.id = list.id + '-' + std::to_string(list.parts[0].rows.size() + 1);
            row.tick = true;
            row.cells = {number_cell(static_cast<std::int64_t>(reel) + 1),
                         position_cell(units, joint.start),
                         word_cell(joint.name, Weight::strong),
                         length_cell(units, joint.length),
                         key_cell(runs_of(*joint.before, joint.start, end), joint.before->black()),
                         key_cell(runs_of(*joint.behind, joint.start, end), joint.behind->black())};
            list.parts[0].rows.push_back(std::move(row));
        }
    return list;
}

List reel_list_of(const ChangeFilm& film) {
    const Units units = units_of(film);
    List list = begun(film, "reels", "Reel lengths", film.bench);
    list.columns = {number_column("step", "After step"), do_column(), length_column("length", "Length"),
                    position_column("reel_length", "Reel is then")};
    list.empty = "No reel changes.";
    list.parts.clear();
    std::set<std::int32_t> reels;
    for (const change_step& step : film.bench)
        reels.insert(step.reel);
    for (const std::int32_t reel : reels) {
        Part part;
        part.id = "reel-" + std::to_string(reel);
        part.title = "Reel " + std::to_string(reel);
        const auto place = static_cast<std::size_t>(reel - 1);
        const auto length = [&units, place](const std::vector<CutFilmPtr>& side) {
            return units.position(place < side.size() ? side[place]->length() : 0);
        };
        part.about = "old " + length(film.old_reels) + ", new " + length(film.new_reels);
        for (const change_step& step : film.bench) {
            if (step.reel != reel) continue;
            Row row;
            row.id = list.id + '-' + std::to_string(step.step);
            row.tick = true;
            row.cells = {number_cell(step.step), do_cell(step), length_cell(units, step.length),
                         reel_length_cell(units, step)};
            part.rows.push_back(std::move(row));
        }
        list.parts.push_back(std::move(part));
    }
    draw_steps(film, list);
    return list;
}

} // namespace documents
