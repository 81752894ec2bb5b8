// Lanes that go along the lines of a page, as a reel on a bench; bands tie two lanes.
//
//     feet      0     10    20
//     names     |      Anna         of short film, tied to it
//     lane    |  40/1  | |  41/2 |
//     marks   ==== optical 1
//                 \        \        bands
//     lane     |  40/1  |  41/2 |

#include "documents/sketch_draft.h"

#include <algorithm>

namespace documents {
namespace {

constexpr std::int64_t film_height = pixels(34), ruler_height = pixels(26), caption_height = pixels(18),
                       name_row = pixels(14), mark_row = pixels(15), bar_row = pixels(23), bar_height = pixels(5),
                       lane_gap = pixels(14), band_height = pixels(64), margin = pixels(2);
constexpr std::size_t most_name_rows = 3, most_mark_rows = 8;

/// A lane on one line of the page.
struct LaneLine {
    std::vector<const DrawnPiece*> pieces;
    std::vector<const DrawnTransition*> transitions;
    std::vector<const DrawnBand*> bands; ///< down to the next lane
    std::vector<const DrawnMark*> marks;
    std::int64_t top = 0, bottom = 0; ///< of the film
};

/// Text that is to be set ahead of its row being known.
struct RowText {
    int row = 0;
    SketchText text;
    std::int64_t leader = -1; ///< x of the film that it belongs to; -1: none
};

class AlongSketch {
public:
    AlongSketch(const Drawing& drawing, std::int64_t units_of_frame, const SketchOptions& options)
        : drawing_(drawing), unit_(units_of_frame),
          frames_(std::max<std::int64_t>(pixels(options.width) / units_of_frame, 1)),
          stretches_(stretches_of(drawing, frames_)),
          lines_(stretches_.size(), std::vector<LaneLine>(drawing.lanes.size())) {}

    Sketch run() {
        gather();
        sketch_.width = std::max(2 * margin + stretches_.front().length() * unit_, captions_width());
        for (std::size_t i = 0; i < stretches_.size(); ++i)
            draw_line(i);
        return std::move(sketch_);
    }

private:
    template <class Drawn, class Into>
    void gather(const std::vector<Drawn>& all, Stretch (*stretch_of)(const Drawn&), Into into) {
        for (const Drawn& drawn : all) {
            const Places places = places_of(drawing_, stretch_of(drawn), frames_);
            for (std::size_t i = places.first; i <= places.last; ++i)
                into(lines_[i], drawn);
        }
    }
    template <class Drawn> static Stretch over(const Drawn& drawn) {
        return {drawn.start, drawn.start + std::max<std::int64_t>(drawn.length, 1)};
    }
    void gather() {
        using Lanes = std::vector<LaneLine>;
        gather<DrawnPiece>(drawing_.pieces, over, [](Lanes& lanes, const DrawnPiece& piece) {
            lanes[static_cast<std::size_t>(piece.lane)].pieces.push_back(&piece);
        });
        gather<DrawnTransition>(drawing_.transitions, over, [](Lanes& lanes, const DrawnTransition& transition) {
            lanes[static_cast<std::size_t>(transition.from)].transitions.push_back(&transition);
        });
        gather<DrawnMark>(drawing_.marks, over, [](Lanes& lanes, const DrawnMark& mark) {
            lanes[static_cast<std::size_t>(mark.lane)].marks.push_back(&mark);
        });
        const auto put_band = [](Lanes& lanes, const DrawnBand& band) {
            std::vector<const DrawnBand*>& bands = lanes[static_cast<std::size_t>(band.lane)].bands;
            if (bands.empty() || bands.back() != &band) bands.push_back(&band);
        };
        for (const DrawnBand& band : drawing_.bands) {
            for (const std::int64_t begin : {band.from, band.to}) {
                const Places places = places_of(drawing_, {begin, begin + band.length}, frames_);
                for (std::size_t i = places.first; i <= places.last; ++i)
                    put_band(lines_[i], band);
            }
        }
    }

    std::int64_t captions_width() const {
        std::int64_t width = 0;
        for (const DrawnLane& lane : drawing_.lanes)
            width = std::max(width, 2 * margin + width_of(lane.name, Letters::bold, name_size) +
                                        width_of("  " + lane.about, Letters::sans, detail_size));
        return width;
    }

    std::int64_t x(std::size_t i, std::int64_t frame) const { return margin + (frame - stretches_[i].begin) * unit_; }

