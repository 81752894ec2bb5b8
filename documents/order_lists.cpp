#include "documents/order_lists.h"

#include "documents/film_cells.h"
#include "documents/table_head.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

namespace documents {
namespace {

using film::FrameRange;
using film::HadPiece;
using film::OrderPiece;
using film::OrderToTell;
using film::PieceFacts;

/// Film of several gauges counts apart.
struct Totals {
    std::map<label_t, std::pair<std::int64_t, std::int64_t>> of_kind; ///< pieces and frames
    std::int64_t pieces = 0, frames = 0;

    void add(label_t kind, const FrameRange& film) {
        auto& [own_pieces, own_frames] = of_kind[kind];
        ++own_pieces, ++pieces;
        own_frames += film.length(), frames += film.length();
    }
};

Totals totals_of(const OrderToTell& order) {
    Totals totals;
    for (const OrderPiece& piece : order.pieces)
        totals.add(piece.run.kind, piece.frames);
    return totals;
}

Units units_of(const OrderFilm& film, label_t kind) { return {kind, film.frames}; }

/// Those of the first gauge speak for the page.
std::string counting_of(const OrderFilm& film) {
    const film::OrderPieces& pieces = film.order.pieces;
    return pieces.empty() ? "" : units_of(film, pieces.front().run.kind).counting();
}

std::string piece_name(std::size_t place) { return "piece-" + std::to_string(place + 1); }

std::string roll_name(const film::FilmRun& run) { return run.roll.empty() ? "No roll" : run.roll; }

Cell roll_cell(const film::FilmRun& run, const std::string& lab_roll) {
    Cell cell = word_cell(run.roll, Weight::strong);
    if (run.roll.empty()) cell.lines = {{strong("no roll")}};
    cell.values.push_back(value_of(lab_roll));
    return cell;
}

/// Perforations that a key number names behind its frames.
Value perforation_of(const std::string& key) {
    const std::size_t point = key.rfind('.');
    return point == std::string::npos ? Value() : value_of(key.substr(point + 1));
}

/// First and last number. Film without one goes by its tape, which stands in their place.
Cell stretch_cell(const film::FilmRun& run, const FrameRange& frames) {
    if (run.has_key()) return label_cell(run.point_at(frames.first), run.point_at(frames.last), false, false);
    Cell cell;
    cell.lines = {{mono("no key number", Weight::strong)},
                  {mono("tape " + run.roll + ' ' + run.text_at(frames.first), Weight::strong)},
                  {mono("to " + run.text_at(frames.last), Weight::strong)}};
    cell.values.resize(2);
    return cell;
}

Cell key_cell(const OrderPiece& piece) {
    Cell cell = stretch_cell(piece.run, piece.frames);
    cell.values.push_back(piece.run.has_key() ? perforation_of(piece.run.text_at(piece.frames.first)) : Value());
    return cell;
}

Cell tape_cell(const PieceFacts& facts) {
    Cell cell;
    cell.values = {value_of(facts.tape), value_of(facts.timecode_in), value_of(facts.timecode_out)};
    Line line;
    if (!facts.tape.empty()) line.push_back(plain(facts.tape + ' '));
    if (!facts.timecode_in.empty()) line.push_back(mono(facts.timecode_in));
    if (!line.empty()) cell.lines.push_back(line);
    if (!facts.timecode_out.empty()) cell.lines.push_back({mono("out " + facts.timecode_out, Weight::light)});
    return cell;
}

Cell handle_cell(const OrderPiece& piece) {
    Cell cell;
    cell.values = {piece.head(), piece.tail()};
    cell.lines = {{mono(std::to_string(piece.head()) + " / " + std::to_string(piece.tail()))}};
    return cell;
}

Cell cut_cell(const OrderPiece& piece) {
    Cell cell = stretch_cell(piece.run, piece.needed);
    if (!piece.run.has_key()) cell.lines.clear();
    return cell;
}

Cell shot_cell(const PieceFacts& facts) {
    film::Strip strip;
    strip.name = facts.names;
    strip.scene = facts.scenes;
    strip.take = facts.takes;
    return documents::shot_cell(strip);
}

std::vector<Column> order_columns() {
    Column tape = tape_column();
    tape.fields = {{"tape"}, {"timecode_in"}, {"timecode_out"}};
    Column shot = shot_column();
    shot.fields = {{"clip"}, {"scene"}, {"take"}};
    return {number_column("scan", "No."),
            {"roll", "Roll", Align::left, Wrap::anywhere, {{"roll"}, {"lab_roll"}}},
            {"key", "First / last frame", Align::left, Wrap::none, {{"key_first"}, {"key_last"}, {"offset"}}},
            tape,
            length_column("frames", "Film"),
            {"frame_in", "From start", Align::right, Wrap::none, {{"frame_in", "frames"}}},
            {"handles", "Head / tail", Align::right, Wrap::none, {{"head", "frames"}, {"tail", "frames"}}},
            {"cut", "Without handles", Align::left, Wrap::none, {{"cut_first"}, {"cut_last"}}},
            word_column("events", "Used in"),
            shot,
            word_column("file", "File")};
}

std::string had_text(const OrderToTell& order, std::size_t place) {
    const HadPiece& had = order.had[place];
    return order.had_names[place] + ", " + had.run.roll + ' ' + had.run.text_at(had.frames.first) + " to " +
           had.run.text_at(had.frames.last);
}

/// Of lists of pieces: how many they are, and how much film they hold.
std::vector<Fact> facts_of(const OrderFilm& film, const Totals& totals) {
    const bool one_kind = totals.of_kind.size() == 1;
    const std::string length = one_kind ? units_of(film, totals.of_kind.begin()->first).both(totals.frames)
                                        : counted(totals.frames, "frame", "frames");
    return {{"Pieces", {strong(std::to_string(totals.pieces))}}, {"Film", {mono(length, Weight::strong)}}};
}

class OrderList {
public:
    explicit OrderList(const OrderFilm& film) : film_(film), order_(film.order) {}

