#include "changelist/proof/proof.h"

#include "base/guard.h"
#include "changelist/proof/proof_film.h"
#include "host/fixed_text.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace {

using Strip = FilmStrips::Strip;

const char* plural(std::int64_t count) { return count == 1 ? "" : "s"; }

int shown(std::int64_t frames) { return static_cast<int>(std::clamp<std::int64_t>(frames, INT32_MIN, INT32_MAX)); }

class Proof {
public:
    Proof(const KeptRun& run, const Vector<change_step>& steps) : steps_(steps), film_(run.old_cut) {
        new_events_ = film_in_order(run.new_cut);
        name_reels();
        lay_old_cut();
        index_steps();
    }

    change_proof make() {
        for (const change_step& step : steps_) {
            if (!carry_out(step)) return found_;
            ++found_.steps;
        }
        found_.proved = nothing_left_in_hand() && is_new_cut();
        return found_;
    }

private:
    struct Reel {
        int number = 0;
        Strip film = FilmStrips::no_film;
    };

    void name_reels();
    void lay_old_cut();
    void index_steps();
    Reel& reel(int number);
    Strip* hand_of(int step);

    bool carry_out(const change_step& step);
    bool take(const change_step& step);
    bool is_as_named(const change_step& step, const Vector<FilmStretch>& taken);
    bool put(const change_step& step, Strip film);
    bool put_down(const change_step& step);
    bool insert(const change_step& step);
    bool is_in_hand(const change_step& step, const Strip* hand);
    bool nothing_left_in_hand();
    bool is_new_cut();
    bool is_new_reel(const Reel& on_bench, const CutEvent* const* events, const CutEvent* const* end);

    /// The one way to part: false, with where and why.
    __attribute__((format(printf, 5, 6))) bool part(int step, int reel, std::int64_t position, const char* format, ...);

    const Vector<change_step>& steps_;
    ProofFilm film_;
    Vector<const CutEvent*> new_events_;
    FilmStrips strips_;
    Vector<Reel> reels_;            ///< by number
    Vector<Strip> hand_;            ///< what each step has picked up
    Vector<std::size_t> by_number_; ///< indices of steps
    change_proof found_;
};

bool Proof::part(int step, int reel, std::int64_t position, const char* format, ...) {
    found_.step = step;
    found_.reel = reel;
    found_.position = shown(position);
    va_list values;
    va_start(values, format);
    std::vsnprintf(found_.reason, sizeof found_.reason, format, values);
    va_end(values);
    return false;
}

void Proof::name_reels() {
    Vector<int> numbers;
    for (const CutEvent* event : film_.old_events())
        numbers.push_back(event->reel);
    for (const CutEvent* event : new_events_)
        numbers.push_back(event->reel);
    for (const change_step& step : steps_)
        numbers.push_back(step.reel);
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    for (const int number : numbers)
        reels_.push_back({number, FilmStrips::no_film});
}

void Proof::lay_old_cut() {
    const Vector<const CutEvent*>& events = film_.old_events();
    for (std::size_t film = 0; film < events.size(); ++film) {
        Reel& home = reel(events[film]->reel);
        home.film = strips_.splice(home.film, strips_.make({film, 0, events[film]->length, 0}));
    }
}

void Proof::index_steps() {
    hand_.assign(steps_.size(), FilmStrips::no_film);
    for (std::size_t index = 0; index < steps_.size(); ++index)
        by_number_.push_back(index);
    std::sort(by_number_.begin(), by_number_.end(), [&](std::size_t a, std::size_t b) {
        return steps_[a].step != steps_[b].step ? steps_[a].step < steps_[b].step : a < b;
    });
}

Proof::Reel& Proof::reel(int number) {
    return *std::lower_bound(reels_.begin(), reels_.end(), number,
                             [](const Reel& reel, int wanted) { return reel.number < wanted; });
}

/// Null when no step has that number.
Strip* Proof::hand_of(int step) {
    const auto found = std::lower_bound(by_number_.begin(), by_number_.end(), step,
                                        [&](std::size_t index, int wanted) { return steps_[index].step < wanted; });
    return found != by_number_.end() && steps_[*found].step == step ? &hand_[*found] : nullptr;
}

bool Proof::carry_out(const change_step& step) {
    const std::int64_t length = strips_.length(reel(step.reel).film);
    const bool takes = step.action == change_remove || step.action == change_pick_up;
    if (step.length < 1) return part(step.step, step.reel, step.position, "it is about %d frames of film", step.length);
    if (step.position < 0) return part(step.step, step.reel, step.position, "the reel starts behind that");
    if (step.position + (takes ? std::int64_t{step.length} : 0) > length)
        return part(step.step, step.reel, step.position, "the reel ends at frame %lld", static_cast<long long>(length));

    const bool done = takes ? take(step) : step.action == change_put_down ? put_down(step) : insert(step);
    if (!done || step.reel_length < 0) return done;
    const std::int64_t left = strips_.length(reel(step.reel).film);
    return left == step.reel_length ||
           part(step.step, step.reel, step.position, "the reel is %lld frame%s long then, not %d",
                static_cast<long long>(left), plural(left), step.reel_length);
}

bool Proof::take(const change_step& step) {
    Reel& from = reel(step.reel);
    const FilmStrips::Halves ahead = strips_.cut(from.film, step.position);
    const FilmStrips::Halves behind = strips_.cut(ahead.tail, step.length);
    from.film = strips_.splice(ahead.head, behind.tail);
    if (!is_as_named(step, strips_.stretches(behind.head))) return false;
    if (step.action == change_pick_up) {
        if (Strip* hand = hand_of(step.step)) *hand = behind.head;
    }
    return true;
}

