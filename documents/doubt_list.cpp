// What is wrong, missing or in doubt, with what to do about it.

#include "documents/cut_lists.h"
#include "documents/film_cells.h"

#include <algorithm>
#include <map>

namespace documents {
namespace {

using film::Severity;

std::int64_t count_of(const film::Findings& findings, Severity severity) {
    return std::count_if(findings.begin(), findings.end(),
                         [severity](const film::Finding& finding) { return finding.severity == severity; });
}

/// Missing film and doubts about it; names and texts aside.
bool about_film(const film::Finding& finding) { return finding.severity != Severity::note; }

std::vector<Column> columns_of() {
    Column what = {"what", "What", Align::left, Wrap::words, {{"code"}, {"what"}, {"advice"}}, true};
    Column severity = word_column("severity", "Kind");
    Column where = {"where", "Where", Align::left, Wrap::words, {{"file"}, {"where"}, {"channel"}}};
    Column at = {"at", "At", Align::right, Wrap::none, {{"frame", "frames"}, {"timecode"}}};
    Column film = {"film", "Film", Align::left, Wrap::words, {{"roll"}, {"tape"}, {"source_timecode"}}};
    return {severity, number_column("event", "Event"), at, word_column("shot", "Shot"), what, film, where};
}

Cell at_cell(const Units& units, const film::FoundAt& place) {
    Cell at;
    at.values = {place.frame < 0 ? Value() : Value(place.frame), value_of(place.timecode)};
    if (place.frame >= 0) at.lines.push_back({mono(units.position(place.frame))});
    if (!place.timecode.empty()) at.lines.push_back({mono(place.timecode, Weight::light)});
    return at;
}

Cell film_cell(const film::FoundAt& place) {
    Cell film;
    film.values = {value_of(place.roll), value_of(place.tape), value_of(place.source_timecode)};
    if (!place.roll.empty()) film.lines.push_back({strong(place.roll)});
    if (!place.tape.empty()) film.lines.push_back({plain("tape " + place.tape)});
    if (!place.source_timecode.empty()) film.lines.push_back({mono(place.source_timecode, Weight::light)});
    return film;
}

Cell where_cell(const film::FoundAt& place) {
    Cell where;
    where.values = {value_of(place.file), value_of(place.where), value_of(place.channel)};
    const bool whole = place.where.compare(0, place.file.size(), place.file) == 0; // it names the file itself
    if (!place.file.empty() && !whole) where.lines.push_back({plain(place.file)});
    if (!place.where.empty()) where.lines.push_back({whole ? plain(place.where) : light(place.where)});
    return where;
}

Row row_of(const Units& units, const film::Finding& finding, std::size_t place) {
    const char* const code = film::info_of(finding.code).name;
    Row row;
    row.id = "doubts-" + std::to_string(place + 1);
    if (finding.place.event > 0) row.film = "event-" + std::to_string(finding.place.event);
    row.tick = true;
    row.cells =
        vector_of<Cell>(word_cell(film::name_of(finding.severity), Weight::strong), event_cell(finding.place.event),
                        at_cell(units, finding.place), word_cell(finding.place.name),
                        Cell{{}, vector_of<Value>(code, finding.what, finding.advice())}, film_cell(finding.place),
                        where_cell(finding.place));
    row.notes.push_back(finding_note(finding, true));
    return row;
}

} // namespace

List doubt_list(const CutFilm& cut) {
    List list;
    list.id = "doubts";
    list.title = "Missing and doubtful";
    list.facts = {{"Wrong", {strong(std::to_string(count_of(cut.findings, Severity::wrong)))}},
                  {"In doubt", {strong(std::to_string(count_of(cut.findings, Severity::doubt)))}},
                  {"To know", {strong(std::to_string(count_of(cut.findings, Severity::note)))}},
                  {"Looked at", {plain(cut.options.by_table ? "the saved table alone" : "edit and log")}}};
    list.counting = "Positions count from the start of the edit. " + units_of(cut).counting();
    list.columns = columns_of();
    list.empty = "Nothing is missing, and nothing is in doubt.";
    list.parts.resize(1);
    list.parts[0].id = "all";
    for (std::size_t i = 0; i < cut.findings.size(); ++i)
        list.parts[0].rows.push_back(row_of(units_of(cut), cut.findings[i], i));
    return list;
}

std::vector<Fact> facts_of(const CutFilm& cut) {
    const Units units = units_of(cut);
    const std::int64_t length = cut.length();
    Line value = {mono(units.length(length), Weight::strong)};
    if (units.feet()) value.push_back(plain("  " + counted(length, "frame", "frames")));
    int events = 0;
    for (const Share& share : cut.shares)
        events = std::max(events, share.piece->first().event);
    const std::int64_t doubts = std::count_if(cut.findings.begin(), cut.findings.end(), about_film);
    return {{"Events", {strong(std::to_string(events))}},
            {"Length", value},
            {"Opticals", {strong(std::to_string(cut.opticals.size()))}},
            {"Missing or in doubt", {strong(std::to_string(doubts))}}};
}

} // namespace documents
