#include "documents/piece_looks.h"

#include "documents/film_cells.h"

#include <algorithm>

namespace documents {
namespace {

struct PatternWord {
    Fill fill;
    const char* words;
};
constexpr PatternWord pattern_words[] = {{Fill::dots, "Dots: another speed"},
                                         {Fill::hatched, "Hatched: no key number, or in doubt"},
                                         {Fill::crossed, "Crossed: wrong, or no film known"}};

Fill fill_of(const film::Piece& piece) {
    const film::Strip& strip = piece.first();
    if (!strip.has_film()) return Fill::crossed;
    if (!piece.numbered() || strip.sureness == film::Sureness::beyond) return Fill::hatched;
    return strip.speed == film::Fraction(1) ? Fill::plain : Fill::dots;
}

/// Tape and timecode of the first frame, in place of a number that the film hasn't.
std::string tape_text(const film::Strip& strip) {
    if (!strip.timecode) return strip.rolls.tape.empty() ? "" : "tape " + strip.rolls.tape;
    return (strip.rolls.tape.empty() ? "" : "tape " + strip.rolls.tape + ' ') + strip.timecode.text_at(0);
}

} // namespace

DrawnPiece looks_of(const film::Piece& piece) {
    DrawnPiece look;
    const film::Strip& strip = piece.first();
    if (piece.black()) {
        look.stuff = Stuff::black;
        look.name = "black";
        return look;
    }
    look.fill = fill_of(piece);
    look.name = strip.name;
    look.strong = look.fill == Fill::crossed;
    if (!strip.has_film()) {
        look.details.emplace_back("film not known");
    } else {
        if (!(strip.speed == film::Fraction(1))) look.details.push_back("speed " + percent_text(strip.speed));
        if (!piece.numbered()) look.details.emplace_back("no key number");
    }
    if (!piece.numbered() && !tape_text(strip).empty()) look.details.push_back(tape_text(strip));
    return look;
}

std::string patterns_of(const Drawing& drawing) {
    std::string text;
    for (const PatternWord& word : pattern_words) {
        const bool used = std::any_of(drawing.pieces.begin(), drawing.pieces.end(), [&word](const DrawnPiece& piece) {
            return piece.fill == word.fill && piece.stuff == Stuff::film;
        });
        if (used) text += (text.empty() ? "" : ". ") + std::string(word.words);
    }
    return text;
}

} // namespace documents
