// Count sheets: what the optical printer makes, a sheet each.

#include "documents/cut_lists.h"
#include "documents/film_cells.h"
#include "documents/optical_drawing.h"
#include "documents/row_notes.h"

#include <map>

namespace documents {
namespace {

using film::Piece;

std::vector<Column> columns_of() {
    return {
        number_column("optical", ""),
        number_column("event", ""),
        number_column("layer", "Layer"),
        roll_column(),
        shot_column(),
        length_column("film_length", "Film"),
        key_column(),
        tape_column(),
        {"place", "In the optical", Align::right, Wrap::none, {{"first_frame", "frames"}, {"last_frame", "frames"}}},
        {"transition", "Transition", Align::left, Wrap::words, {{"transition_in"}, {"transition_out"}}},
        speed_column(),
        position_column("start", "")};
}

std::string lowered(std::string text) {
    if (!text.empty() && text[0] >= 'A' && text[0] <= 'Z') text[0] = static_cast<char>(text[0] - 'A' + 'a');
    return text;
}

std::string span_text(std::int64_t first, std::int64_t last) {
    return std::to_string(first) + " - " + std::to_string(last);
}

/// What all sheets of a cut look up.
struct CutPlaces {
    const CutFilm& cut;
    RowNotes notes;
    std::map<const Piece*, const Joint*> ahead, behind; ///< of the piece

    explicit CutPlaces(const CutFilm& whole) : cut(whole), notes(whole) {
        for (const Joint& joint : whole.joints) {
            ahead[joint.behind] = &joint;
            behind[joint.before] = &joint;
        }
    }
};

class Sheet {
public:
    Sheet(const CutPlaces& places, const LabOptical& optical)
        : places_(places), cut_(places.cut), optical_(optical), units_(units_of(places.cut)) {}

    Part part() const {
        Part part;
        part.id = film_name(optical_);
        part.title = "Optical " + std::to_string(optical_.number);
        part.about = about();
        part.sheet = true;
        for (Drawing& drawing : drawings_of(cut_, optical_))
            part.drawings.push_back(std::make_shared<Drawing>(std::move(drawing)));
        for (const Piece* piece : cut_.pieces_of_optical(optical_.number))
            part.rows.push_back(row_of(*piece));
        if (part.rows.empty()) part.rows.push_back(misplaced_row());
        return part;
    }

private:
    std::string about() const {
        std::string text;
        for (const LabEffect& effect : optical_.effects)
            text += effect.name + ", frames " +
                    span_text(effect.start - optical_.start, effect.end - optical_.start - 1) + "; ";
        return text + units_.position(optical_.start) + " to " + units_.position(optical_.end - 1) + ", " +
               film::frames_text(optical_.end - optical_.start);
    }

    /// "dissolve 48 - 71" where a joint stands at that end of the piece.
    std::string joint_text(const std::map<const Piece*, const Joint*>& joints, const Piece& piece) const {
        const auto joint = joints.find(&piece);
        if (joint == joints.end()) return "";
        const std::int64_t first = joint->second->start - optical_.start;
        return lowered(joint->second->name) + ' ' + span_text(first, first + joint->second->length - 1);
    }

    Cell transition_cell(const Piece& piece) const {
        const std::string in = joint_text(places_.ahead, piece), out = joint_text(places_.behind, piece);
        Cell made;
        made.values = {value_of(in), value_of(out)};
        if (!in.empty()) made.lines.push_back({plain("in: " + in)});
        if (!out.empty()) made.lines.push_back({plain("out: " + out)});
        return made;
    }

    Row row_of(const Piece& piece) const {
        const film::Strip& strip = piece.first();
        const std::vector<FilmRun> runs = runs_of(piece, piece.start, piece.end);
        const std::int64_t first = piece.start - optical_.start, last = piece.end - optical_.start - 1;
        Row row;
        row.id = film_name(optical_) + '-' + film_name(cut_, piece);
        row.film = film_name(cut_, piece);
        row.tick = true;
        row.cells = vector_of<Cell>(number_cell(optical_.number), event_cell(strip.event), number_cell(strip.layer + 1),
                                    roll_cell(strip), shot_cell(strip),
                                    piece.black() ? blank_cell() : length_cell(units_, film_frames(runs)),
                                    key_cell(runs, piece.black()), tape_cell(runs),
                                    Cell{{{mono(span_text(first, last))}}, {Value(first), Value(last)}},
                                    transition_cell(piece), speed_cell(strip), position_cell(units_, piece.start));
        row.notes = places_.notes.of(piece, runs);
        return row;
    }

    Row misplaced_row() const {
        Row row;
        row.id = film_name(optical_) + "-none";
        row.cells = {number_cell(optical_.number)};
        row.notes = {
            {Mark::wrong, "Effect over no event", "No film of the lowest track lies under it.", "", "misplaced"}};
        return row;
    }

    const CutPlaces& places_;
    const CutFilm& cut_;
    const LabOptical& optical_;
    const Units units_;
};

} // namespace

List optical_list(const CutFilm& cut) {
    List list;
    list.id = "opticals";
    list.title = "Opticals";
    list.aside = "Count sheets";
    std::int64_t frames = 0;
    for (const LabOptical& optical : cut.opticals)
        frames += optical.end - optical.start;
    list.facts = {{"Opticals", {strong(std::to_string(cut.opticals.size()))}},
                  {"Length", {mono(units_of(cut).length(frames), Weight::strong)}}};
    list.counting = "Frames of an optical count from 0; first and last frame both belong to the piece, whole "
                    "transitions included. " +
                    units_of(cut).counting();
    list.columns = columns_of();
    list.empty = "There are no opticals.";
    const CutPlaces places(cut);
    for (const LabOptical& optical : cut.opticals)
        list.parts.push_back(Sheet(places, optical).part());
    return list;
}

} // namespace documents
