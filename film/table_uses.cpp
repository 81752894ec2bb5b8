// The strips that a saved cutlist table tells of.

#include "film/edit_film.h"
#include "film/film_pieces.h"
#include "film/plain_number.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <set>
#include <string_view>
#include <utility>

namespace film {
namespace {

/// Columns of a cutlist table, by number: two of their names stand twice.
enum Column : unsigned short {
    column_event = 0,
    column_optical_record = 1,
    column_optical = 2,
    column_track = 3,
    column_optical_layers = 5,
    column_optical_error = 6,
    column_edit_in = 7,
    column_edit_out = 8,
    column_optical_name = 11,
    column_shot = 12,
    column_reel = 13,
    column_sound_reel = 14,
    column_reel_24p = 15,
    column_roll = 16,
    column_key_in = 17,
    column_key_out = 18,
    column_key_missing = 19,
    column_ink_in = 20,
    column_key_kind = 22,
    column_ink_kind = 23,
    column_fx_in = 24,
    column_fx_len_in = 26,
    column_fx_out = 27,
    column_fx_len_out = 29,
    column_speed = 31,
    column_special = 33,
    column_tc_in = 35,
    column_tc_kind = 37,
    column_scene = 47,
    column_take = 48,
};

constexpr int special_black = 98, special_no_material = 110;

/// The row's own.
const char* text_of(const dbrecord& record, Column column) {
    const char* text = record.get_field(column);
    return text ? text : "";
}

bool is_empty(const dbrecord& record, Column column) { return *text_of(record, column) == '\0'; }

int number_of(const dbrecord& record, Column column) { return leading_number(text_of(record, column)); }

/// Words as "__BLACK" stand in place of rolls, "RENDERED" with material that isn't film.
std::string roll_of(const dbrecord& record, Column column) {
    const std::string_view roll = text_of(record, column);
    const bool known = !roll.starts_with("__") && number_of(record, column_special) != special_no_material;
    return std::string(known ? roll : "");
}

Count count_of(const dbrecord& record, Column column, Column kind_column, const Fraction& step) {
    Count count;
    const char* const text = text_of(record, column);
    if (*text == '\0') return count;
    LabelPoint point(0, edlstr_to_label_type(text_of(record, kind_column)));
    if (!point.is_valid()) return count;
    point.set_sample(text);
    if (!point.is_useful()) return count;
    const int frame = point.cvt()->samples_per_frame();
    count.kind = point.type();
    count.prefix = point.get_prefix();
    count.first = Fraction(Fraction(point.sample, frame).floor());
    count.perforation = point.sample - static_cast<int>(count.first.floor()) * frame;
    count.step = step;
    return count;
}

/// A speed that a table holds as decimal digits, as the fraction with the smallest denominator that it can be meant
/// for.
Fraction speed_of(const dbrecord& record) {
    const std::string_view text = text_of(record, column_speed);
    if (text.empty() || text == "1") return 1;
    constexpr double fastest = 1e6; // no film runs so, and frames stay countable
    const double told = std::strtod(text.data(), nullptr);
    const double value = std::isfinite(told) ? std::clamp(told, -fastest, fastest) : 0.0;
    constexpr int most_parts = 1000;
    constexpr double tolerance = 1e-7; // of a float, which events hold their speed in
    for (int parts = 1; parts <= most_parts; ++parts) {
        const double whole = std::round(value * parts);
        if (std::abs(whole / parts - value) <= tolerance * std::abs(value))
            return {static_cast<std::int64_t>(whole), parts};
    }
    return Fraction::exactly(value);
}

/// Film frames of one frame of the table's edit, in the frames of a timecode.
Fraction timecode_step(label_t kind, const Fraction& speed) {
    if (kind == label_none) return speed;
    const LabelPoint second = [kind] {
        LabelPoint point(0, kind);
        point.set_sample("00:00:01:00");
        return point;
    }();
    switch (second.sample) {
    case 30:
        return speed * Fraction(5, 4);
    case 48:
    case 50:
        return speed * 2;
    case 60:
        return speed * Fraction(5, 2);
    default:
        return speed;
    }
}

/// Film frames of each frame of the edit: the event's speed, unless the film between its two numbers is another length,
/// as where a source runs at a rate of its own.
Fraction film_step(const dbrecord& record, const Fraction& speed) {
    const Count in = count_of(record, column_key_in, column_key_kind, 1);
    const Count out = count_of(record, column_key_out, column_key_kind, 1);
    const std::int64_t length = std::int64_t{number_of(record, column_edit_out)} - number_of(record, column_edit_in);
    if (!in || !out || length < 1) return speed;
    const Fraction film = out.first - in.first, expected = speed * length;
    const bool near = film <= expected + 1 && expected <= film + 1;
    return near ? speed : film / length;
}

class TableUses {
public:
    explicit TableUses(const recdb& table) : table_(table) {}

