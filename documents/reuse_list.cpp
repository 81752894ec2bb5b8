// Film that is used twice, or too close to be cut apart.

#include "documents/cut_lists.h"
#include "documents/film_cells.h"

#include <cstdlib>

namespace documents {
namespace {

using film::Piece;

std::vector<Column> columns_of() {
    const auto place = [](const char* key, const char* title, const char* event, const char* start) {
        return Column{key, title, Align::left, Wrap::words, {{event}, {start, "frames"}}};
    };
    return {roll_column(),
            {"key", "From", Align::left, Wrap::none, {{"key_first"}}},
            length_column("shared", "Used by both"),
            length_column("apart", "Between them"),
            place("first", "First place", "event", "start"),
            place("second", "Second place", "other_event", "other_start"),
            length_column("reel_apart", "Apart in the reel"),
            {"shot", "Shot", Align::left, Wrap::words, {{"shot"}, {"other_shot"}}, true}};
}

Cell place_cell(const Units& units, const Piece& piece) {
    const int event = piece.first().event, layer = piece.first().layer;
    Cell made;
    made.values = {event > 0 ? Value(std::int64_t{event}) : Value(), Value(piece.start)};
    made.lines = {{plain(event > 0 ? "event " + std::to_string(event) : "track " + std::to_string(layer + 1))},
                  {mono(units.position(piece.start), Weight::light)}};
    return made;
}

Cell shots_cell(const Meeting& meeting) {
    const std::string &first = meeting.first->first().name, &second = meeting.second->first().name;
    Cell made;
    made.values = {value_of(first), value_of(second)};
    if (!first.empty()) made.lines.push_back({plain(first)});
    if (second != first && !second.empty()) made.lines.push_back({plain(second)});
    return made;
}

Cell key_from(const film::Count& key) {
    const KeyParts parts = key_parts(key, 0);
    return {vector_of<Line>(number_line(parts)), vector_of<Value>(value_of(parts.label))};
}

Row row_of(const CutFilm& cut, const Meeting& meeting, std::size_t place) {
    const Units units = units_of(cut);
    Row row;
    row.id = "reuse-" + std::to_string(place + 1);
    row.film = film_name(cut, *meeting.second);
    row.tick = true;
    row.cells = vector_of<Cell>(
        roll_cell(meeting.first->first()), key_from(meeting.key),
        meeting.shared > 0 ? length_cell(units, meeting.shared) : cell(light("none"), std::int64_t{0}),
        meeting.shared > 0 ? blank_cell() : length_cell(units, meeting.apart), place_cell(units, *meeting.first),
        place_cell(units, *meeting.second), length_cell(units, std::abs(meeting.second->start - meeting.first->start)),
        shots_cell(meeting));
    Note note;
    note.mark = Mark::reused;
    note.code = meeting.shared > 0 ? "used-twice" : "too-close";
    note.head = meeting.shared > 0 ? "Used twice" : "Too close";
    note.text = meeting.shared > 0 ? "A duplicate is needed for one of the two places."
                                   : film::frames_text(meeting.apart) + " between the two on the negative.";
    row.notes.push_back(std::move(note));
    return row;
}

} // namespace

List reuse_list(const CutFilm& cut) {
    const std::vector<Meeting>& meetings = cut.meetings;
    std::int64_t shared = 0;
    for (const Meeting& meeting : meetings)
        shared += meeting.shared;
    List list;
    list.id = "reuse";
    list.title = "Film used twice";
    list.facts = {{"Places", {strong(std::to_string(meetings.size()))}},
                  {"Film", {mono(units_of(cut).length(shared), Weight::strong)}}};
    list.counting =
        "Places count from the start of the reel, from the first frame of a piece. " + units_of(cut).counting();
    list.columns = columns_of();
    list.empty = "No film is used twice.";
    list.parts.resize(1);
    list.parts[0].id = "all";
    for (std::size_t i = 0; i < meetings.size(); ++i)
        list.parts[0].rows.push_back(row_of(cut, meetings[i], i));
    return list;
}

} // namespace documents
