#include "formats/fcp7xml/fcp7_speed.h"

#include "host/ascii_text.h"

#include <algorithm>

namespace formats::fcp7 {
namespace {

const Fraction one_frame(1);

Element time_remap_of(const Element& item) {
    for (const Element filter : item.children()) {
        if (filter.name() != "filter" || !is_enabled(filter)) continue;
        const Element effect = filter.child("effect");
        if (ascii::same(effect.text_of("effectid"), "timeremap")) return effect;
    }
    return {};
}

Element parameter_of(const Element& effect, std::string_view id) {
    for (const Element parameter : effect.children())
        if (parameter.name() == "parameter" && ascii::same(parameter.text_of("parameterid"), id)) return parameter;
    return {};
}

Fraction magnitude(const Fraction& value) { return value < Fraction(0) ? -value : value; }

/// Joins a piece to the one before where both are one line.
void add(Pieces& pieces, const Piece& piece) {
    if (piece.length <= Fraction(0)) return;
    if (!pieces.empty() && pieces.back().speed == piece.speed && pieces.back().media_end() == piece.media)
        pieces.back().length = pieces.back().length + piece.length;
    else
        pieces.push_back(piece);
}

} // namespace

Retime::Retime(const Element& item, const std::optional<Fraction>& media_length, Teller& teller) {
    const Element effect = time_remap_of(item);
    if (!effect) return;
    const std::optional<Fraction> percent = number_in(parameter_of(effect, "speed"), "value", teller);
    const bool reverse = truth_in(parameter_of(effect, "reverse"), "value", false);
    const bool curve = truth_in(parameter_of(effect, "variablespeed"), "value", false);
    speed_ = percent.value_or(Fraction(100)) / Fraction(100);
    if (reverse && Fraction(0) < speed_) speed_ = -speed_;
    read_keys(parameter_of(effect, "graphdict"), item, teller);
    if (keys_.size() > 1) {
        point_when_ = keys_.front().when;
        point_value_ = keys_.front().value;
        curve_ = curve || !percent || !is_line();
        doubt_reverse(item, media_length, teller);
        if (curve_) return;
    } else if (speed_ < Fraction(0)) {
        // Its first frame is the medium's last one.
        if (!media_length)
            teller.doubt(item, "plays in reverse, but how long its file is isn't said: its frames are a guess");
        point_value_ = std::max(media_length.value_or(Fraction(1)) - one_frame, Fraction(0));
    }
    if (curve && keys_.size() < 2)
        teller.replaced(item, "its speed is variable, but its curve isn't there; it plays at its average speed");
}

void Retime::read_keys(const Element& graph, const Element& item, Teller& teller) {
    for (const Element key : graph.children()) {
        if (key.name() != "keyframe") continue;
        const std::optional<Fraction> when = number_in(key, "when", teller);
        const std::optional<Fraction> value = number_in(key, "value", teller);
        if (when && value) keys_.push_back({*when, *value});
    }
    const auto earlier = [](const Key& a, const Key& b) { return a.when < b.when; };
    if (!std::is_sorted(keys_.begin(), keys_.end(), earlier)) {
        teller.doubt(item, "the key frames of its speed are out of order; put in order");
        std::stable_sort(keys_.begin(), keys_.end(), earlier);
    }
    // Of several at one frame the last counts.
    std::vector<Key> kept;
    for (const Key& key : keys_) {
        if (!kept.empty() && kept.back().when == key.when) kept.pop_back();
        kept.push_back(key);
    }
    keys_ = std::move(kept);
}

/// Whether a falling value is the frame shown or the one before it can't be told; one that the file doesn't have
/// speaks for the one before.
void Retime::doubt_reverse(const Element& item, const std::optional<Fraction>& media_length, Teller& teller) const {
    const Key& first = keys_.front();
    if (media_length && keys_.back().value < first.value && *media_length <= first.value)
        teller.doubt(item, "plays in reverse, from frame " + std::to_string(first.value.floor()) + " of a file of " +
                               std::to_string(media_length->floor()) +
                               ": the frames that it shows may be one lower than they are read");
}

/// Key frames are often rounded to whole frames: what lies on the line to the nearest frame is the line.
bool Retime::is_line() const {
    return std::all_of(keys_.begin(), keys_.end(), [this](const Key& key) {
        return magnitude(point_value_ + (key.when - point_when_) * speed_ - key.value) <= one_frame;
    });
}

Pieces Retime::pieces(const Fraction& from, const Fraction& to) const {
    Pieces pieces;
    if (!curve_) {
        add(pieces, {to - from, point_value_ + (from - point_when_) * speed_, speed_});
        return pieces;
    }
    // Before the first key frame and behind the last one the frame there is held. Curves are often rounded, and end a
    // frame early: the frame behind follows in its line then.
    const auto slope = [this](std::size_t i) {
        return (keys_[i + 1].value - keys_[i].value) / (keys_[i + 1].when - keys_[i].when);
    };
    const Key& first = keys_.front();
    add(pieces, {std::min(to, first.when) - from, first.value, 0});
    const std::size_t last = keys_.size() - 1;
    const bool one_more = keys_[last].when < to && to <= keys_[last].when + one_frame;
    for (std::size_t i = 0; i < last; ++i) {
        const Fraction start = std::max(from, keys_[i].when);
        const Fraction end = i + 1 == last && one_more ? to : std::min(to, keys_[i + 1].when);
        add(pieces, {end - start, keys_[i].value + (start - keys_[i].when) * slope(i), slope(i)});
    }
    if (!one_more) add(pieces, {to - std::max(from, keys_[last].when), keys_[last].value, 0});
    return pieces;
}

Piece averaged(const Pieces& pieces) {
    Piece all{Fraction(0), pieces.front().media, 0};
    for (const Piece& piece : pieces)
        all.length = all.length + piece.length;
    all.speed = (pieces.back().media_end() - all.media) / all.length;
    return all;
}

} // namespace formats::fcp7