    Strips run() {
        strips_.reserve(table_.get_num_records());
        for (unsigned i = 0; i < table_.get_num_records(); ++i) {
            const dbrecord& record = *table_.get_record(i);
            if (number_of(record, column_optical_record) == 0) add(record, static_cast<int>(i));
        }
        number_by_opticals();
        sort_strips(strips_);
        return std::move(strips_);
    }

private:
    Strip strip_of(const dbrecord& record, int row) const;
    void add(const dbrecord& record, int row);
    void number_by_opticals();

    const recdb& table_;
    Strips strips_;
};

void set_film(const dbrecord& record, Strip& strip) {
    strip.speed = speed_of(record);
    const int special = number_of(record, column_special);
    strip.black = special == special_black;
    strip.rendered = std::string_view(text_of(record, column_reel)) == "RENDERED";
    if (strip.black) return;
    if (special == special_no_material) {
        strip.sureness = Sureness::unknown;
        return;
    }
    strip.source.kind = label_frames;
    strip.source.step = strip.speed;
    const Fraction step = film_step(record, strip.speed);
    if (number_of(record, column_key_missing) == 0) strip.key = count_of(record, column_key_in, column_key_kind, step);
    strip.ink = count_of(record, column_ink_in, column_ink_kind, step);
    const label_t timecode = edlstr_to_label_type(text_of(record, column_tc_kind));
    strip.timecode = count_of(record, column_tc_in, column_tc_kind, timecode_step(timecode, strip.speed));
    const bool even = step.den() == 1 && strip.timecode.step.den() == 1;
    strip.sureness = !strip.key ? Sureness::counted : even ? Sureness::exact : Sureness::within;
    strip.off = strip.sureness == Sureness::within ? 1 : 0;
}

Strip TableUses::strip_of(const dbrecord& record, int row) const {
    Strip strip;
    strip.item = row;
    strip.event = number_of(record, column_event);
    strip.optical = number_of(record, column_optical);
    const int track = number_of(record, column_track);
    strip.layer = track > 1 ? track - 1 : 0;
    if (strip.layer > 0 && strip.optical > 0) strip.role = Role::layer;
    strip.name = text_of(record, column_shot);
    strip.scene = text_of(record, column_scene);
    strip.take = text_of(record, column_take);
    strip.rolls.listed = roll_of(record, column_roll);
    strip.rolls.tape = roll_of(record, column_reel);
    strip.rolls.sound = roll_of(record, column_sound_reel);
    strip.rolls.timecode_24 = roll_of(record, column_reel_24p);
    strip.start = number_of(record, column_edit_in);
    strip.end = number_of(record, column_edit_out);
    set_film(record, strip);
    return strip;
}

/// The frames of a strip from `from` to `to`, counted from its first, which may lie outside it.
Strip stretch_of(const Strip& whole, std::int64_t from, std::int64_t to, Role role) {
    Strip stretch = whole;
    stretch.start = whole.start + from;
    stretch.end = whole.start + to;
    for (Count* count : {&stretch.key, &stretch.ink, &stretch.timecode, &stretch.source})
        count->first = count->at(from);
    if (whole.role != Role::layer) stretch.role = role;
    return stretch;
}

void TableUses::add(const dbrecord& record, int row) {
    const std::int64_t in = is_empty(record, column_fx_in) ? 0 : number_of(record, column_fx_len_in);
    const std::int64_t out = is_empty(record, column_fx_out) ? 0 : number_of(record, column_fx_len_out);
    Strip whole = strip_of(record, row);
    const std::int64_t length = whole.length();
    if (in > 0) strips_.push_back(stretch_of(whole, -in, 0, Role::incoming));
    if (out <= 0) {
        if (length > 0) strips_.push_back(std::move(whole));
        return;
    }
    if (length > 0) strips_.push_back(whole);
    strips_.push_back(stretch_of(whole, length, length + out, Role::outgoing));
}

// Where an optical has one number in the assembly, it is that of all that it covers.
void TableUses::number_by_opticals() {
    std::map<int, int> numbers;
    for (unsigned i = 0; i < table_.get_num_records(); ++i) {
        const dbrecord& record = *table_.get_record(i);
        const int event = number_of(record, column_event);
        if (number_of(record, column_optical_record) != 0 && event > 0)
            numbers.emplace(number_of(record, column_optical), event);
    }
    for (Strip& strip : strips_) {
        const auto found = numbers.find(strip.optical);
        if (strip.event == 0 && strip.layer == 0 && strip.optical > 0 && found != numbers.end())
            strip.event = found->second;
    }
}

FilmEvent event_of(const dbrecord& record, const Piece& piece) {
    const Strip& strip = piece.at(piece.cut_in);
    FilmEvent event;
    event.item = strip.item;
    event.event = strip.event;
    event.optical = strip.optical;
    event.layer = strip.layer;
    event.start = piece.cut_in;
    event.end = piece.cut_out;
    event.black = strip.black;
    event.rendered = strip.rendered;
    event.opens = !piece.unknown();
    event.name = strip.name;
    if (!event.opens) event.listed_as = text_of(record, column_roll);
    event.rolls = strip.rolls;
    event.speed = strip.speed;
    event.timecode = strip.timecode;
    event.source = strip.source;
    return event;
}

/// Those that couldn't be described.
std::vector<Optical> opticals_in_error(const recdb& table) {
    std::vector<Optical> opticals;
    for (unsigned i = 0; i < table.get_num_records(); ++i) {
        const dbrecord& record = *table.get_record(i);
        if (number_of(record, column_optical_record) == 0 || number_of(record, column_optical_error) == 0) continue;
        Optical optical;
        optical.number = number_of(record, column_optical);
        optical.start = number_of(record, column_edit_in);
        optical.end = number_of(record, column_edit_out);
        optical.name = text_of(record, column_optical_name);
        optical.error = true;
        opticals.push_back(std::move(optical));
    }
    return opticals;
}

/// Chains of transitions draw on no layers.
std::vector<int> effects_of(const recdb& table) {
    std::set<int> numbers;
    for (unsigned i = 0; i < table.get_num_records(); ++i) {
        const dbrecord& record = *table.get_record(i);
        const bool effect =
            number_of(record, column_optical_record) != 0 && number_of(record, column_optical_layers) > 0;
        if (effect && number_of(record, column_optical_error) == 0) numbers.insert(number_of(record, column_optical));
    }
    return {numbers.begin(), numbers.end()};
}

} // namespace

Strips uses_of_table(const recdb& table) { return TableUses(table).run(); }

EditFilm film_of_table(const recdb& table) {
    EditFilm film;
    film.strips = uses_of_table(table);
    FilmEvent none;
    none.black = true;
    film.events.resize(table.get_num_records(), none);
    for (const Piece& piece : pieces_of(film.strips)) {
        const auto row = static_cast<unsigned>(piece.first().item);
        film.events[row] = event_of(*table.get_record(row), piece);
    }
    film.opticals = opticals_in_error(table);
    film.effects = effects_of(table);
    return film;
}

} // namespace film