    void draw_line(std::size_t i) {
        sketch_.parts.emplace_back();
        draw_ruler(i);
        std::int64_t y = ruler_height;
        std::vector<LaneLine>& lanes = lines_[i];
        for (std::size_t lane = 0; lane < lanes.size(); ++lane) {
            y = draw_lane(i, lane, y);
            if (lane + 1 < lanes.size()) y = std::max(y, lanes[lane].bottom + gap_below(lanes, lane)) + lane_gap;
        }
        for (std::size_t lane = 0; lane + 1 < lanes.size(); ++lane)
            draw_bands(i, lane);
        part(i).height = y + pixels(8);
    }

    static std::int64_t gap_below(const std::vector<LaneLine>& lanes, std::size_t lane) {
        return lanes[lane].bands.empty() ? 0 : band_height - caption_height;
    }

    void draw_ruler(std::size_t i) {
        const std::int64_t y = ruler_height - pixels(8);
        bool first = true;
        for (const RulerMark& mark : ruler_marks(drawing_.film, stretches_[i], unit_, pixels(56))) {
            const std::int64_t at = x(i, mark.frame);
            part(i).shapes.push_back(line({at, y - pixels(6)}, {at, y}, Pen::thin));
            const bool last = at + pixels(30) > sketch_.width;
            const std::string text = first && !last ? mark.text + ' ' + ruler_name(drawing_.film) : mark.text;
            first = false;
            put(i, last ? at - pixels(3) : at + pixels(3), y - pixels(1), last ? Anchor::end : Anchor::start, text,
                Letters::mono, ruler_size, true);
        }
    }

    /// The y below all that belongs to the lane.
    std::int64_t draw_lane(std::size_t i, std::size_t lane, std::int64_t y) {
        LaneLine& of = lines_[i][lane];
        if (!drawing_.lanes[lane].name.empty()) {
            y += caption_height;
            put_caption(i, drawing_.lanes[lane], y - pixels(6));
        }
        y = put_names_above(i, of, y);
        of.top = y;
        of.bottom = y + film_height;
        for (const DrawnPiece* piece : of.pieces)
            draw(i, of, *piece);
        for (const DrawnTransition* transition : of.transitions)
            draw(i, of, *transition);
        return put_marks(i, of);
    }

    void put_caption(std::size_t i, const DrawnLane& lane, std::int64_t base) {
        put(i, margin, base, Anchor::start, lane.name, Letters::bold, name_size);
        const std::string about = i == 0 ? lane.about : "from " + position_text(drawing_.film, stretches_[i].begin);
        put(i, margin + width_of(lane.name + "  ", Letters::bold, name_size), base, Anchor::start, about, Letters::sans,
            detail_size, true);
    }

    Stretch drawn_of(std::size_t i, std::int64_t start, std::int64_t length) const {
        return shared({start, start + length}, stretches_[i]);
    }
    std::int64_t middle_of(std::size_t i, const Stretch& drawn) const {
        return (x(i, drawn.begin) + x(i, drawn.end)) / 2;
    }

    bool fits(const std::string& name, const Stretch& drawn) const {
        return width_of(name, Letters::bold, name_size) + pixels(6) <= drawn.length() * unit_;
    }

    // A piece is named once, where most of it lies: here or on the line behind.
    bool named_here(std::size_t i, const DrawnPiece& piece, const Stretch& drawn) const {
        if (piece.name.empty()) return false;
        const std::int64_t before = stretches_[i].begin - piece.start;
        const std::int64_t behind = piece.start + piece.length - stretches_[i].end;
        if (before <= 0 && behind <= 0) return true;
        return fits(piece.name, drawn) ||
               (behind <= 0 ? drawn.length() > before : before <= 0 && drawn.length() >= behind);
    }

    /// Keeps a text of that width on the line.
    std::int64_t kept(std::int64_t middle, std::int64_t width) const {
        return std::max(std::min(middle, sketch_.width - width / 2), width / 2);
    }

    std::int64_t put_names_above(std::size_t i, LaneLine& of, std::int64_t y) {
        TextRows rows(most_name_rows);
        std::vector<RowText> texts;
        for (const DrawnPiece* piece : of.pieces) {
            const Stretch drawn = drawn_of(i, piece->start, piece->length);
            if (!named_here(i, *piece, drawn) || fits(piece->name, drawn)) continue;
            const std::string name = shortened(piece->name, Letters::bold, pixels(120) * 1000 / detail_size);
            const std::int64_t width = width_of(name, Letters::bold, detail_size) + pixels(6);
            const std::int64_t film = middle_of(i, drawn), middle = kept(film, width);
            const int row = rows.take(middle - width / 2, middle + width / 2);
            if (row < 0) continue;
            texts.push_back({row, text_at({middle, 0}, Anchor::middle, name, Letters::bold, detail_size), film});
        }
        const std::int64_t bottom = y + static_cast<std::int64_t>(rows.count()) * name_row;
        for (RowText& text : texts) {
            text.text.at.y = bottom - text.row * name_row - pixels(4);
            part(i).shapes.push_back(line({text.leader, text.text.at.y}, {text.leader, bottom}, Pen::fine));
            part(i).texts.push_back(std::move(text.text));
        }
        return bottom;
    }

