// Lanes that go down the page, as rolls that run through a printer.
//
//     feet     A roll                                   B roll
//     3 --   KJ 51 2040 1403+00 |    | 41/2               :  spacer 48
//     4 --                      | \  |....................|  /|
//              key numbers      |  \ |   Dissolve 24      | / | name

#include "documents/sketch_draft.h"

#include <algorithm>
#include <map>

namespace documents {
namespace {

constexpr std::int64_t film_width = pixels(60), spacer_width = pixels(16), line_height = pixels(15),
                       head_height = pixels(36), gap = pixels(9), widest_name = pixels(150);

struct LaneColumns {
    std::int64_t film = 0; ///< left edge
    std::int64_t names = 0;
    std::int64_t between = 0; ///< middle of what is told between this lane and the next
    std::int64_t right() const { return film + film_width; }
    std::int64_t middle() const { return film + film_width / 2; }
};

/// Lines of text at one side of a lane, before they are moved apart.
struct SideText {
    std::int64_t centre = 0;
    std::vector<SketchText> lines; ///< at their x; their y comes later
    std::int64_t leader = 0;       ///< x of the film's edge that they belong to; 0: none
};

class DownSketch {
public:
    DownSketch(const Drawing& drawing, std::int64_t units_of_frame, const SketchOptions& options)
        : drawing_(drawing), unit_(units_of_frame),
          frames_(std::max<std::int64_t>(pixels(options.height) / units_of_frame, 1)),
          stretches_(stretches_of(drawing, frames_)), columns_(drawing.lanes.size()) {}

    Sketch run() {
        find_columns();
        sketch_.parts.resize(stretches_.size());
        texts_.resize(stretches_.size());
        for (std::size_t i = 0; i < stretches_.size(); ++i)
            draw_frame_of(i);
        for (const DrawnPiece& piece : drawing_.pieces)
            draw(piece);
        for (const DrawnTransition& transition : drawing_.transitions)
            draw(transition);
        for (std::size_t i = 0; i < stretches_.size(); ++i)
            place_texts(i);
        return std::move(sketch_);
    }

private:
    std::int64_t widest(int lane, std::int64_t (*of)(const DrawnPiece&)) const {
        std::int64_t width = 0;
        for (const DrawnPiece& piece : drawing_.pieces)
            if (piece.lane == lane) width = std::max(width, of(piece));
        return width;
    }
    static std::int64_t numbers_width(const DrawnPiece& piece) {
        std::int64_t width = 0;
        for (const DrawnNumber& number : piece.numbers)
            width = std::max(width, width_of(number.text, Letters::mono, number_size));
        return width;
    }
    static std::int64_t names_width(const DrawnPiece& piece) {
        std::int64_t width = width_of(piece.name, Letters::bold, name_size);
        for (const std::string& detail : piece.details)
            width = std::max(width, width_of(detail, Letters::sans, detail_size));
        return std::min(width, widest_name);
    }
    std::int64_t transitions_width(int lane) const {
        std::int64_t width = 0;
        for (const DrawnTransition& transition : drawing_.transitions)
            if (std::min(transition.from, transition.to) == lane && transition.from != transition.to)
                width = std::max({width, width_of(transition.name, Letters::bold, name_size),
                                  width_of(transition.detail, Letters::sans, detail_size)});
        return std::min(width, widest_name);
    }

    void find_columns() {
        std::int64_t x = pixels(66);
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            const int lane = static_cast<int>(i);
            LaneColumns& at = columns_[i];
            at.film = x + widest(lane, numbers_width) + gap;
            at.names = at.right() + gap;
            x = at.names + std::max(widest(lane, names_width), pixels(40));
            const std::int64_t between = i + 1 < columns_.size() ? transitions_width(lane) : 0;
            at.between = x + gap + between / 2;
            x += between > 0 ? between + 2 * gap : gap;
        }
        sketch_.width = x;
    }

    std::int64_t y(std::size_t part, std::int64_t frame) const {
        return head_height + (frame - stretches_[part].begin) * unit_;
    }

    static SketchText text_of(std::int64_t x, Anchor anchor, const std::string& text, Letters letters,
                              std::int64_t size) {
        SketchText words;
        words.at.x = x;
        words.anchor = anchor;
        words.letters = letters;
        words.size = size;
        words.text = letters == Letters::mono ? text : shortened(text, letters, widest_name * 1000 / size);
        return words;
    }
    static SketchText grey(SketchText text) {
        text.grey = true;
        return text;
    }

