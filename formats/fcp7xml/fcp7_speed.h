#pragma once
// How fast an item plays its medium: the filter "timeremap".

#include "formats/fcp7xml/fcp7_values.h"

#include <vector>

namespace formats::fcp7 {

/// A stretch of an item that plays at one speed. All in the item's frames; media frames count at its rate too.
struct Piece {
    Fraction length;
    Fraction media; ///< shown at its start
    Fraction speed = 1;

    Fraction media_end() const { return media + length * speed; }
};

using Pieces = std::vector<Piece>;

/// How an item of a track turns its frames into those of its medium.
class Retime {
public:
    /// None that counts, before one is read.
    Retime() = default;
    /// `media_length` in the item's frames, where it is known; a reverse without a graph counts from there, or from the
    /// end of the subclip that the item is of.
    Retime(const Element& item, const std::optional<Fraction>& media_length, Teller& teller);

    /// What is shown from one of the item's frames to another; where they are the same, one piece without length.
    Pieces pieces(const Fraction& from, const Fraction& to) const;
    /// Whether it changes anything.
    bool counts() const { return curve_ || speed_ != Fraction(1) || point_value_ != point_when_; }

private:
    struct Key {
        Fraction when, value;
    };

    void read_keys(const Element& graph, const Element& item, Teller& teller);
    void choose_curve(const Element& item, const Element& effect, std::string_view percent, Teller& teller);
    void freeze(const Element& item, Teller& teller);
    void doubt_reverse(const Element& item, const std::optional<Fraction>& media_length, Teller& teller) const;
    void doubt_percent(const Element& item, std::string_view percent, const Fraction& speed, Teller& teller) const;
    void take_exact_speed(std::string_view percent);
    bool is_line() const;
    Fraction slope(std::size_t i) const;

    bool curve_ = false; ///< the keys count; else a line of that speed through a point
    Fraction speed_ = 1, point_when_, point_value_;
    std::vector<Key> keys_;
};

/// One piece for all of them, at their average speed.
Piece averaged(const Pieces& pieces);

} // namespace formats::fcp7
