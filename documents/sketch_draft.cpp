#include "documents/sketch_draft.h"

#include <algorithm>

namespace documents {
namespace {

/// Neighbours that lie as one block: where its first begins without what lies ahead of it.
struct Block {
    std::int64_t sum = 0, count = 0;
    std::int64_t start() const { return sum / count - (sum % count < 0 ? 1 : 0); }
};

constexpr Ink inks[] = {Ink::white, Ink::dots, Ink::hatched, Ink::crossed};

const char* kind_of(Stuff stuff) {
    switch (stuff) {
    case Stuff::film:
        return "film";
    case Stuff::spacer:
        return "spacer";
    case Stuff::black:
        return "black";
    case Stuff::effect:
        return "effect";
    }
    return "";
}

/// 1, 2, 5, 10, 20, 50, ...
std::int64_t next_step(std::int64_t step) {
    std::int64_t digit = step;
    while (digit >= 10)
        digit /= 10;
    return digit == 2 ? step / 2 * 5 : step * 2;
}

} // namespace

Stretch shared(const Stretch& a, const Stretch& b) { return {std::max(a.begin, b.begin), std::min(a.end, b.end)}; }

std::vector<Stretch> stretches_of(const Drawing& drawing, std::int64_t frames) {
    std::vector<Stretch> stretches;
    for (std::int64_t at = drawing.begin; at < drawing.end; at += frames)
        stretches.push_back({at, std::min(at + frames, drawing.end)});
    if (stretches.empty()) stretches.push_back({drawing.begin, drawing.begin});
    return stretches;
}

Places places_of(const Drawing& drawing, const Stretch& over, std::int64_t frames) {
    const Stretch drawn = shared(over, {drawing.begin, drawing.end});
    if (drawn.empty()) return {};
    return {static_cast<std::size_t>((drawn.begin - drawing.begin) / frames),
            static_cast<std::size_t>((drawn.end - 1 - drawing.begin) / frames)};
}

std::int64_t width_of(const std::string& text, Letters letters, std::int64_t size) {
    return (text_width(text, letters) * size + 999) / 1000;
}

std::vector<std::int64_t> spread(const std::vector<Wanted>& wanted, std::int64_t top) {
    std::vector<Block> blocks;
    std::int64_t ahead = 0;
    for (const Wanted& text : wanted) {
        blocks.push_back({text.centre - text.height / 2 - ahead, 1});
        ahead += text.height;
        while (blocks.size() > 1 && blocks[blocks.size() - 2].start() > blocks.back().start()) {
            const Block last = blocks.back();
            blocks.pop_back();
            blocks.back().sum += last.sum;
            blocks.back().count += last.count;
        }
    }
    std::vector<std::int64_t> centres;
    ahead = 0;
    for (const Block& block : blocks)
        for (std::int64_t i = 0; i < block.count; ++i) {
            const std::int64_t height = wanted[centres.size()].height;
            centres.push_back(std::max(block.start(), top) + ahead + height / 2);
            ahead += height;
        }
    return centres;
}

int TextRows::take(std::int64_t left, std::int64_t right, std::size_t most) {
    const auto meets = [left, right](const auto& text) { return text.first < right && left < text.second; };
    for (std::size_t row = 0; row < most; ++row) {
        if (row == taken_.size()) taken_.emplace_back();
        if (std::any_of(taken_[row].begin(), taken_[row].end(), meets)) continue;
        taken_[row].emplace_back(left, right);
        return static_cast<int>(row);
    }
    return -1;
}

std::vector<RulerMark> ruler_marks(label_t film, const Stretch& over, std::int64_t units_of_frame, std::int64_t least) {
    FeetOfFilm feet = feet_of(film);
    if (!feet) feet = {1, 1};
    std::int64_t step = 1;
    while (feet.first_frame(step) * units_of_frame < least)
        step = next_step(step);
    std::vector<RulerMark> marks;
    const std::int64_t before = feet.foot_of(over.begin) / step * step;
    for (std::int64_t foot = before; feet.first_frame(foot) <= over.end; foot += step)
        if (feet.first_frame(foot) >= over.begin) marks.push_back({feet.first_frame(foot), std::to_string(foot)});
    return marks;
}

const char* ruler_name(label_t film) { return feet_of(film) ? "feet" : "frames"; }

SketchShape rectangle(std::int64_t x, std::int64_t y, std::int64_t width, std::int64_t height, Ink ink, Pen pen) {
    SketchShape shape;
    shape.points = {{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}};
    shape.ink = ink;
    shape.pen = pen;
    return shape;
}

SketchShape line(const SketchPoint& from, const SketchPoint& to, Pen pen) {
    SketchShape shape;
    shape.points = {from, to};
    shape.closed = false;
    shape.pen = pen;
    return shape;
}

SketchShape piece_shape(SketchShape shape, const DrawnPiece& piece, const Stretch& drawn) {
    shape.ink = piece.stuff == Stuff::black    ? Ink::black
                : piece.stuff == Stuff::spacer ? Ink::none
                                               : inks[static_cast<int>(piece.fill)];
    shape.pen = piece.stuff == Stuff::spacer ? Pen::dashed : piece.strong ? Pen::strong : Pen::film;
    shape.of = {kind_of(piece.stuff), piece.film, piece.lane, drawn.begin, drawn.length(), piece.told};
    return shape;
}

} // namespace documents
