#include "changelist/steps/reused_film.h"

#include "base/frame_math.h"
#include "changelist/row_fields.h"
#include "host/ascii_text.h"
#include "host/fixed_text.h"

namespace {

int sample_behind(const LabelPoint& start, int frames) {
    return start.is_valid() ? frame_sum(start.sample, frame_product(samples_per_frame(start), frames)) : 0;
}

FilmRow film_row(FilmReader& reader, const dbrecord& row) {
    const ChangeRecord& film = reader.read(row);
    FilmRow result;
    result.span = {film.keycode_in,     film.inkcode_in,      reader.key_out(row),
                   reader.ink_out(row), film.keycode_missing, film.edit_length};
    result.varispeed = film.varispeed();
    result.filler = is_filler(film.keycode_in);
    return result;
}

} // namespace

int FilmSpan::key_end() const { return sample_behind(key_in, length); }

int FilmSpan::ink_end() const { return sample_behind(ink_in, length); }

int FilmSpan::frame_step() const { return samples_per_frame(key_in); }

void FilmSpan::set_length(int frames) {
    length = frames;
    key_out.set_sample(sample_behind(key_in, frame_difference(frames, 1)));
    ink_out.set_sample(sample_behind(ink_in, frame_difference(frames, 1)));
}

void FilmSpan::take_start(const FilmSpan& other) {
    key_in = other.key_in;
    ink_in = other.ink_in;
    missing = other.missing;
}

void FilmSpan::start_at(int key, int ink) {
    if (key_in.is_valid()) key_in.set_sample(key);
    if (ink_in.is_valid()) ink_in.set_sample(ink);
}

void FilmSpan::outs_from_ins() {
    key_out = key_in;
    ink_out = ink_in;
    set_length(length);
}

Vector<FilmRow> film_rows(const chgdb& table) {
    FilmReader reader(table.film_std());
    Vector<FilmRow> rows;
    const unsigned count = table.get_num_records();
    rows.reserve(count);
    for (unsigned index = 0; index < count; ++index)
        rows.push_back(film_row(reader, *table.get_record(index)));
    return rows;
}

FilmByKeyOut::FilmByKeyOut(const Vector<FilmRow>& rows) : rows_(rows), outs_(rows.size()) {
    while (leaves_ < rows.size())
        leaves_ *= 2;
    last_.assign(2 * leaves_, no_row);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        LabelPoint out = rows[row].span.key_out;
        put_text(outs_[row].text, out.get_string());
        if (rows[row].is_film()) last_[leaves_ + row] = row;
    }
    for (std::size_t node = leaves_ - 1; node > 0; --node)
        last_[node] = later_end(last_[2 * node], last_[2 * node + 1]);
}

std::size_t FilmByKeyOut::later_end(std::size_t a, std::size_t b) const {
    if (a == no_row) return b;
    if (b == no_row) return a;
    return ascii::compare(outs_[a].text, outs_[b].text) < 0 ? b : a;
}

bool FilmByKeyOut::ends_ahead(std::size_t row, const char* key) const {
    return row == no_row || ascii::compare(outs_[row].text, key) < 0;
}

// Up from the leaf until a tree to the right holds such a row, then down to its first.
std::size_t FilmByKeyOut::first_not_ahead(std::size_t from, const char* key) const {
    if (from >= rows_.size()) return no_row;
    std::size_t node = leaves_ + from;
    while (ends_ahead(last_[node], key)) {
        while (node % 2 == 1)
            node /= 2;
        if (node == 0) return no_row;
        ++node;
    }
    while (node < leaves_) {
        node *= 2;
        if (ends_ahead(last_[node], key)) ++node;
    }
    return node - leaves_;
}

const FilmSpan* FilmByKeyOut::first_meeting(FilmSpan& span, std::size_t from) const {
    const std::size_t row = first_not_ahead(from, span.key_in.get_string());
    if (row == no_row) return nullptr;
    const FilmSpan& found = rows_[row].span;
    LabelPoint found_in = found.key_in;
    if (ascii::compare(found_in.get_string(), span.key_out.get_string()) > 0) return nullptr;
    // Texts of different rolls or lengths may stand in an order that their samples don't.
    const bool meets = span.key_start() < found.key_end() && found.key_start() < span.key_end();
    return meets && found.key_start() < found.key_end() ? &found : nullptr;
}
