#include "formats/fcp7xml/fcp7_speed.h"

#include "host/ascii_text.h"

#include <algorithm>

namespace formats::fcp7 {
namespace {

const Fraction one_frame(1);

Element time_remap_of(const Element& item, Teller& teller) {
    Element first;
    for (const Element filter : item.children()) {
        if (filter.name() != "filter" || !is_enabled(filter)) continue;
        const Element effect = filter.child("effect");
        if (!ascii::same(effect.text_of("effectid"), "timeremap")) continue;
        if (first) teller.doubt(item, "has several filters for its speed; the first counts");
        if (!first) first = effect;
    }
    return first;
}

Element parameter_of(const Element& effect, std::string_view id) {
    for (const Element parameter : effect.children())
        if (parameter.name() == "parameter" && ascii::same(parameter.text_of("parameterid"), id)) return parameter;
    return {};
}

/// How long the subclip is that an item may be of. What its end offset counts from is nowhere written down: the
/// medium's end, as its start offset does from the start, or the start. The item's own length may tell.
std::optional<Fraction> length_of_subclip(const Element& item, const std::optional<Fraction>& media_length,
                                          const Fraction& speed, Teller& teller) {
    const Element info = item.child("subclipinfo");
    const Fraction start = number_in(info, "startoffset", teller).value_or(Fraction(0));
    const Fraction end = number_in(info, "endoffset", teller).value_or(Fraction(0));
    if (!info || !media_length) return media_length;
    const Fraction from_end = *media_length - end - start, from_start = end - start;
    if (from_start <= Fraction(0) || *media_length < end || from_start == from_end) return from_end;
    if (from_end <= Fraction(0)) return from_start;
    const Fraction own = number_in(item, "duration", teller).value_or(Fraction(0)) * magnitude(speed);
    const bool is_from_end = magnitude(own - from_end) <= one_frame,
               is_from_start = magnitude(own - from_start) <= one_frame;
    if (is_from_end == is_from_start)
        teller.doubt(item, "plays a subclip in reverse whose end offset may count from its file's start or end; the "
                           "end counts");
    return is_from_start && !is_from_end ? from_start : from_end;
}

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
    const Element effect = time_remap_of(item, teller);
    if (!effect) return;
    const Element written = parameter_of(effect, "speed");
    const bool reverse = truth_in(parameter_of(effect, "reverse"), "value", false);
    speed_ = number_in(written, "value", teller).value_or(Fraction(100)) / Fraction(100);
    if (reverse && Fraction(0) < speed_) speed_ = -speed_;
    read_keys(parameter_of(effect, "graphdict"), item, teller);
    if (keys_.size() > 1) {
        doubt_reverse(item, media_length, teller);
        choose_curve(item, effect, written.text_of("value"), teller);
        return;
    }
    if (speed_ < Fraction(0)) {
        // Its first frame is the medium's last one.
        if (!media_length)
            teller.doubt(item, "plays in reverse, but how long its file is isn't said: its frames are a guess");
        const Fraction length = length_of_subclip(item, media_length, speed_, teller).value_or(Fraction(1));
        point_value_ = std::max(length - one_frame, Fraction(0));
    }
    if (truth_in(parameter_of(effect, "variablespeed"), "value", false))
        teller.replaced(item, "its speed is variable, but its curve isn't there; it plays at its average speed");
}

/// Whether the keys count, or the line of a constant speed that they may be the rounding of.
void Retime::choose_curve(const Element& item, const Element& effect, std::string_view percent, Teller& teller) {
    point_when_ = keys_.front().when;
    point_value_ = keys_.front().value;
    const bool variable = truth_in(parameter_of(effect, "variablespeed"), "value", false);
    const Fraction written = speed_;
    take_exact_speed(percent);
    curve_ = variable || !number_from(percent) || !is_line();
    if (!curve_ || variable || !number_from(percent)) return;
    if (speed_ == Fraction(0))
        freeze(item, teller);
    else
        doubt_percent(item, percent, written, teller);
}

/// Speed 0 holds a frame, whatever the keys do: that which they show at the item's in.
void Retime::freeze(const Element& item, Teller& teller) {
    const std::optional<Fraction> in = place_in(item, "in", teller);
    teller.doubt(item, "is frozen, but the key frames of its speed move; the frame at its in is held");
    if (in) point_value_ = pieces(*in, *in).front().media;
    curve_ = false;
}

/// Percents of two decimals and more are the rounding of what the keys say, where they fit it to the last digit.
void Retime::take_exact_speed(std::string_view percent) {
    const std::size_t point = percent.find('.');
    const std::size_t decimals = point == std::string_view::npos ? 0 : percent.size() - point - 1;
    const Fraction length = keys_.back().when - keys_.front().when;
    if (decimals < 2 || speed_ == Fraction(0) || length == Fraction(0)) return;
    const Fraction whole = (keys_.back().value - keys_.front().value) / length;
    Fraction off = magnitude(whole - speed_) * Fraction(200);
    for (std::size_t i = 0; i < decimals && off <= Fraction(1); ++i)
        off = off * Fraction(10);
    if (off <= Fraction(1)) speed_ = whole;
}

/// Of what the item shows, the keys must be the percents to the nearest frame.
void Retime::doubt_percent(const Element& item, std::string_view percent, const Fraction& speed, Teller& teller) const {
    const std::optional<Fraction> in = place_in(item, "in", teller), out = place_in(item, "out", teller);
    if (!in || !out || *out <= *in) return;
    const Pieces shown = pieces(*in, *out);
    const auto is_off = [&](const Piece& piece) { return magnitude(piece.speed - speed) * piece.length > one_frame; };
    if (std::any_of(shown.begin(), shown.end(), is_off))
        teller.doubt(item, "plays at " + std::string(percent) +
                               " percent, but the key frames of its speed say otherwise; the key frames count");
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
    // Two at one frame are a jump; what stands between the first and the last of several is never shown.
    std::vector<Key> kept;
    for (const Key& key : keys_) {
        if (kept.size() > 1 && kept[kept.size() - 2].when == key.when) kept.pop_back();
        kept.push_back(key);
    }
    keys_ = std::move(kept);
}

/// Whether a falling value is the frame shown or the one before it can't be told; one that the file doesn't have
/// speaks for the one before.
void Retime::doubt_reverse(const Element& item, const std::optional<Fraction>& media_length, Teller& teller) const {
    const Key& first = keys_.front();
    const Fraction moved = number_from(item.child("subclipinfo").text_of("startoffset")).value_or(Fraction(0));
    if (media_length && keys_.back().value < first.value && *media_length <= first.value + moved)
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

/// Between a key and the next, which lies behind it.
Fraction Retime::slope(std::size_t i) const {
    return (keys_[i + 1].value - keys_[i].value) / (keys_[i + 1].when - keys_[i].when);
}

Pieces Retime::pieces(const Fraction& from, const Fraction& to) const {
    if (from == to) {
        Piece at = pieces(from, from + one_frame).front();
        at.length = 0;
        return {at};
    }
    Pieces pieces;
    if (!curve_) {
        add(pieces, {to - from, point_value_ + (from - point_when_) * speed_, speed_});
        return pieces;
    }
    // Before the first key frame and behind the last one the frame there is held. Curves are often rounded, and end a
    // frame early: the frame behind follows in its line then.
    const Key& first = keys_.front();
    add(pieces, {std::min(to, first.when) - from, first.value, 0});
    const std::size_t last = keys_.size() - 1;
    const bool jumps = keys_[last - 1].when == keys_[last].when;
    const bool one_more = !jumps && keys_[last].when < to && to <= keys_[last].when + one_frame;
    for (std::size_t i = 0; i < last; ++i) {
        if (keys_[i].when == keys_[i + 1].when) continue;
        const Fraction start = std::max(from, keys_[i].when);
        const Fraction end = i + 1 == last && one_more ? to : std::min(to, keys_[i + 1].when);
        add(pieces, {end - start, keys_[i].value + (start - keys_[i].when) * slope(i), slope(i)});
    }
    if (!one_more) add(pieces, {to - std::max(from, keys_[last].when), keys_[last].value, 0});
    return pieces;
}

Piece averaged(const Pieces& pieces) {
    if (pieces.size() == 1) return pieces.front();
    Piece all{Fraction(0), pieces.front().media, 0};
    for (const Piece& piece : pieces)
        all.length = all.length + piece.length;
    all.speed = (pieces.back().media_end() - all.media) / all.length;
    return all;
}

} // namespace formats::fcp7
