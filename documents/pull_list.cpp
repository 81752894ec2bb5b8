// What to pull: each stretch of film with the place that uses it, in four orders.

#include "documents/cut_lists.h"
#include "documents/film_cells.h"
#include "documents/row_notes.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace documents {
namespace {

using film::Piece;

/// One row: a stretch without a gap.
struct Pull {
    const Piece* piece = nullptr;
    FilmRun run;
    std::int64_t low = 0; ///< of its frames of film
    bool first_of_piece = true;
};

struct Order {
    PullOrder order;
    const char* id;
    const char* title;
    const char* rest; ///< the part of what has no name to go by
};

constexpr Order orders[] = {
    {PullOrder::roll, "pull-roll", "Pull by roll", "No roll"},
    {PullOrder::key, "pull-key", "Pull by key number", "No key number"},
    {PullOrder::scene, "pull-scene", "Pull by scene and take", "No scene"},
    {PullOrder::tape, "pull-tape", "Pull by tape and timecode", "No tape"},
};

const film::Count& count_of(const FilmRun& run) { return run.key ? run.key : run.timecode ? run.timecode : run.source; }

std::int64_t low_frame(const film::Count& count, std::int64_t length) {
    return std::min(count.frame_at(0), count.frame_at(length - 1));
}

/// At the bench film is cut in the middle of a transition; all else takes whole transitions.
void add_pulls(const Piece& piece, std::int64_t from, std::int64_t to, std::vector<Pull>& pulls) {
    bool first = true;
    for (const FilmRun& run : runs_of(piece, from, to)) {
        pulls.push_back({&piece, run, low_frame(count_of(run), run.length()), first});
        first = false;
    }
}

std::vector<Pull> pulls_of(const CutFilm& cut) {
    std::vector<Pull> pulls;
    if (!cut.neg_cut)
        for (const Share& share : cut.shares)
            if (!share.piece->black() && share.length() > 0) add_pulls(*share.piece, share.start, share.end, pulls);
    for (const Piece& piece : cut.pieces)
        if (!piece.black() && (cut.neg_cut || piece.first().layer > 0)) add_pulls(piece, piece.start, piece.end, pulls);
    return pulls;
}

/// What a pull is put under, and where it stands there. Texts compare with their numbers as numbers.
std::string heading_of(const Pull& pull, PullOrder order) {
    const film::Strip& strip = *pull.run.strip;
    if (order == PullOrder::roll) return strip.rolls.listed;
    if (order == PullOrder::scene) return strip.scene;
    if (order == PullOrder::tape) return strip.rolls.tape;
    return pull.run.key ? "Key numbers" : "";
}

/// Digits filled up, so that "2" stands before "10".
std::string natural(const std::string& text) {
    constexpr std::size_t digits = 12;
    std::string padded;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find_first_not_of("0123456789", at), text.size());
        if (end > at && end - at < digits) padded.append(digits - (end - at), '0');
        padded += end > at ? text.substr(at, end - at) : text.substr(at, 1);
        at = std::max(end, at + 1);
    }
    return padded;
}

using Place = std::tuple<std::string, std::string, bool, std::string, std::int64_t, std::int64_t>;

Place place_of(const Pull& pull, PullOrder order) {
    const FilmRun& run = pull.run;
    const std::string heading = heading_of(pull, order);
    const std::string take = order == PullOrder::scene ? natural(run.strip->take) : "";
    if (order == PullOrder::tape)
        return {
            natural(heading), "", !run.timecode, "", low_frame(run.timecode ? run.timecode : run.source, run.length()),
            pull.piece->start};
    return {natural(heading), take, !run.key, run.key.prefix, pull.low, pull.piece->start};
}

class PullList {
public:
    PullList(const CutFilm& cut, const Order& order)
        : cut_(cut), order_(order), units_(units_of(cut)), notes_(cut), pulls_(pulls_of(cut)) {}

    List list();

private:
    void sort();
    void add(const Pull& pull);
    Row row_of(const Pull& pull);
    std::vector<Note> notes_of(const Pull& pull) const;
    std::optional<std::int64_t> film_of(const Pull& pull) const;
    void close_part();
    Row total_of(const char* id, std::int64_t pieces, std::int64_t film, std::int64_t unknown) const;

    const CutFilm& cut_;
    const Order& order_;
    const Units units_;
    const RowNotes notes_;
    std::vector<Pull> pulls_;
    List list_;
    std::string heading_;
    std::int64_t pieces_ = 0, film_ = 0, unknown_ = 0;
    std::int64_t all_pieces_ = 0, all_film_ = 0, all_unknown_ = 0;
};

std::vector<Column> columns_of() {
    return {number_column("event", "Event"),
            roll_column(),
            shot_column(),
            length_column("film_length", "Film"),
            key_column(),
            ink_column(),
            tape_column(),
            length_column("length", "In the reel"),
            position_column("start", "Used at"),
            speed_column(),
            number_column("layer", ""),
            number_column("optical", "")};
}