    List list();

private:
    void begin_part(const film::FilmRun& run);
    void close_part();
    Row row_of(std::size_t place) const;
    std::vector<Note> notes_of(std::size_t place) const;
    Row total_of(const std::string& id, label_t kind, std::int64_t pieces, std::int64_t frames) const;
    std::vector<Fact> facts() const;

    const OrderFilm& film_;
    const OrderToTell& order_;
    List list_;
    Totals part_;
};

std::vector<Note> OrderList::notes_of(std::size_t place) const {
    const OrderPiece& piece = order_.pieces[place];
    std::vector<Note> notes;
    auto longer = std::lower_bound(order_.longer.begin(), order_.longer.end(), film::ChangeOrder::Longer{place, 0});
    for (; longer != order_.longer.end() && longer->piece == place; ++longer)
        notes.push_back({Mark::fresh, "Longer than what was had", had_text(order_, longer->had) + ".", "", "longer"});
    if (std::min(piece.head(), piece.tail()) < order_.options.min_handles)
        notes.push_back({Mark::doubt, "Short handles",
                         film::frames_text(piece.head()) + " ahead and " + film::frames_text(piece.tail()) +
                             " behind, where at least " + std::to_string(order_.options.min_handles) +
                             " are wanted: the log's row or the media ends there.",
                         "", "short-handles"});
    return notes;
}

Row OrderList::row_of(std::size_t place) const {
    const OrderPiece& piece = order_.pieces[place];
    const PieceFacts facts = film::facts_of(order_, piece);
    Row row;
    row.id = "order-" + std::to_string(place + 1);
    row.film = piece_name(place);
    row.tick = true;
    row.cells = {number_cell(static_cast<std::int64_t>(place) + 1),
                 roll_cell(piece.run, facts.lab_roll),
                 key_cell(piece),
                 tape_cell(facts),
                 length_cell(units_of(film_, piece.run.kind), piece.frames.length()),
                 facts.from_take < 0 ? Cell{{}, {Value()}} : number_cell(facts.from_take),
                 handle_cell(piece),
                 cut_cell(piece),
                 word_cell(facts.used),
                 shot_cell(facts),
                 word_cell(place < film_.files.size() ? film_.files[place] : "")};
    row.notes = notes_of(place);
    if (!piece.run.has_key() || piece.run.roll.empty()) row.marks = {Mark::missing};
    return row;
}

Row OrderList::total_of(const std::string& id, label_t kind, std::int64_t pieces, std::int64_t frames) const {
    Row total;
    total.id = id;
    total.cells = {{{}, {Value()}},
                   {{}, std::vector<Value>(2)},
                   {{{strong(counted(pieces, "piece", "pieces"))}}, std::vector<Value>(3)},
                   {{}, std::vector<Value>(3)},
                   length_cell(units_of(film_, kind), frames)};
    return total;
}

void OrderList::begin_part(const film::FilmRun& run) {
    list_.parts.emplace_back();
    Part& part = list_.parts.back();
    part.id = "part-" + std::to_string(list_.parts.size());
    if (order_.by_roll) part.title = roll_name(run);
    part_ = {};
}

void OrderList::close_part() {
    if (list_.parts.empty() || !order_.by_roll) return;
    Part& part = list_.parts.back();
    const auto& [kind, counts] = *part_.of_kind.begin();
    part.about = gauge_words(label_type_to_edlstr(kind)) + ", " + counted(counts.first, "piece", "pieces") + ", " +
                 units_of(film_, kind).both(counts.second);
    part.totals = {total_of("order-" + part.id + "-total", kind, counts.first, counts.second)};
}

std::vector<Fact> OrderList::facts() const {
    const Totals totals = totals_of(order_);
    std::set<std::string> rolls;
    for (const OrderPiece& piece : order_.pieces)
        rolls.insert(piece.run.roll);
    std::vector<Fact> facts = facts_of(film_, totals);
    facts.insert(facts.begin(), {"Rolls", {strong(std::to_string(rolls.size()))}});
    facts.push_back({"Can't be ordered", {strong(std::to_string(order_.unknown.size()))}});
    if (film_.change) facts.push_back({"Not used any more", {strong(std::to_string(order_.unused.size()))}});
    return facts;
}

List OrderList::list() {
    list_.id = "order";
    list_.title = film_.change ? "Order of what is missing" : "Order";
    list_.facts = facts();
    list_.counting = "First and last frame both belong to the piece; timecode out is that of the frame behind it. " +
                     counting_of(film_);
    list_.columns = order_columns();
    if (order_.by_roll) list_.columns[1].title.clear();
    list_.empty = "Nothing is to be pulled.";
    for (std::size_t i = 0; i < order_.pieces.size(); ++i) {
        const film::FilmRun& run = order_.pieces[i].run;
        const film::FilmRun* before = i == 0 ? nullptr : &order_.pieces[i - 1].run;
        if (!before || (order_.by_roll && (before->roll != run.roll || before->kind != run.kind))) {
            close_part();
            begin_part(run);
        }
        part_.add(run.kind, order_.pieces[i].frames);
        list_.parts.back().rows.push_back(row_of(i));
    }
    close_part();
    for (const auto& [kind, counts] : totals_of(order_).of_kind)
        list_.totals.push_back(
            total_of("order-total-" + std::to_string(list_.totals.size() + 1), kind, counts.first, counts.second));
    show_where_filled(list_, "file");
    return std::move(list_);
}

List begun(const OrderFilm& film, const char* id, const char* title, const char* empty) {
    List list;
    list.id = id;
    list.title = title;
    list.empty = empty;
    list.counting = "First and last frame both belong to the piece. " + counting_of(film);
    list.parts.resize(1);
    list.parts[0].id = "all";
    return list;
}

Row begun_row(const List& list, std::vector<Cell> cells) {
    Row row;
    row.id = list.id + '-' + std::to_string(list.parts[0].rows.size() + 1);
    row.tick = true;
    row.cells = std::move(cells);
    return row;
}

/// Frames of the first that aren't in the second.
std::int64_t beyond(const FrameRange& film, const FrameRange& held) {
    const std::int64_t shared = std::min(film.last, held.last) - std::max(film.first, held.first) + 1;
    return film.length() - std::max<std::int64_t>(shared, 0);
}

std::vector<std::size_t> by_film(const OrderToTell& order, std::vector<std::size_t> places) {
    std::sort(places.begin(), places.end(), [&order](std::size_t a, std::size_t b) {
        const HadPiece &one = order.had[a], &other = order.had[b];
        return std::tie(one.run, one.frames.first, a) < std::tie(other.run, other.frames.first, b);
    });
    return places;
}

} // namespace

std::string names_of_reels(const std::vector<film::OrderInput>& reels) {
    constexpr std::size_t most_names = 3;
    std::string names;
    for (std::size_t i = 0; i < std::min(reels.size(), most_names); ++i)
        names += (i == 0 ? "" : ", ") + (reels.size() > 1 ? "R" + std::to_string(i + 1) + ' ' : "") + reels[i].edit;
    if (reels.size() > most_names) names += " and " + std::to_string(reels.size() - most_names) + " more";
    return names;
}

TitleBlock title_of(const OrderToTell& order) {
    TitleBlock title;
    title.edit = names_of_reels(order.reels);
    const Totals totals = totals_of(order);
    if (totals.of_kind.size() == 1) title.gauge = gauge_words(label_type_to_edlstr(totals.of_kind.begin()->first));
    return title;
}

List order_list_of(const OrderFilm& film) { return OrderList(film).list(); }

List longer_list_of(const OrderFilm& film) {
    const OrderToTell& order = film.order;
    List list = begun(film, "order-longer", "Longer than what was had", "No piece is longer than what was had.");
    Column had_key = label_column();
    had_key.key = "had_key";
    had_key.title = "Was had";
    had_key.fields = {{"had_first"}, {"had_last"}};
    list.columns = {number_column("scan", "No."),
                    word_column("roll", "Roll"),
                    label_column(),
                    length_column("frames", "Film"),
                    had_key,
                    length_column("had_frames", "Was had"),
                    length_column("missing", "Missing"),
                    word_column("had", "In order")};
    Totals totals;
    for (const film::ChangeOrder::Longer& longer : order.longer) {
        const OrderPiece& piece = order.pieces[longer.piece];
        const HadPiece& had = order.had[longer.had];
        const Units units = units_of(film, piece.run.kind);
        Row row = begun_row(
            list, {number_cell(static_cast<std::int64_t>(longer.piece) + 1), word_cell(piece.run.roll, Weight::strong),
                   stretch_cell(piece.run, piece.frames), length_cell(units, piece.frames.length()),
                   stretch_cell(had.run, had.frames), length_cell(units, had.frames.length()),
                   length_cell(units, beyond(piece.needed, had.frames)), word_cell(order.had_names[longer.had])});
        row.film = piece_name(longer.piece);
        row.marks = {Mark::fresh};
        list.parts[0].rows.push_back(std::move(row));
        totals.add(piece.run.kind, piece.frames);
    }
    list.facts = facts_of(film, totals);
    return list;
}

List order_discard_of(const OrderFilm& film) {
    const OrderToTell& order = film.order;
    List list = begun(film, "order-discard", "Discard list", "All that was had is used, or nothing was had.");
    list.columns = {word_column("roll", "Roll"), label_column(), length_column("frames", "Film"),
                    word_column("had", "In order")};
    Totals totals;
    list.counting = "No reel uses a frame of this film any more. " + list.counting;
    for (const std::size_t place : by_film(order, order.unused)) {
        const HadPiece& had = order.had[place];
        Row row = begun_row(list, {word_cell(had.run.roll, Weight::strong), stretch_cell(had.run, had.frames),
                                   length_cell(units_of(film, had.run.kind), had.frames.length()),
                                   word_cell(order.had_names[place])});
        row.marks = {Mark::out};
        list.parts[0].rows.push_back(std::move(row));
        totals.add(had.run.kind, had.frames);
    }
    list.facts = facts_of(film, totals);
    return list;
}

namespace {

Row select_row(const OrderFilm& film, const film::SelectRoll& roll, std::size_t place) {
    const OrderToTell& order = film.order;
    const OrderPiece& piece = order.pieces[place];
    const PieceFacts facts = film::facts_of(order, piece);
    const FrameRange& laid = order.selects.places[place].frames;
    const std::string in = order.selects.timecode_at(laid.first), out = order.selects.timecode_at(laid.last + 1);
    const Units units = units_of(film, roll.kind);
    Row row;
    row.id = "order-rolls-" + std::to_string(place + 1);
    row.film = piece_name(place);
    row.tick = true;
    row.cells = {position_cell(units, laid.first),
                 {{{mono(in)}, {mono("out " + out, Weight::light)}}, {value_of(in), value_of(out)}},
                 number_cell(static_cast<std::int64_t>(place) + 1),
                 word_cell(piece.run.roll, Weight::strong),
                 stretch_cell(piece.run, piece.frames),
                 length_cell(units, laid.length()),
                 shot_cell(facts)};
    return row;
}

Part select_part(const OrderFilm& film, const film::SelectRoll& roll) {
    const Units units = units_of(film, roll.kind);
    const std::int64_t splice = film::frames_of_splice(roll.kind, film.order.selects.building.splices);
    Part part;
    part.title = roll.name;
    part.about = gauge_words(label_type_to_edlstr(roll.kind)) + ", " +
                 counted(static_cast<std::int64_t>(roll.pieces.size()), "piece", "pieces") + ", " +
                 units.both(roll.frames) + ", " + film::frames_text(splice) + " at each splice";
    for (const std::size_t place : roll.pieces)
        part.rows.push_back(select_row(film, roll, place));
    return part;
}

/// Film without key numbers has no length in feet.
std::int64_t count_of_left_out(const OrderToTell& order) {
    return std::count_if(order.selects.places.begin(), order.selects.places.end(),
                         [](const film::RollPlace& place) { return !place.is_laid(); });
}

} // namespace

List select_roll_list_of(const OrderFilm& film) {
    const film::SelectRolls& selects = film.order.selects;
    Column shot = shot_column();
    shot.fields = {{"clip"}, {"scene"}, {"take"}};
    List list;
    list.id = "order-rolls";
    list.title = "Rolls of selects";
    list.empty = "No piece lies on a new roll.";
    list.counting =
        "Places and timecodes count from the head of the leader; timecode out is that of the frame behind. " +
        counting_of(film);
    list.columns = {position_column("start", "At"),
                    {"timecode", "Timecode", Align::left, Wrap::none, {{"timecode_in"}, {"timecode_out"}}},
                    number_column("scan", "Piece"),
                    word_column("roll", "From roll"),
                    label_column(),
                    length_column("frames", "Film"),
                    shot};
    list.facts = {{"New rolls", {strong(std::to_string(selects.rolls.size()))}},
                  {"At most", {plain(counted(selects.building.feet, "foot", "feet"))}},
                  {"Leader", {plain(counted(selects.building.leader_feet, "foot", "feet"))}},
                  {"On no roll", {strong(std::to_string(count_of_left_out(film.order)))}}};
    for (const film::SelectRoll& roll : selects.rolls) {
        list.parts.push_back(select_part(film, roll));
        list.parts.back().id = "roll-" + std::to_string(list.parts.size());
    }
    return list;
}

List not_ordered_of(const OrderFilm& film) {
    List list = begun(film, "order-unknown", "Can't be ordered", "All film has a key number or a timecode.");
    list.counting = "Film with neither key number nor timecode. Positions and lengths are frames of the reel.";
    list.columns = {number_column("reel", "Reel"), position_column("start", "At"), length_column("length", "Length"),
                    shot_column(), word_column("where", "Where")};
    const Units frames{label_none, true};
    for (const film::UnknownFilm& unknown : film.order.unknown) {
        const film::Strip& strip = unknown.strip;
        Row row =
            begun_row(list, {number_cell(unknown.reel + 1), position_cell(frames, strip.start),
                             length_cell(frames, strip.length()), documents::shot_cell(strip), word_cell(strip.where)});
        row.marks = {Mark::missing};
        list.parts[0].rows.push_back(std::move(row));
    }
    list.facts = {{"Stretches", {strong(std::to_string(film.order.unknown.size()))}}};
    return list;
}

} // namespace documents
