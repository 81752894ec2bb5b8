// The rolls that a cut uses, and its shots, each once.

#include "documents/cut_lists.h"
#include "documents/film_cells.h"

#include <map>
#include <set>

namespace documents {
namespace {

using film::Piece;

/// All uses of one roll or shot.
struct Gathered {
    const film::Strip* strip = nullptr;
    std::int64_t pieces = 0, film = 0, unknown = 0;
    std::set<std::string> tapes, scenes, rolls;
    std::vector<int> events;
};

using Name = std::vector<std::string>;

/// All film of a cut under the names that `name_of` gives its runs.
template <class NameOf> std::map<Name, Gathered> gathered(const CutFilm& cut, const NameOf& name_of) {
    std::map<Name, Gathered> all;
    for (const Piece& piece : cut.pieces) {
        if (piece.black()) continue;
        for (const FilmRun& run : runs_of(piece, piece.start, piece.end)) {
            Gathered& one = all[name_of(*run.strip)];
            if (!one.strip) one.strip = run.strip;
            const std::optional<std::int64_t> film = run.film_frames();
            ++one.pieces;
            one.film += film.value_or(0);
            one.unknown += film ? 0 : 1;
            one.tapes.insert(run.strip->rolls.tape);
            one.scenes.insert(run.strip->scene);
            one.rolls.insert(run.strip->rolls.listed);
            const int event = run.strip->event;
            if (event > 0 && (one.events.empty() || one.events.back() != event)) one.events.push_back(event);
        }
    }
    return all;
}

std::string joined(const std::set<std::string>& words) {
    return documents::joined(std::vector<std::string>(words.begin(), words.end()), ", ");
}

std::string joined(const std::vector<int>& numbers) {
    std::string text;
    for (const int number : numbers)
        text += (text.empty() ? "" : ", ") + std::to_string(number);
    return text;
}

Cell film_cell(const Units& units, const Gathered& one) {
    Cell made = length_cell(units, one.film);
    if (one.unknown > 0) made.lines.push_back({light("and " + std::to_string(one.unknown) + " of unknown length")});
    return made;
}

std::vector<Fact> facts_of_gathered(const CutFilm& cut, const std::map<Name, Gathered>& all, const char* what) {
    std::int64_t pieces = 0, film = 0;
    for (const auto& [name, one] : all) {
        pieces += one.pieces;
        film += one.film;
    }
    const Units units = units_of(cut);
    return {{what, {strong(std::to_string(all.size()))}},
            {"Pieces", {strong(std::to_string(pieces))}},
            {"Film", {mono(units.length(film), Weight::strong)}},
            {"Length of the reel", {mono(units.length(cut.length()))}}};
}

Row total_of(const Units& units, const std::map<Name, Gathered>& all, const std::string& id, std::size_t before) {
    std::int64_t pieces = 0, film = 0;
    for (const auto& [name, one] : all) {
        pieces += one.pieces;
        film += one.film;
    }
    Row total;
    total.id = id;
    total.cells.resize(before);
    total.cells.front().lines = {{strong("In all")}};
    total.cells.push_back(number_cell(pieces));
    total.cells.push_back(length_cell(units, film));
    return total;
}

/// What one of the two lists is, besides its rows.
struct GatheredKind {
    const char *id, *title, *what, *counting;
    std::size_t before; ///< columns ahead of those with sums
};

/// A row for each roll or shot; `cells_of` makes its cells.
template <class CellsOf> List list_of(const CutFilm& cut, const GatheredKind& kind, const std::map<Name, Gathered>& all,
                                      std::vector<Column> columns, const CellsOf& cells_of) {
    const Units units = units_of(cut);
    List list;
    list.id = kind.id;
    list.title = kind.title;
    list.facts = facts_of_gathered(cut, all, kind.what);
    list.counting = kind.counting + units.counting();
    list.columns = std::move(columns);
    list.empty = "No film is used.";
    list.parts.resize(1);
    list.parts[0].id = "all";
    for (const auto& [name, one] : all) {
        Row row;
        row.id = list.id + '-' + std::to_string(list.parts[0].rows.size() + 1);
        row.tick = true;
        row.cells = cells_of(name, one);
        list.parts[0].rows.push_back(std::move(row));
    }
    list.totals = {total_of(units, all, list.id + "-total", kind.before)};
    return list;
}

} // namespace

List roll_list(const CutFilm& cut) {
    const Units units = units_of(cut);
    const auto rolls = gathered(cut, [](const film::Strip& strip) { return Name{strip.rolls.listed}; });
    const GatheredKind kind{"rolls", "Rolls", "Rolls",
                            "Film from the first frame shown to the last, whole transitions included, film used twice "
                            "counted twice. ",
                            1};
    List list =
        list_of(cut, kind, rolls,
                {roll_column(), number_column("pieces", "Pieces"), length_column("film_length", "Film"),
                 word_column("tapes", "Tapes"), word_column("scenes", "Scenes")},
                [&units](const Name&, const Gathered& roll) {
                    return vector_of<Cell>(roll_cell(*roll.strip), number_cell(roll.pieces), film_cell(units, roll),
                                           word_cell(joined(roll.tapes)), word_cell(joined(roll.scenes)));
                });
    // By name, so that those without one come first.
    if (rolls.empty() || !rolls.begin()->first[0].empty()) return list;
    Row& without = list.parts[0].rows.front();
    without.cells[0].lines = {{strong("no roll")}};
    without.marks = {Mark::missing};
    return list;
}

List scene_list(const CutFilm& cut) {
    const Units units = units_of(cut);
    const auto shots = gathered(cut, [](const film::Strip& strip) {
        return Name{strip.scene, strip.take, strip.name, strip.rolls.listed};
    });
    return list_of(cut, {"scenes", "Scenes", "Shots", "Each shot once. ", 5}, shots,
                   {word_column("scene", "Scene"), word_column("take", "Take"), word_column("shot", "Shot"),
                    word_column("roll", "Roll"), word_column("tape", "Tape"), number_column("pieces", "Pieces"),
                    length_column("film_length", "Film"), word_column("events", "Events")},
                   [&units](const Name& name, const Gathered& shot) {
                       return vector_of<Cell>(word_cell(name[0], Weight::strong), word_cell(name[1]),
                                              word_cell(name[2]), word_cell(name[3]), word_cell(joined(shot.tapes)),
                                              number_cell(shot.pieces), film_cell(units, shot),
                                              word_cell(joined(shot.events)));
                   });
}

} // namespace documents