    // Heads of the lanes, and the ruler.
    void draw_frame_of(std::size_t i) {
        SketchPart& part = sketch_.parts[i];
        part.height = y(i, stretches_[i].end) + pixels(12);
        SketchText head = grey(text_of(pixels(44), Anchor::end, ruler_name(drawing_.film), Letters::sans, ruler_size));
        head.at.y = pixels(16);
        part.texts.push_back(head);
        for (std::size_t lane = 0; lane < columns_.size(); ++lane) {
            SketchText name =
                text_of(columns_[lane].middle(), Anchor::middle, drawing_.lanes[lane].name, Letters::bold, name_size);
            name.at.y = pixels(16);
            part.texts.push_back(name);
        }
        for (const RulerMark& mark : ruler_marks(drawing_.film, stretches_[i], unit_, pixels(26))) {
            const std::int64_t at = y(i, mark.frame);
            part.shapes.push_back(line({pixels(49), at}, {pixels(60), at}, Pen::thin));
            SketchText text = text_of(pixels(44), Anchor::end, mark.text, Letters::mono, ruler_size);
            text.at.y = at + ruler_size / 3;
            part.texts.push_back(text);
        }
    }

    void draw(const DrawnPiece& piece) {
        const Stretch whole{piece.start, piece.start + piece.length};
        const Places places = places_of(drawing_, whole, frames_);
        for (std::size_t i = places.first; i <= places.last; ++i) {
            const Stretch drawn = shared(whole, stretches_[i]);
            const std::int64_t width = is_narrow(piece) ? spacer_width : film_width;
            const LaneColumns& at = column(piece.lane);
            sketch_.parts[i].shapes.push_back(piece_shape(rectangle(at.middle() - width / 2, y(i, drawn.begin), width,
                                                                    drawn.length() * unit_, Ink::none, Pen::none),
                                                          piece, drawn));
        }
        if (places.first <= places.last) tell(piece, places);
        for (const DrawnNumber& number : piece.numbers)
            tell(number, piece.lane, number.edge > piece.start);
    }

    static bool is_narrow(const DrawnPiece& piece) {
        return piece.stuff == Stuff::spacer || piece.stuff == Stuff::effect;
    }

    static std::vector<std::string> lines_beside(const DrawnPiece& piece) {
        std::vector<std::string> lines{piece.name};
        lines.insert(lines.end(), piece.details.begin(), piece.details.end());
        return lines;
    }

    void tell(const DrawnPiece& piece, const Places& places) {
        const LaneColumns& at = column(piece.lane);
        const Stretch first = shared({piece.start, piece.start + piece.length}, stretches_[places.first]);
        const std::int64_t top = y(places.first, first.begin), length = first.length() * unit_;
        SideText side;
        if (is_narrow(piece)) {
            for (const std::string& told : lines_beside(piece))
                side.lines.push_back(
                    grey(text_of(at.middle() + spacer_width, Anchor::start, told, Letters::sans, detail_size)));
            side.centre = top + length / 2;
        } else {
            side.lines.push_back(text_of(at.names, Anchor::start, piece.name, Letters::bold, name_size));
            for (const std::string& detail : piece.details)
                side.lines.push_back(grey(text_of(at.names, Anchor::start, detail, Letters::sans, detail_size)));
            const auto height = static_cast<std::int64_t>(side.lines.size()) * line_height;
            side.centre = std::min(top + pixels(6) + height / 2, top + std::max(length / 2, height / 2));
        }
        texts_[places.first][{piece.lane, 1}].push_back(std::move(side));
    }

    /// A number at the upper edge of a stretch lies with what is behind it, at the lower one with what is ahead.
    void tell(const DrawnNumber& number, int lane, bool lower) {
        const Stretch beside = lower ? Stretch{number.edge - 1, number.edge} : Stretch{number.edge, number.edge + 1};
        const Places places = places_of(drawing_, beside, frames_);
        if (places.first > places.last) return;
        const LaneColumns& at = column(lane);
        SideText side;
        side.centre = y(places.first, number.edge);
        side.leader = at.film;
        side.lines.push_back(text_of(at.film - gap, Anchor::end, number.text, Letters::mono, number_size));
        texts_[places.first][{lane, 0}].push_back(std::move(side));
    }

    void draw(const DrawnTransition& transition) {
        const Stretch whole{transition.start, transition.start + transition.length};
        const Places places = places_of(drawing_, whole, frames_);
        for (std::size_t i = places.first; i <= places.last; ++i) {
            const Stretch drawn = shared(whole, stretches_[i]);
            draw_diagonal(i, drawn, whole, transition, transition.from);
            if (transition.to != transition.from) draw_diagonal(i, drawn, whole, transition, transition.to);
        }
        if (places.first > places.last) return;
        tie(places.first, whole.begin, transition);
        tie(places.last, whole.end, transition);
        tell(transition, places.first, shared(whole, stretches_[places.first]));
    }

