#include "formats/aaf/aaf_pulldown.h"

#include <algorithm>
#include <vector>

namespace formats::aaf {

/// One cycle: for each frame of film the frame of video that shows it first by itself, for each frame of video the
/// frame of film in its first field.
struct Cadence {
    std::int64_t film, video; ///< frames of a cycle
    std::array<std::int8_t, 25> film_to_video, video_to_film;
};

namespace {

constexpr Cadence make(std::int64_t film, std::int64_t video) {
    Cadence cadence{film, video, {}, {}};
    return cadence;
}

constexpr Cadence two_three{4, 5, {0, 1, 3, 4}, {0, 1, 1, 2, 3}};
constexpr Cadence one_to_one{1, 1, {0}, {0}};
constexpr Cadence two_five{2, 5, {0, 2}, {0, 0, 1, 1, 1}};
constexpr Cadence two_to_one{1, 2, {0}, {0, 0}};

/// Film at 24 in video at 25: frames 12 and 24 of each second have three fields.
constexpr Cadence make_pal() {
    Cadence pal = make(24, 25);
    for (std::size_t i = 0; i < 25; ++i) {
        pal.video_to_film[i] = static_cast<std::int8_t>(i < 12 ? i : i - 1);
        if (i < 24) pal.film_to_video[i] = static_cast<std::int8_t>(i < 12 ? i : i + 1);
    }
    return pal;
}
constexpr Cadence pal = make_pal();

// By the number of the kind; the fifth, video taps, tells of no cadence.
constexpr const Cadence* cadences[] = {&two_three, &pal,        &one_to_one, &one_to_one,
                                       nullptr,    &one_to_one, &two_five,   &two_to_one};

constexpr std::int64_t to_film_speed = 0;

std::int64_t mapped(std::int64_t frame, std::int64_t from, std::int64_t to, const std::array<std::int8_t, 25>& table) {
    const std::int64_t cycle = frame >= 0 ? frame / from : -((-frame + from - 1) / from);
    return cycle * to + table[static_cast<std::size_t>(frame - cycle * from)];
}

} // namespace

std::optional<Pulldown> Pulldown::of(const Object& object, bool phases_count_video) {
    const std::int64_t kind = object.integer(pid::pulldown_kind, 0);
    if (kind < 0 || kind >= std::ssize(cadences) || !cadences[kind]) return std::nullopt;
    Pulldown pulldown;
    pulldown.cadence_ = cadences[kind];
    pulldown.slot_is_film_ = object.integer(pid::pulldown_direction, 0) == to_film_speed;
    const Cadence& cadence = *pulldown.cadence_;
    const std::int64_t given = object.integer(pid::phase_frame, 0);
    // A phase above the film frames of a cycle can only be one of video.
    const bool of_video = phases_count_video || given >= cadence.film;
    const std::int64_t of_cycle = std::clamp<std::int64_t>(given, 0, (of_video ? cadence.video : cadence.film) - 1);
    const auto at = static_cast<std::size_t>(of_cycle);
    if (pulldown.slot_is_film_)
        pulldown.phase_ = of_video ? cadence.video_to_film[at] : of_cycle;
    else
        pulldown.phase_ = of_video ? of_cycle : cadence.film_to_video[at];
    return pulldown;
}

Fraction Pulldown::ratio() const {
    const Fraction video_for_film(cadence_->video, cadence_->film);
    return slot_is_film_ ? video_for_film : Fraction(1) / video_for_film;
}

Fraction Pulldown::input_at(const Fraction& position) const {
    const std::int64_t frame = position.floor();
    const auto input = [&](std::int64_t at) {
        return slot_is_film_ ? mapped(at, cadence_->film, cadence_->video, cadence_->film_to_video)
                             : mapped(at, cadence_->video, cadence_->film, cadence_->video_to_film);
    };
    constexpr std::int64_t most = std::int64_t{1} << 60;
    if (frame < -most || frame > most) return position * ratio();
    return Fraction(input(frame + phase_) - input(phase_));
}

} // namespace formats::aaf
