#include "changelist/bench/film_on_reels.h"

#include "base/frame_math.h"
#include "changelist/change_record.h"
#include "host/ascii_text.h"
#include "host/fixed_text.h"

#include <cmath>

namespace {

bool is_plain(const CutEvent& event) { return same_speed(event.speed, 1.0); }

/// The point of an event's film `frames` of the cut behind its start.
LabelPoint counted_on(const CutEvent& event, LabelPoint point, int frames) {
    if (!point.is_valid()) return point;
    const int on_film = is_plain(event) ? frames : whole_part(std::fabs(frames * event.speed) + 0.002);
    const int span = frame_product(point.cvt()->samples_per_frame(), on_film);
    point.set_sample(event.speed < 0 ? frame_difference(point.sample, span) : frame_sum(point.sample, span));
    return point;
}

/// Frames from an event's start to the number of the last frame ahead of `end`. Film at a speed of its own is
/// numbered up to where that frame ends.
int frames_to_last(const LaidEvent& laid, FilmPlace end) {
    const int frames = static_cast<int>(end - laid.at);
    return is_plain(*laid.event) ? frames - 1 : frames;
}

/// Where a frame lies on the film, in samples.
struct FilmLine {
    double start;
    double pace; ///< samples for a frame of the cut

    FilmLine(const LaidEvent& laid, FilmPlace at) {
        const CutEvent& event = *laid.event;
        pace = samples_per_frame(event.key_in) * (is_plain(event) ? 1.0 : event.speed);
        start = (event.key_in.is_valid() ? event.key_in.sample : 0) + pace * static_cast<double>(at - laid.at);
    }
    double at(int frame) const { return start + pace * frame; }
};

bool is_of_one_roll(const CutEvent& a, const CutEvent& b) {
    return ascii::same(a.key_in.get_prefix(), b.key_in.get_prefix()) && ascii::same(a.cam_reel, b.cam_reel);
}

} // namespace

FilmOnReels::FilmOnReels(const Vector<CutEvent>& cut, const ReelNumbers& reels) {
    for (const CutEvent& event : cut) {
        if (event.length > 0) events_.push_back({&event});
    }
    std::sort(events_.begin(), events_.end(), [](const LaidEvent& a, const LaidEvent& b) {
        if (a.event->reel != b.event->reel) return a.event->reel < b.event->reel;
        return a.event->frame != b.event->frame ? a.event->frame < b.event->frame : a.event < b.event;
    });
    reel_start_.assign(reels.size() + 1, 0);
    FilmPlace at = 0;
    for (LaidEvent& laid : events_) {
        laid.at = at;
        at += laid.event->length;
        reel_start_[reels.index(laid.event->reel) + 1] = at;
    }
    for (std::size_t reel = 1; reel < reel_start_.size(); ++reel)
        reel_start_[reel] = std::max(reel_start_[reel], reel_start_[reel - 1]);
}

std::optional<FilmPlace> FilmOnReels::find(int reel_number, int frame, int length) const {
    const auto behind = std::upper_bound(events_.begin(), events_.end(), frame, [&](int wanted, const LaidEvent& laid) {
        return reel_number != laid.event->reel ? reel_number < laid.event->reel : wanted < laid.event->frame;
    });
    if (behind == events_.begin()) return std::nullopt;
    const LaidEvent& laid = behind[-1];
    const std::int64_t offset = std::int64_t{frame} - laid.event->frame;
    if (laid.event->reel != reel_number || length < 1 || offset + length > laid.event->length) return std::nullopt;
    return laid.at + offset;
}

std::size_t FilmOnReels::events_ahead(FilmPlace place) const {
    const auto behind = std::lower_bound(events_.begin(), events_.end(), place,
                                         [](const LaidEvent& laid, FilmPlace wanted) { return laid.at < wanted; });
    return static_cast<std::size_t>(behind - events_.begin());
}

void name_film(change_step& step, const FilmOnReels& film, FilmPlace first, FilmPlace end) {
    const LaidEvent& head = film.event_at(first);
    const LaidEvent& tail = film.event_at(end - 1);
    const int to_first = static_cast<int>(first - head.at);
    const int to_last = frames_to_last(tail, end);
    step.first_key = counted_on(*head.event, head.event->key_in, to_first);
    step.first_ink = counted_on(*head.event, head.event->ink_in, to_first);
    step.last_key = counted_on(*tail.event, tail.event->key_in, to_last);
    step.last_ink = counted_on(*tail.event, tail.event->ink_in, to_last);
    step.first_key_missing = head.event->missing;
    step.last_key_missing = tail.event->missing;
    step.speed = head.event->speed;
    put_text(step.cam_reel, head.event->cam_reel);
    step.shot_name = head.event->shot_name;
    put_text(step.scene, head.event->scene);
    put_text(step.take, head.event->take);
}

bool is_same_film(const LaidEvent& a, FilmPlace a_at, const LaidEvent& b, FilmPlace b_at, int length) {
    const CutEvent& one = *a.event;
    const CutEvent& other = *b.event;
    if (is_filler(one.key_in) || is_filler(other.key_in))
        return ascii::same(one.key_in.get_prefix(), other.key_in.get_prefix());
    if (!is_of_one_roll(one, other) || !same_speed(one.speed, other.speed)) return false;

    // Both lines are straight, so what holds of both ends holds between them.
    const FilmLine line(a, a_at);
    const FilmLine other_line(b, b_at);
    const bool exact = is_plain(one) && is_plain(other);
    const double frame = std::max(samples_per_frame(one.key_in), samples_per_frame(other.key_in)) *
                         std::max({1.0, std::fabs(one.speed), std::fabs(other.speed)});
    const double offset = static_cast<double>(std::max(a_at - a.at, b_at - b.at));
    const double drift = std::fabs(line.pace - other_line.pace);
    const auto near = [&](int at) {
        const double apart = std::fabs(line.at(at) - other_line.at(at));
        return exact ? apart == 0 : apart <= frame + drift * (offset + at);
    };
    return near(0) && near(length - 1);
}