    // Left lanes fall to the right, right ones to the left.
    void draw_diagonal(std::size_t i, const Stretch& drawn, const Stretch& whole, const DrawnTransition& transition,
                       int lane) {
        const LaneColumns& at = column(lane);
        const auto x = [&](std::int64_t frame) {
            const std::int64_t along = film_width * (frame - whole.begin) / whole.length();
            return lane % 2 == 0 ? at.film + along : at.right() - along;
        };
        SketchShape shape = line({x(drawn.begin), y(i, drawn.begin)}, {x(drawn.end), y(i, drawn.end)}, Pen::film);
        shape.light = is_black(lane, drawn.begin);
        shape.of = {"transition", transition.film, lane, drawn.begin, drawn.length(), transition.name};
        sketch_.parts[i].shapes.push_back(std::move(shape));
    }

    bool is_black(int lane, std::int64_t frame) const {
        return std::any_of(drawing_.pieces.begin(), drawing_.pieces.end(), [lane, frame](const DrawnPiece& piece) {
            return piece.lane == lane && piece.stuff == Stuff::black && piece.start <= frame &&
                   frame < piece.start + piece.length;
        });
    }

    void tie(std::size_t i, std::int64_t frame, const DrawnTransition& transition) {
        if (transition.from == transition.to) return;
        const LaneColumns& left = column(std::min(transition.from, transition.to));
        const LaneColumns& right = column(std::max(transition.from, transition.to));
        sketch_.parts[i].shapes.push_back(line({left.right(), y(i, frame)}, {right.film, y(i, frame)}, Pen::dotted));
    }

    void tell(const DrawnTransition& transition, std::size_t i, const Stretch& drawn) {
        const int lane = std::min(transition.from, transition.to);
        const bool alone = transition.from == transition.to;
        const std::int64_t x = alone ? column(lane).names : column(lane).between;
        const Anchor anchor = alone ? Anchor::start : Anchor::middle;
        SideText side;
        side.lines.push_back(text_of(x, anchor, transition.name, Letters::bold, name_size));
        if (!transition.detail.empty())
            side.lines.push_back(grey(text_of(x, anchor, transition.detail, Letters::sans, detail_size)));
        side.centre = y(i, drawn.begin) + drawn.length() * unit_ / 2;
        texts_[i][{lane, alone ? 1 : 2}].push_back(std::move(side));
    }

    void place_texts(std::size_t i) {
        for (auto& [place, sides] : texts_[i]) {
            std::stable_sort(sides.begin(), sides.end(),
                             [](const SideText& a, const SideText& b) { return a.centre < b.centre; });
            std::vector<Wanted> wanted;
            for (const SideText& side : sides)
                wanted.push_back({side.centre, static_cast<std::int64_t>(side.lines.size()) * line_height});
            const std::vector<std::int64_t> centres = spread(wanted, head_height - line_height / 2);
            for (std::size_t k = 0; k < sides.size(); ++k)
                put(sketch_.parts[i], sides[k], centres[k]);
        }
    }

    static void put(SketchPart& part, const SideText& side, std::int64_t centre) {
        const auto height = static_cast<std::int64_t>(side.lines.size()) * line_height;
        const bool moved = std::abs(centre - side.centre) > pixels(2);
        if (side.leader > 0 && moved)
            part.shapes.push_back(line({side.leader - gap + pixels(2), centre}, {side.leader, side.centre}, Pen::fine));
        if (side.leader > 0) put_clear(part, side, centre);
        std::int64_t base = centre - height / 2 + pixels(11);
        for (SketchText text : side.lines) {
            text.at.y = base;
            base += line_height;
            if (!text.text.empty()) part.texts.push_back(std::move(text));
        }
        part.height = std::max(part.height, centre + height / 2 + pixels(4));
    }

    /// Takes the dotted lines away from under a number: a halo leaves them between its groups.
    static void put_clear(SketchPart& part, const SideText& side, std::int64_t centre) {
        const std::int64_t width = width_of(side.lines.front().text, Letters::mono, number_size) + pixels(4);
        part.shapes.push_back(rectangle(side.leader - gap - width + pixels(2), centre - number_size / 2, width,
                                        number_size, Ink::white, Pen::none));
    }

    const LaneColumns& column(int lane) const { return columns_[static_cast<std::size_t>(lane)]; }

    const Drawing& drawing_;
    const std::int64_t unit_, frames_;
    const std::vector<Stretch> stretches_;
    std::vector<LaneColumns> columns_;
    /// By part; then by lane and side: numbers, names, what is told between lanes.
    std::vector<std::map<std::pair<int, int>, std::vector<SideText>>> texts_;
    Sketch sketch_;
};

} // namespace

Sketch sketch_down(const Drawing& drawing, std::int64_t units_of_frame, const SketchOptions& options) {
    return DownSketch(drawing, units_of_frame, options).run();
}

} // namespace documents