bool Proof::is_as_named(const change_step& step, const Vector<FilmStretch>& taken) {
    std::int64_t position = step.position;
    const FilmStretch* before = nullptr;
    for (const FilmStretch& stretch : taken) {
        if (stretch.step != 0)
            return part(step.step, step.reel, position, "the film there was put in by step %d", stretch.step);
        if (!before && !film_.is_old_frame(stretch, step.old_reel, step.old_frame))
            return part(step.step, step.reel, position, "there lies %s, not frame %d of reel %d",
                        film_.old_frame_text(stretch).text, step.old_frame, step.old_reel);
        if (before && step.action == change_pick_up && !film_.runs_on(*before, stretch))
            return part(step.step, step.reel, position, "the film doesn't run through: there lies %s",
                        film_.old_frame_text(stretch).text);
        before = &stretch;
        position += stretch.length;
    }
    const FilmStretch last = taken.back().part(taken.back().length - 1, 1);
    if (!film_.has_key(taken.front(), step.first_key))
        return part(step.step, step.reel, step.position, "there lies %s, not %s", film_.text(taken.front()).text,
                    LabelPoint(step.first_key).get_string());
    if (!film_.has_key(last, step.last_key))
        return part(step.step, step.reel, position - 1, "it ends with %s, not %s", film_.text(last).text,
                    LabelPoint(step.last_key).get_string());
    return true;
}

bool Proof::put(const change_step& step, Strip film) {
    Reel& onto = reel(step.reel);
    const FilmStrips::Halves halves = strips_.cut(onto.film, step.position);
    strips_.mark(film, step.step);
    onto.film = strips_.splice(strips_.splice(halves.head, film), halves.tail);
    return true;
}

bool Proof::put_down(const change_step& step) {
    Strip* hand = hand_of(step.other_step);
    if (!is_in_hand(step, hand)) return false;
    const Strip film = *hand;
    *hand = FilmStrips::no_film;
    return put(step, film);
}

bool Proof::is_in_hand(const change_step& step, const Strip* hand) {
    if (!hand || *hand == FilmStrips::no_film)
        return part(step.step, step.reel, step.position, "step %d has no film picked up", step.other_step);
    const std::int64_t frames = strips_.length(*hand);
    if (frames != step.length)
        return part(step.step, step.reel, step.position, "step %d picked up %lld frame%s, not %d", step.other_step,
                    static_cast<long long>(frames), plural(frames), step.length);
    const FilmStretch first = strips_.stretches(*hand).front();
    if (!film_.is_old_frame(first, step.old_reel, step.old_frame))
        return part(step.step, step.reel, step.position, "step %d picked up %s, not frame %d of reel %d",
                    step.other_step, film_.old_frame_text(first).text, step.old_frame, step.old_reel);
    return true;
}

bool Proof::insert(const change_step& step) {
    return put(step, strips_.make({film_.add(step), 0, step.length, step.step}));
}

bool Proof::nothing_left_in_hand() {
    for (std::size_t index = 0; index < steps_.size(); ++index) {
        if (hand_[index] != FilmStrips::no_film)
            return part(steps_[index].step, steps_[index].reel, steps_[index].position,
                        "what it picks up is never put down");
    }
    return true;
}

bool Proof::is_new_cut() {
    const CutEvent* const* events = new_events_.data();
    const CutEvent* const* const all = events + new_events_.size();
    for (const Reel& on_bench : reels_) {
        const CutEvent* const* end = events;
        while (end != all && (*end)->reel == on_bench.number)
            ++end;
        if (!is_new_reel(on_bench, events, end)) return false;
        events = end;
    }
    return true;
}

bool Proof::is_new_reel(const Reel& on_bench, const CutEvent* const* events, const CutEvent* const* end) {
    std::int64_t position = 0;
    std::int64_t done = 0; // frames of the present event
    for (FilmStretch stretch : strips_.stretches(on_bench.film)) {
        while (stretch.length > 0) {
            if (events == end)
                return part(stretch.step, on_bench.number, position, "the cutting copy has %s behind the new cut's end",
                            film_.text(stretch).text);
            const std::int64_t common = std::min<std::int64_t>(stretch.length, (*events)->length - done);
            const FilmOfProof wanted(**events);
            const std::int64_t same = film_.frames_alike(stretch, wanted, done, common);
            if (same < common)
                return part(stretch.step, on_bench.number, position + same,
                            "the cutting copy has %s where the new cut has %s", film_.text(stretch.part(same, 1)).text,
                            wanted.text(done + same).text);
            stretch = stretch.part(common, stretch.length - common);
            position += common;
            done += common;
            if (done == (*events)->length) ++events, done = 0;
        }
    }
    return events == end || part(0, on_bench.number, position, "the reel ends where the new cut has %s",
                                 FilmOfProof(**events).text(done).text);
}

} // namespace

change_proof prove_steps(const KeptRun& run, const Vector<change_step>& steps) { return Proof(run, steps).make(); }

change_proof prove_change_steps(change_list list) {
    change_proof proof;
    const char* failure = run_alone([&] {
        const KeptRun& run = list == bench_changes ? kept_run_with_bench() : kept_run();
        if (!run.old_cut.empty() || !run.new_cut.empty())
            proof = prove_steps(run, list == bench_changes ? run.bench : run.detailed);
        else
            put_text(proof.reason, "there is no film of a run");
    });
    if (failure) put_text(proof.reason, std::string_view(failure, std::strlen(failure) - 1));
    return proof;
}
