#include "tests/changelist/frame_by_frame.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <map>

namespace frame_by_frame {
namespace {

std::string lower(std::string text) {
    for (char& c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

std::vector<Frame> film_of(const LabelPoint& key, const char* cam_reel, double speed, int length) {
    std::vector<Frame> frames;
    const std::string prefix = lower(key.get_prefix());
    for (int i = 0; i < length; ++i) {
        Frame frame;
        if (prefix.starts_with("__")) frame.word = prefix;
        frame.roll = prefix + "/" + lower(cam_reel);
        frame.speed = speed;
        frame.film_frame = key.cvt()->samples_per_frame();
        frame.sample = key.sample + frame.film_frame * i * (std::fabs(speed - 1) > 0.01 ? speed : 1.0);
        frames.push_back(frame);
    }
    return frames;
}

std::vector<const CutEvent*> in_order(const Vector<CutEvent>& cut) {
    std::vector<const CutEvent*> events;
    for (const CutEvent& event : cut) {
        if (event.length > 0) events.push_back(&event);
    }
    std::stable_sort(events.begin(), events.end(), [](const CutEvent* a, const CutEvent* b) {
        return std::pair(a->reel, a->frame) < std::pair(b->reel, b->frame);
    });
    return events;
}

using Reels = std::map<int, std::vector<Frame>>;

Reels reels_of(const Vector<CutEvent>& cut) {
    Reels reels;
    for (const Frame& frame : frames_of(cut))
        reels[frame.old_reel].push_back(frame);
    return reels;
}

bool is_plain_film(const Frame& frame) { return frame.word.empty() && std::fabs(frame.speed - 1) <= 0.01; }

bool has_key(const Frame& frame, const LabelPoint& key) {
    if (!is_plain_film(frame) || std::string(key.get_prefix()).starts_with("????")) return true;
    return frame.roll.starts_with(lower(key.get_prefix()) + "/") && frame.sample == key.sample;
}

/// One person at one bench.
class Bench {
public:
    Bench(const Vector<CutEvent>& old_cut, const Vector<CutEvent>& new_cut)
        : reels_(reels_of(old_cut)), wanted_(reels_of(new_cut)) {}

    Result work(const Vector<change_step>& steps) {
        for (const change_step& step : steps) {
            if (!carry_out(step)) return parted_;
        }
        for (const change_step& step : steps) {
            if (hand_.count(step.step)) return {false, step.step, step.reel, step.position};
        }
        return compare();
    }

private:
    bool part(const change_step& step, std::ptrdiff_t position) {
        parted_ = {false, step.step, step.reel, static_cast<int>(position)};
        return false;
    }

    bool carry_out(const change_step& step) {
        std::vector<Frame>& reel = reels_[step.reel];
        const bool takes = step.action == change_remove || step.action == change_pick_up;
        const long needed = step.position + (takes ? long{step.length} : 0L);
        if (step.length < 1 || step.position < 0 || needed > static_cast<long>(reel.size()))
            return part(step, step.position);
        if (!(takes ? take(step, reel) : bring(step, reel))) return false;
        if (step.reel_length >= 0 && step.reel_length != static_cast<int>(reel.size()))
            return part(step, step.position);
        return true;
    }

    bool take(const change_step& step, std::vector<Frame>& reel) {
        const auto first = reel.begin() + step.position;
        const std::vector<Frame> taken(first, first + step.length);
        reel.erase(first, first + step.length);
        for (std::size_t i = 0; i < taken.size(); ++i) {
            const Frame& frame = taken[i];
            const bool named = i > 0 || (frame.old_reel == step.old_reel && frame.old_frame == step.old_frame);
            const bool runs_on =
                i == 0 || step.action == change_remove || frame.old_index == taken[i - 1].old_index + 1;
            if (frame.step != 0 || !named || !runs_on) return part(step, step.position + static_cast<long>(i));
        }
        if (!has_key(taken.front(), step.first_key)) return part(step, step.position);
        if (!has_key(taken.back(), step.last_key)) return part(step, step.position + step.length - 1);
        if (step.action == change_pick_up) hand_[step.step] = taken;
        return true;
    }

    bool bring(const change_step& step, std::vector<Frame>& reel) {
        std::vector<Frame> film;
        if (step.action == change_put_down) {
            film = hand_[step.other_step];
            hand_.erase(step.other_step);
            const bool right = static_cast<int>(film.size()) == step.length && film[0].old_reel == step.old_reel &&
                               film[0].old_frame == step.old_frame;
            if (!right) return part(step, step.position);
        } else {
            film = film_of(step.first_key, step.cam_reel, step.speed, step.length);
        }
        for (Frame& frame : film)
            frame.step = step.step;
        reel.insert(reel.begin() + step.position, film.begin(), film.end());
        return true;
    }

    Result compare() {
        for (const auto& [number, frames] : wanted_)
            reels_[number];
        for (const auto& [number, frames] : reels_) {
            const std::vector<Frame>& wanted = wanted_[number];
            for (std::size_t at = 0; at < std::max(frames.size(), wanted.size()); ++at) {
                if (at < frames.size() && at < wanted.size() && is_same(frames[at], wanted[at])) continue;
                return {false, at < frames.size() ? frames[at].step : 0, number, static_cast<int>(at)};
            }
        }
        return {true, 0, 0, 0};
    }

    Reels reels_;
    Reels wanted_;
    std::map<int, std::vector<Frame>> hand_;
    Result parted_;
};

} // namespace

bool is_same(const Frame& a, const Frame& b) {
    if (!a.word.empty() || !b.word.empty()) return a.word == b.word;
    if (a.roll != b.roll || std::fabs(a.speed - b.speed) > 0.01) return false;
    const double apart = std::fabs(a.sample - b.sample);
    if (is_plain_film(a) && is_plain_film(b)) return apart == 0;
    return apart <= a.film_frame * (std::max(1.0, std::fabs(a.speed)) + 0.01);
}

std::vector<Frame> frames_of(const Vector<CutEvent>& cut) {
    std::vector<Frame> frames;
    int reel = 0;
    for (const CutEvent* event : in_order(cut)) {
        const int break_between = event->reel != reel ? 1 : 0; // so that nothing runs on over reels
        const int start = frames.empty() ? 0 : frames.back().old_index + 1 + break_between;
        reel = event->reel;
        int offset = 0;
        for (Frame& frame : film_of(event->key_in, event->cam_reel, event->speed, event->length)) {
            frame.old_index = start + offset;
            frame.old_reel = event->reel;
            frame.old_frame = event->frame + offset;
            ++offset;
            frames.push_back(frame);
        }
    }
    return frames;
}

Result carry_out(const Vector<CutEvent>& old_cut, const Vector<CutEvent>& new_cut, const Vector<change_step>& steps) {
    return Bench(old_cut, new_cut).work(steps);
}

namespace {

/// A frame with the event that it belongs to.
struct Place {
    const CutEvent* event;
    int offset;
};

std::vector<Place> places_of(const Vector<CutEvent>& cut) {
    std::vector<Place> places;
    for (const CutEvent* event : in_order(cut)) {
        for (int offset = 0; offset < event->length; ++offset)
            places.push_back({event, offset});
    }
    return places;
}

bool can_match(const Frame& a, const Place& at, const Frame& b, const Place& there) {
    if (!a.word.empty())
        return a.word == b.word && at.event->length == there.event->length && at.offset == there.offset;
    if (!b.word.empty() || a.roll != b.roll || a.speed != b.speed) return false;
    return std::fabs(a.sample - b.sample) <= (is_plain_film(a) ? 0.0 : 2.0);
}

} // namespace

Vector<MatchedPiece> match(const Vector<CutEvent>& old_cut, const Vector<CutEvent>& new_cut) {
    const std::vector<Frame> old_frames = frames_of(old_cut);
    const std::vector<Frame> new_frames = frames_of(new_cut);
    const std::vector<Place> old_places = places_of(old_cut);
    const std::vector<Place> new_places = places_of(new_cut);
    std::vector<bool> used(new_frames.size());
    Vector<MatchedPiece> pieces;
    std::size_t last = new_frames.size();
    for (std::size_t i = 0; i < old_frames.size(); ++i) {
        std::size_t found = new_frames.size();
        const auto fits = [&](std::size_t j) {
            return j < new_frames.size() && !used[j] &&
                   can_match(old_frames[i], old_places[i], new_frames[j], new_places[j]);
        };
        const bool goes_on = last != new_frames.size() && old_places[i].offset > 0 && fits(last + 1) &&
                             new_places[last + 1].event == new_places[last].event;
        if (goes_on) found = last + 1;
        for (std::size_t j = 0; j < new_frames.size() && found == new_frames.size(); ++j) {
            if (fits(j)) found = j;
        }
        last = found;
        if (found == new_frames.size()) continue;
        used[found] = true;
        if (goes_on) {
            ++pieces.back().length;
        } else {
            pieces.push_back({old_frames[i].old_reel, old_frames[i].old_frame, new_frames[found].old_reel,
                              new_frames[found].old_frame, 1});
        }
    }
    return pieces;
}

} // namespace frame_by_frame
