#include "documents/conform_lists.h"

#include "documents/film_cells.h"
#include "documents/order_lists.h"
#include "documents/table_head.h"
#include "film/conform_texts.h"

#include <iterator>

namespace documents {
namespace {

using film::Conflict;
using film::ConformToTell;
using film::CutUse;
using film::Trouble;

struct Kind {
    Trouble trouble;
    const char* id;
    const char* title;
    Mark mark;
};

constexpr Kind kinds[] = {
    {Trouble::gone, "gone", "Gone", Mark::missing},
    {Trouble::twice, "twice", "Used twice", Mark::reused},
    {Trouble::close, "close", "Too close", Mark::doubt},
};

Units units_of(const CutUse& use, bool frames) { return {use.run.kind, frames}; }

Cell shot_cell(const CutUse& use) {
    film::Strip strip;
    strip.name = use.name;
    return documents::shot_cell(strip);
}

std::vector<Column> conflict_columns() {
    Column shot = shot_column();
    return {number_column("number", "No."),
            {"trouble", "", Align::left, Wrap::words, {{"trouble"}}},
            word_column("events", "Event"),
            position_column("start", "At"),
            length_column("length", "Length"),
            word_column("roll", "Roll"),
            label_column(),
            {"lacking", "Frames", Align::right, Wrap::none, {{"lacking", "frames"}}},
            shot};
}

Note note_of(const ConformToTell& told, const Conflict& conflict, const Kind& kind) {
    Note note{kind.mark, kind.title, with_capital(film::trouble_text(told, conflict)) + ".", "", kind.id};
    for (const film::Mend& mend : conflict.mends)
        note.advice += (note.advice.empty() ? "" : "; or ") + film::mend_text(told, mend);
    note.advice = with_capital(note.advice);
    return note;
}

Row row_of(const ConformToTell& told, const Conflict& conflict, const Kind& kind, std::int64_t number, bool frames) {
    const CutUse& use = told.uses[conflict.use];
    const Units units = units_of(use, frames);
    Row row;
    row.id = "conform-" + std::to_string(number);
    row.tick = true;
    row.cells = {number_cell(number),
                 word_cell(kind.id),
                 word_cell(film::name_of(told, use)),
                 position_cell(units, use.start),
                 length_cell(units, use.end - use.start),
                 word_cell(use.run.roll, Weight::strong),
                 label_cell(use.run.point_at(use.frames.first), use.run.point_at(use.frames.last), false, false),
                 number_cell(conflict.lacking),
                 shot_cell(use)};
    row.notes = {note_of(told, conflict, kind)};
    return row;
}

std::vector<Fact> facts_of(const ConformToTell& told) {
    const film::Conform& conform = told.conform;
    const auto number = [](std::int64_t count) { return Line{strong(std::to_string(count))}; };
    return {{"Can be conformed", {strong(told.conforms() ? "yes" : "not as it stands")}},
            {"In the way", number(static_cast<std::int64_t>(conform.conflicts.size()))},
            {"Cuts carried out", number(static_cast<std::int64_t>(told.cuts.size()))},
            {"Ends that stand", number(conform.standing_ends)},
            {"New ends", number(conform.new_ends)}};
}

List conflict_list(const ConformToTell& told, bool frames) {
    List list;
    list.id = "conform";
    list.title = told.first_cut() ? "Before the first cut" : "Conform";
    list.facts = facts_of(told);
    list.columns = conflict_columns();
    list.empty = "The negative holds all that the cut needs.";
    const std::vector<label_t> film = told.kinds();
    list.counting = "First and last number both belong to the piece.";
    if (!film.empty()) list.counting += ' ' + Units{film.front(), frames}.counting();
    std::int64_t number = 0;
    for (const Kind& kind : kinds) {
        Part part;
        part.id = kind.id;
        part.title = kind.title;
        for (const Conflict& conflict : told.conform.conflicts)
            if (conflict.trouble == kind.trouble) part.rows.push_back(row_of(told, conflict, kind, ++number, frames));
        if (!part.rows.empty()) list.parts.push_back(std::move(part));
    }
    if (list.parts.empty()) list.parts.push_back({"all", "", "", false, {}, {}, {}});
    return list;
}

/// 0 stands for the cut that is held.
Row unheld_row(const film::UnknownFilm& film, std::int64_t cut, std::size_t number) {
    const Units frames{label_none, true};
    Row row;
    row.id = "conform-unheld-" + std::to_string(number);
    row.cells = {event_cell(cut),
                 number_cell(film.reel + 1),
                 position_cell(frames, film.strip.start),
                 length_cell(frames, film.strip.length()),
                 documents::shot_cell(film.strip),
                 word_cell(film.strip.where)};
    row.marks = {Mark::missing};
    return row;
}

List unheld_list(const ConformToTell& told) {
    List list;
    list.id = "conform-unheld";
    list.title = "Can't be held";
    list.empty = "All film has numbers that tell it frame by frame.";
    list.counting = "Film that no numbers tell frame by frame; of earlier cuts, what its splices spent isn't counted. "
                    "Positions and lengths are frames of the reel.";
    list.columns = {number_column("cut", "Cut"),
                    number_column("reel", "Reel"),
                    position_column("start", "At"),
                    length_column("length", "Length"),
                    shot_column(),
                    word_column("where", "Where")};
    list.parts.push_back({"all", "", "", false, {}, {}, {}});
    std::vector<Row>& rows = list.parts.front().rows;
    for (const film::UnknownFilm& film : told.unheld)
        rows.push_back(unheld_row(film, 0, rows.size() + 1));
    for (const ConformToTell::UnheldCut& cut : told.unheld_cuts)
        rows.push_back(unheld_row(cut.film, static_cast<std::int64_t>(cut.cut) + 1, rows.size() + 1));
    list.facts = {{"Stretches", {strong(std::to_string(rows.size()))}}};
    return list;
}

} // namespace

std::vector<std::string> conform_list_ids() { return {"conform", "conform-unheld"}; }

Document conform_lists(const ConformToTell& told, bool frames) {
    Document document;
    document.title.edit = names_of_reels(told.reels);
    const std::vector<label_t> film = told.kinds();
    if (film.size() == 1) document.title.gauge = gauge_words(label_type_to_edlstr(film.front()));
    document.lists = {conflict_list(told, frames), unheld_list(told)};
    return document;
}

} // namespace documents
