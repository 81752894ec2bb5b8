// The assembly: the reel from its first frame to its last.

#include "documents/cut_lists.h"
#include "documents/film_cells.h"
#include "documents/reel_drawing.h"
#include "documents/row_notes.h"

namespace documents {
namespace {

using film::Piece;

Column transition_column() {
    return {"transition",
            "",
            Align::left,
            Wrap::words,
            {{"transition"}, {"transition_start", "frames"}, {"transition_length", "frames"}}};
}

std::vector<Column> columns_of() {
    Column optical = number_column("optical", "");
    return {number_column("event", "Event"),
            position_column("start", "Starts at"),
            length_column("length", "Length"),
            length_column("film_length", "Film"),
            roll_column(),
            shot_column(),
            key_column(),
            ink_column(),
            tape_column(),
            speed_column(),
            transition_column(),
            optical};
}

class Assembly {
public:
    explicit Assembly(const CutFilm& cut) : cut_(cut), units_(units_of(cut)), notes_(cut) {}

    std::vector<Row> rows() {
        for (std::size_t i = 0; i < cut_.shares.size(); ++i)
            add(cut_.shares[i], i);
        return std::move(rows_);
    }

private:
    void add(const Share& share, std::size_t place) {
        const LabOptical* optical = cut_.neg_cut ? cut_.optical(share.piece->first().optical) : nullptr;
        if (!optical) return add_piece(share, place);
        if (optical->number == last_optical_) return; // stands in one row with those before it
        last_optical_ = optical->number;
        add_optical(*optical);
    }

    void add_optical(const LabOptical& optical) {
        Row row;
        row.id = "assembly-optical-" + std::to_string(optical.number);
        row.film = film_name(optical);
        row.tick = true;
        std::string name = "Optical " + std::to_string(optical.number);
        const std::int64_t length = optical.end - optical.start;
        row.cells = vector_of<Cell>(
            event_cell(optical.event), position_cell(units_, optical.start), length_cell(units_, length),
            film_cell(units_, length, length), blank_cell(5),
            Cell{{{strong(name)}, {light("from the lab, see its count sheet")}}, {Value(name), Value(), Value()}},
            blank_cell(4), blank_cell(2), blank_cell(3), blank_cell(), blank_cell(3), number_cell(optical.number));
        rows_.push_back(std::move(row));
    }

    void add_piece(const Share& share, std::size_t place) {
        const Piece& piece = *share.piece;
        const std::vector<FilmRun> runs = runs_of(piece, share.start, share.end);
        Row row;
        row.id = "assembly-" + std::to_string(place + 1);
        row.film = film_name(cut_, piece);
        row.tick = true;
        row.cells = cells_of(share, runs);
        row.notes = notes_.of(piece, runs);
        rows_.push_back(std::move(row));
        begin_effects(piece);
        if (share.out) add_band(*share.out);
    }

    std::vector<Cell> cells_of(const Share& share, const std::vector<FilmRun>& runs) const {
        const Piece& piece = *share.piece;
        const film::Strip& strip = piece.first();
        return vector_of<Cell>(
            event_cell(strip.event), position_cell(units_, share.start), length_cell(units_, share.length()),
            piece.black() ? blank_cell() : film_cell(units_, film_frames(runs), share.length()), roll_cell(strip),
            shot_cell(strip), key_cell(runs, piece.black()), ink_cell(runs), tape_cell(runs), speed_cell(strip),
            transition_cell(share.out), strip.optical > 0 ? number_cell(strip.optical) : blank_cell());
    }

    static Cell transition_cell(const Joint* joint) {
        if (!joint) return blank_cell(3);
        return {{}, vector_of<Value>(value_of(joint->name), joint->start, joint->length)};
    }

    void add_band(const Joint& joint) {
        Row band;
        band.kind = RowKind::band;
        band.band = {strong(joint.name), mono(" " + film::frames_text(joint.length) + ", from " + place_of(joint))};
        const int optical = joint.before->first().optical;
        if (optical > 0) band.band.push_back(mono(", see optical " + std::to_string(optical)));
        rows_.push_back(std::move(band));
    }

    /// The first frame of the joint on the film that goes away, or that comes where that is black.
    std::string place_of(const Joint& joint) const {
        const Piece& piece = joint.before->black() ? *joint.behind : *joint.before;
        const std::vector<FilmRun> runs = runs_of(piece, joint.start, joint.start + 1);
        const Cell key = key_cell(runs, piece.black());
        const bool numbered = !runs.empty() && runs.front().key;
        return numbered ? text_of(key.lines.front()) : units_.position(joint.start);
    }

    /// Effects over several layers begin behind the event in which they start.
    void begin_effects(const Piece& piece) {
        const LabOptical* optical = cut_.optical(piece.first().optical);
        if (!optical) return;
        for (const LabEffect& effect : optical->effects) {
            if (effect.start < piece.start || piece.end <= effect.start) continue;
            Row band;
            band.kind = RowKind::band;
            band.band = {strong("Effect: " + effect.name),
                         mono(" " + film::frames_text(effect.end - effect.start) + ", from " +
                              units_.position(effect.start) + ", see optical " + std::to_string(optical->number))};
            rows_.push_back(std::move(band));
        }
    }

    const CutFilm& cut_;
    const Units units_;
    const RowNotes notes_;
    std::vector<Row> rows_;
    int last_optical_ = 0;
};

Row total_of(const CutFilm& cut, const List& list) {
    const Units units = units_of(cut);
    std::int64_t length = 0;
    for (const Part& part : list.parts)
        for (const Row& row : part.rows)
            if (row.kind == RowKind::item) length += std::get<std::int64_t>(row.cells[2].values[0]);
    Row total;
    total.id = "assembly-total";
    total.cells = vector_of<Cell>(Cell(), cell(strong("In all"), Value()), length_cell(units, length));
    return total;
}

} // namespace

List assembly_list(const CutFilm& cut) {
    List list;
    list.id = "assembly";
    list.title = cut.sound ? "Assembly, sound" : cut.neg_cut ? "Assembly, negative" : "Assembly, cutting copy";
    list.facts = facts_of(cut);
    list.counting = "First and last frame both belong to the piece. " + units_of(cut).counting();
    if (!cut.neg_cut) list.counting += " Each side of a transition has half of it.";
    if (!cut.pieces.empty()) list.drawings.push_back(std::make_shared<Drawing>(reel_drawing(cut)));
    list.columns = columns_of();
    list.parts.resize(1);
    list.parts[0].id = "reel";
    list.parts[0].rows = Assembly(cut).rows();
    list.totals = {total_of(cut, list)};
    show_where_filled(list, "film_length");
    show_where_filled(list, "speed");
    list.empty = "Nothing is cut.";
    return list;
}

} // namespace documents