// What has no name goes last.
void PullList::sort() {
    std::vector<std::pair<Place, Pull>> placed;
    for (Pull& pull : pulls_)
        placed.emplace_back(place_of(pull, order_.order), std::move(pull));
    std::stable_sort(placed.begin(), placed.end(), [](const auto& a, const auto& b) {
        const bool none = std::get<0>(a.first).empty(), other_none = std::get<0>(b.first).empty();
        return none != other_none ? other_none : a.first < b.first;
    });
    pulls_.clear();
    for (auto& [place, pull] : placed)
        pulls_.push_back(std::move(pull));
}

std::optional<std::int64_t> PullList::film_of(const Pull& pull) const {
    const std::optional<std::int64_t> frames = pull.run.film_frames();
    if (!frames) return std::nullopt;
    return *frames + 2 * cut_.options.handles;
}

std::vector<Note> PullList::notes_of(const Pull& pull) const {
    if (pull.first_of_piece) return notes_.of(*pull.piece, {pull.run});
    return {};
}

Row PullList::row_of(const Pull& pull) {
    const film::Strip& strip = *pull.run.strip;
    const std::vector<FilmRun> runs = {pull.run};
    Row row;
    row.id = std::string(order_.id) + '-' + std::to_string(all_pieces_ + 1);
    row.film = film_name(cut_, *pull.piece);
    row.tick = true;
    row.cells = vector_of<Cell>(
        event_cell(strip.event), roll_cell(strip), shot_cell(strip), length_cell(units_, film_of(pull)),
        key_cell(runs, false, cut_.options.handles), ink_cell(runs, cut_.options.handles), tape_cell(runs),
        length_cell(units_, pull.run.length()), position_cell(units_, pull.run.start), speed_cell(strip),
        cell(Run(), std::int64_t{strip.layer + 1}), strip.optical > 0 ? number_cell(strip.optical) : blank_cell());
    row.notes = notes_of(pull);
    return row;
}

void PullList::add(const Pull& pull) {
    const std::string heading = heading_of(pull, order_.order);
    if (list_.parts.empty() || heading != heading_) {
        close_part();
        heading_ = heading;
        list_.parts.emplace_back();
        list_.parts.back().id = "part-" + std::to_string(list_.parts.size());
        list_.parts.back().title = heading.empty()                    ? order_.rest
                                   : order_.order == PullOrder::scene ? "Scene " + heading
                                                                      : heading;
    }
    list_.parts.back().rows.push_back(row_of(pull));
    const std::optional<std::int64_t> film = film_of(pull);
    ++pieces_, ++all_pieces_;
    film_ += film.value_or(0), all_film_ += film.value_or(0);
    unknown_ += film ? 0 : 1, all_unknown_ += film ? 0 : 1;
}

void PullList::close_part() {
    if (list_.parts.empty()) return;
    Part& part = list_.parts.back();
    part.about = counted(pieces_, "piece", "pieces") + ", " + units_.both(film_);
    if (unknown_ > 0) part.about += ", and " + std::to_string(unknown_) + " of unknown length";
    const std::string id = std::string(order_.id) + '-' + part.id + "-total";
    part.totals = {total_of(id.c_str(), pieces_, film_, unknown_)};
    pieces_ = film_ = unknown_ = 0;
}

Row PullList::total_of(const char* id, std::int64_t pieces, std::int64_t film, std::int64_t unknown) const {
    Row total;
    total.id = id;
    std::string words = counted(pieces, "piece", "pieces");
    if (unknown > 0) words += ", " + std::to_string(unknown) + " of unknown length";
    total.cells = vector_of<Cell>(blank_cell(), blank_cell(5), Cell{{{strong(words)}}, std::vector<Value>(3)},
                                  length_cell(units_, film));
    return total;
}

List PullList::list() {
    sort();
    for (const Pull& pull : pulls_)
        add(pull);
    close_part();
    list_.id = order_.id;
    list_.title = order_.title;
    list_.facts = {{"Pieces", {strong(std::to_string(all_pieces_))}},
                   {"Film", {mono(units_.length(all_film_), Weight::strong)}},
                   {"Groups", {strong(std::to_string(list_.parts.size()))}},
                   {"Handles", {plain(film::frames_text(cut_.options.handles))}}};
    list_.counting = "First and last frame both belong to the piece. " + units_.counting();
    if (cut_.options.handles > 0)
        list_.counting += " With " + film::frames_text(cut_.options.handles) + " more at each end.";
    list_.columns = columns_of();
    const std::string id = std::string(order_.id) + "-total";
    list_.totals = {total_of(id.c_str(), all_pieces_, all_film_, all_unknown_)};
    list_.empty = "There is no film to pull.";
    return std::move(list_);
}

} // namespace

List pull_list(const CutFilm& cut, PullOrder order) {
    for (const Order& one : orders)
        if (one.order == order) return PullList(cut, one).list();
    return {};
}

} // namespace documents
