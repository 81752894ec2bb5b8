#include "film/list_arithmetic.h"

#include "embedded/clamped.h"
#include "film/plain_number.h"
#include "film/report_pages.h"

#include <cmath>
#include <cstdio>

namespace film {
namespace {

constexpr double whole_enough = 0.05; ///< a fraction below this doesn't count as a begun frame
constexpr std::size_t feet_digits = 4;

double rounded_away(double x) {
    const double whole = std::floor(std::fabs(x));
    return std::fabs(x) - whole < whole_enough ? x : std::copysign(whole + 1, x);
}

std::int64_t cut(double x) { return static_cast<std::int64_t>(x); }

bool has_own_speed(const Piece& piece) { return piece.first().speed != Fraction(1); }

LabelPoint point_of(label_t kind, const std::string& prefix, std::int64_t sample) {
    LabelPoint point(embedded::clamp_to_int(sample), kind);
    point.set_prefix(prefix.c_str());
    return point;
}

/// The number at a frame of the edit, counted on from the piece's first frame that is seen alone.
Fraction count_at(const Piece& piece, Count Strip::*number, std::int64_t frame) {
    const Strip& strip = piece.at(piece.cut_in);
    return (strip.*number).at(frame - strip.start);
}

// The end of a shot at a speed of its own is the next whole frame of its source.
std::int64_t end_frame(const Piece& piece, Count Strip::*number) {
    if (piece.first().speed == Fraction(0)) return count_at(piece, number, piece.cut_in).floor();
    const Fraction end = count_at(piece, number, piece.cut_out);
    if (!has_own_speed(piece)) return end.floor();
    const double rest = (end - Fraction(end.floor())).to_double();
    return end.floor() + (rest < whole_enough ? 0 : 1);
}

std::int64_t part_of(std::int64_t whole, Share share, int odd) {
    if (share == Share::none) return 0;
    return share == Share::whole ? whole : (whole + odd) / 2;
}

} // namespace

std::int64_t in_frames(const Piece& piece, const Shares& shares) { return part_of(piece.in_length(), shares.in, 0); }

std::int64_t out_frames(const Piece& piece, const Shares& shares) { return part_of(piece.out_length(), shares.out, 1); }

std::vector<Shares> shares_of(const Piece& piece, bool halves) {
    if (!halves) return {{Share::whole, Share::whole}};
    using Ends = std::vector<Share>;
    const auto ends = [&piece](bool black_beside) {
        if (piece.black()) return Ends{Share::none, Share::whole};
        return black_beside ? Ends{Share::whole, Share::half} : Ends{Share::half};
    };
    std::vector<Shares> all;
    for (const Share in : ends(piece.black_before))
        for (const Share out : ends(piece.black_behind))
            all.push_back({in, out});
    return all;
}

std::int64_t listed_film_frames(double frames, double speed) { return cut(rounded_away(frames * speed) + 1e-6); }

std::int64_t cut_in_sample(const Piece& piece, Count Strip::*number) {
    const Count& count = piece.at(piece.cut_in).*number;
    const int step = get_static_label_cvt(count.kind)->samples_per_frame();
    return count_at(piece, number, piece.cut_in).floor() * step + count.perforation;
}

Codes listed_codes(const Piece& piece, Count Strip::*number, const Shares& shares, int handles, double slack) {
    const Count& count = piece.at(piece.cut_in).*number;
    Codes codes;
    if (!count) return codes;
    codes.kind = count.kind;
    codes.prefix = count.prefix;
    const int step = get_static_label_cvt(count.kind)->samples_per_frame();
    const double speed = piece.first().speed.to_double();
    const std::int64_t in = part_of(listed_film_frames(double(piece.in_length()), speed), shares.in, 0);
    const std::int64_t out = part_of(listed_film_frames(double(piece.out_length()), speed), shares.out, 1);
    const std::int64_t start = cut_in_sample(piece, number);
    const std::int64_t end = end_frame(piece, number) * step + count.perforation;
    const std::int64_t handle = std::int64_t{handles} * step * (end < start ? -1 : 1);
    codes.from_zero = start <= 0 && in != 0;
    codes.first = start - (codes.from_zero ? 0 : in * step) - handle;
    codes.last = end + (out + (codes.from_zero ? in : 0)) * step + handle - cut(step * speed + slack);
    return codes;
}

std::string Unnamed::film(const Count& number) const {
    return number.text_at(first - strip->start) + " to " + number.text_at(last - strip->start);
}

std::vector<Unnamed> unnamed_by(const Codes& codes, const Piece& piece, Count Strip::*number, const Shares& shares) {
    const std::int64_t from = piece.cut_in - in_frames(piece, shares), to = piece.cut_out + out_frames(piece, shares);
    const Count& own = piece.at(piece.cut_in).*number;
    const std::int64_t low = frame_of_sample(own, std::min(codes.first, codes.last));
    const std::int64_t high = frame_of_sample(own, std::max(codes.first, codes.last));
    std::vector<Unnamed> unnamed;
    for (const Strip* strip : piece.strips) {
        const std::int64_t first = std::max(from, strip->start), last = std::min(to, strip->end) - 1;
        const Count& count = strip->*number;
        if (first > last || !count) continue;
        const std::int64_t a = count.frame_at(first - strip->start), b = count.frame_at(last - strip->start);
        const std::int64_t by = std::max(low - std::min(a, b), std::max(a, b) - high);
        const bool elsewhere = count.prefix != own.prefix || strip->rolls.listed != piece.first().rolls.listed;
        if (elsewhere || by > 0) unnamed.push_back({strip, first, last, by, elsewhere});
    }
    return unnamed;
}

std::string range_text(const Codes& codes) {
    return code_of(codes.kind, codes.prefix, codes.first) + " to " + count_of(codes.kind, codes.prefix, codes.last);
}

std::string code_of(label_t kind, const std::string& prefix, std::int64_t sample) {
    return point_of(kind, prefix, sample).get_string();
}

std::string count_of(label_t kind, const std::string& prefix, std::int64_t sample) {
    const std::string text = code_of(kind, prefix, sample);
    const auto length = static_cast<std::size_t>(get_static_label_cvt(kind)->prefix_length());
    return text.substr(std::min(length, text.size()));
}

std::optional<std::int64_t> sample_of(label_t kind, const std::string& prefix, std::string_view text) {
    const std::string own(text);
    for (const std::string& whole : {own, prefix + own}) {
        LabelPoint point(0, kind);
        point.set_prefix(prefix.c_str());
        point.set_sample(whole.c_str());
        if (point.is_useful() && whole == point.get_string() && point.get_prefix() == prefix) return point.sample;
    }
    return std::nullopt;
}

std::int64_t frame_of_sample(const Count& number, std::int64_t sample) {
    const int step = get_static_label_cvt(number.kind)->samples_per_frame();
    return Fraction(sample - number.perforation, step).floor();
}

ReelUnits::ReelUnits(label_t film) : foot_(label_t_to_foot_label_t(film)) {}

std::optional<std::int64_t> ReelUnits::frame_of(std::string_view text) const {
    if (text.find('+') == std::string_view::npos) {
        const std::optional<int> frame = plain_number(text);
        return frame ? std::optional<std::int64_t>(*frame) : std::nullopt;
    }
    if (foot_ == label_none || foot_ == label_frames) return std::nullopt;
    const std::optional<std::int64_t> sample = sample_of(foot_, "", text);
    const int step = get_static_label_cvt(foot_)->samples_per_frame();
    if (!sample || *sample % step != 0) return std::nullopt;
    return *sample / step;
}

std::optional<std::int64_t> ReelUnits::length_of(std::string_view text) const {
    const std::size_t feet = text.find('+');
    if (feet == std::string_view::npos || feet >= feet_digits) return frame_of(text);
    return frame_of(std::string(feet_digits - feet, '0') + std::string(text));
}

std::string ReelUnits::text_of(std::int64_t frame, std::string_view like) const {
    char text[24];
    std::snprintf(text, sizeof text, like.find('+') == std::string_view::npos ? "%06lld" : "%lld",
                  static_cast<long long>(frame));
    if (like.find('+') == std::string_view::npos || foot_ == label_none) return text;
    return code_of(foot_, "", frame * get_static_label_cvt(foot_)->samples_per_frame());
}

} // namespace film