    void draw(std::size_t i, const LaneLine& of, const DrawnPiece& piece) {
        const Stretch drawn = drawn_of(i, piece.start, piece.length);
        if (drawn.empty()) return;
        const bool spacer = piece.stuff == Stuff::spacer;
        const std::int64_t height = spacer ? film_height / 3 : film_height;
        part(i).shapes.push_back(piece_shape(rectangle(x(i, drawn.begin), of.top + (film_height - height) / 2,
                                                       drawn.length() * unit_, height, Ink::none, Pen::none),
                                             piece, drawn));
        if (!named_here(i, piece, drawn) || !fits(piece.name, drawn)) return;
        SketchText name = text_at({middle_of(i, drawn), of.top + film_height / 2 + pixels(4)}, Anchor::middle,
                                  piece.name, Letters::bold, name_size);
        name.light = piece.stuff == Stuff::black;
        part(i).texts.push_back(std::move(name));
    }

    void draw(std::size_t i, const LaneLine& of, const DrawnTransition& transition) {
        const Stretch whole{transition.start, transition.start + transition.length};
        const Stretch drawn = drawn_of(i, transition.start, transition.length);
        if (drawn.empty()) return;
        SketchShape frame =
            rectangle(x(i, drawn.begin), of.top, drawn.length() * unit_, film_height, Ink::white, Pen::thin);
        frame.of = {"transition", transition.film, transition.from, drawn.begin, drawn.length(), transition.name};
        part(i).shapes.push_back(std::move(frame));
        const auto y = [&](std::int64_t at) { return of.bottom - film_height * (at - whole.begin) / whole.length(); };
        part(i).shapes.push_back(line({x(i, drawn.begin), y(drawn.begin)}, {x(i, drawn.end), y(drawn.end)}, Pen::film));
    }

    std::int64_t put_marks(std::size_t i, const LaneLine& of) {
        TextRows bars(most_mark_rows), words(most_mark_rows);
        std::vector<RowText> texts;
        std::int64_t y = of.bottom;
        std::size_t left_out = 0;
        for (const DrawnMark* mark : of.marks)
            if (mark->bar) put_bar(i, of, *mark, bars, left_out);
        y += static_cast<std::int64_t>(bars.count()) * bar_row;
        for (const bool needed : {true, false})
            for (const DrawnMark* mark : of.marks)
                if (!mark->bar && mark->needed == needed) put_words(i, y, *mark, bars, words, left_out);
        y += static_cast<std::int64_t>(words.count()) * mark_row;
        if (left_out > 0) {
            y += mark_row;
            put(i, margin, y - pixels(4), Anchor::start, std::to_string(left_out) + " more have no room here",
                Letters::sans, detail_size, true);
        }
        return y;
    }

    void put_bar(std::size_t i, const LaneLine& of, const DrawnMark& mark, TextRows& rows, std::size_t& left_out) {
        const Stretch drawn = drawn_of(i, mark.start, mark.length);
        if (drawn.empty()) return;
        const bool begins = drawn.begin == mark.start;
        const std::string text = begins ? mark.text : "";
        const std::int64_t width = width_of(text, Letters::sans, detail_size) + pixels(6);
        const std::int64_t left = x(i, drawn.begin), right = x(i, drawn.end);
        const std::int64_t text_left = std::max<std::int64_t>(0, std::min(left, sketch_.width - width));
        const int row = rows.take(std::min(left, text_left), std::max(right, text_left + width));
        if (row < 0) {
            ++left_out;
            return;
        }
        const std::int64_t y = of.bottom + row * bar_row + pixels(4);
        SketchShape bar = rectangle(left, y, right - left, bar_height, Ink::black, Pen::none);
        bar.of = {"optical", mark.film, mark.lane, drawn.begin, drawn.length(), mark.text};
        part(i).shapes.push_back(std::move(bar));
        put(i, text_left, y + bar_height + pixels(11), Anchor::start, text, Letters::sans, detail_size);
    }

