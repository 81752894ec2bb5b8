#pragma once
// How fast an item's content runs.
//
//     time   0 . . . . 10 . . . 20       the item's own clock, on which it starts and its markers stand
//     value  0 . . . . . 20 . . 20       the clock of what it contains: twice as fast, then a freeze

#include "formats/fcpxml/fcpxml_time.h"
#include "formats/xml/xml_document.h"

#include <algorithm>
#include <string>
#include <vector>

namespace formats::fcpxml {

/// A stretch of an item over which the content's time runs straight.
struct Span {
    Fraction from, to;   ///< own time
    Fraction value;      ///< the content's time at `from`
    Fraction slope;      ///< seconds of content a second
    bool curved = false; ///< it eases in or out in between: only its ends are exact

    Fraction value_at(const Fraction& time) const { return value + (time - from) * slope; }
    Fraction lowest() const { return std::min(value, value_at(to)); }
    Fraction highest() const { return std::max(value, value_at(to)); }
};

/// A point of a speed map.
struct SpeedPoint {
    Fraction time, value;
    bool eased = false; ///< the speed changes gradually about it
};

class SpeedMap {
public:
    /// Time and value are the same.
    SpeedMap() = default;
    /// Points in order of time, two at least.
    explicit SpeedMap(std::vector<SpeedPoint> points) : points_(std::move(points)) {}

    bool identity() const { return points_.empty(); }
    /// What the map does between two times. Beyond its ends it holds the value that stands there; a hold shorter than
    /// `least_hold` is none, but a rounded time: the run beside it goes on.
    std::vector<Span> spans(const Fraction& from, const Fraction& to, const Fraction& least_hold = 0) const;
    /// Whether it says what happens between two times, but for `least_hold` at each end.
    bool covers(const Fraction& from, const Fraction& to, const Fraction& least_hold = 0) const;

private:
    std::vector<SpeedPoint> points_;
};

/// The map under a `timeMap`, all of whose times `scale` multiplies. With `fault` set it can't be used: less than two
/// points, a bad time, or times that go backward.
SpeedMap read_speed_map(const xml::Element& time_map, const Fraction& scale, std::string& fault);

} // namespace formats::fcpxml