    /// In the row of a bar's text where it is free, else below all bars, from `y` on.
    void put_words(std::size_t i, std::int64_t y, const DrawnMark& mark, TextRows& bars, TextRows& rows,
                   std::size_t& left_out) {
        if (mark.start < stretches_[i].begin) return;
        const Stretch drawn = drawn_of(i, mark.start, std::max<std::int64_t>(mark.length, 1));
        const std::string shown = shortened(mark.text, Letters::sans, pixels(220) * 1000 / detail_size);
        const std::int64_t width = width_of(shown, Letters::sans, detail_size) + pixels(8);
        const std::int64_t middle = kept(middle_of(i, drawn), width);
        const std::int64_t left = middle - width / 2, right = middle + width / 2;
        const int beside = bars.take_existing(left, right);
        const int row = beside >= 0 ? 0 : rows.take(left, right);
        if (row < 0) {
            left_out += mark.needed ? 1 : 0;
            return;
        }
        const std::int64_t base =
            beside >= 0 ? y - (static_cast<std::int64_t>(bars.count()) - beside) * bar_row + bar_height + pixels(15)
                        : y + row * mark_row + pixels(12);
        put(i, middle, base, Anchor::middle, shown, Letters::sans, detail_size, !mark.needed);
    }

    void draw_bands(std::size_t i, std::size_t lane) {
        const LaneLine &above = lines_[i][lane], &below = lines_[i][lane + 1];
        std::vector<SketchShape> shapes;
        for (const DrawnBand* band : above.bands)
            draw(i, *band, above.bottom, below.top, shapes);
        part(i).shapes.insert(part(i).shapes.begin(), std::make_move_iterator(shapes.begin()),
                              std::make_move_iterator(shapes.end()));
    }

    void draw(std::size_t i, const DrawnBand& band, std::int64_t top, std::int64_t bottom,
              std::vector<SketchShape>& shapes) {
        const std::int64_t by = band.to - band.from;
        const Stretch old = drawn_of(i, band.from, band.length), now = drawn_of(i, band.to, band.length);
        const Stretch both = shared(old, {now.begin - by, now.end - by});
        if (!old.empty() && !now.empty() && !both.empty()) {
            SketchShape shape;
            shape.points = {{x(i, both.begin), top},
                            {x(i, both.end), top},
                            {x(i, both.end + by), bottom},
                            {x(i, both.begin + by), bottom}};
            shape.ink = Ink::grey;
            shape.pen = Pen::fine;
            shape.of = {"band", "", band.lane, both.begin, both.length(), ""};
            shapes.push_back(std::move(shape));
        }
        const std::int64_t lean = by > 0 ? pixels(8) : -pixels(8);
        for (const Stretch& rest : rest_of(old, both))
            shapes.push_back(stub(x(i, rest.begin), x(i, rest.end), top, top + pixels(12), lean));
        for (const Stretch& rest : rest_of(now, {both.begin + by, both.end + by}))
            shapes.push_back(stub(x(i, rest.begin), x(i, rest.end), bottom, bottom - pixels(12), -lean));
    }

    /// What of a stretch another doesn't cover.
    static std::vector<Stretch> rest_of(const Stretch& whole, const Stretch& covered) {
        if (whole.empty()) return {};
        if (covered.empty()) return {whole};
        std::vector<Stretch> rest;
        if (whole.begin < covered.begin) rest.push_back({whole.begin, covered.begin});
        if (covered.end < whole.end) rest.push_back({covered.end, whole.end});
        return rest;
    }
    /// The beginning of a band that goes to another line.
    static SketchShape stub(std::int64_t left, std::int64_t right, std::int64_t y, std::int64_t end,
                            std::int64_t lean) {
        SketchShape shape;
        shape.points = {{left, y}, {right, y}, {right + lean, end}, {left + lean, end}};
        shape.ink = Ink::grey;
        shape.pen = Pen::none;
        return shape;
    }

    static SketchText text_at(const SketchPoint& at, Anchor anchor, const std::string& text, Letters letters,
                              std::int64_t size) {
        SketchText words;
        words.at = at;
        words.anchor = anchor;
        words.letters = letters;
        words.size = size;
        words.text = text;
        return words;
    }
    void put(std::size_t i, std::int64_t at_x, std::int64_t y, Anchor anchor, const std::string& text, Letters letters,
             std::int64_t size, bool grey = false) {
        if (text.empty()) return;
        SketchText words = text_at({at_x, y}, anchor, text, letters, size);
        words.grey = grey;
        part(i).texts.push_back(std::move(words));
    }

    SketchPart& part(std::size_t i) { return sketch_.parts[i]; }

    const Drawing& drawing_;
    const std::int64_t unit_, frames_;
    const std::vector<Stretch> stretches_;
    std::vector<std::vector<LaneLine>> lines_; ///< by line, then lane
    Sketch sketch_;
};

} // namespace

Sketch sketch_along(const Drawing& drawing, std::int64_t units_of_frame, const SketchOptions& options) {
    return AlongSketch(drawing, units_of_frame, options).run();
}

} // namespace documents
