#pragma once
// Random films: reels that are cut again and again from the same takes, at any speed, on film of every gauge.

#include "embedded/rates.h"
#include "film/order_facts.h"
#include "tests/generator/made_edit.h"

#include <rapidcheck.h>

#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace orders_test {

using embedded::Fraction;
using film::FilmNeeds;

inline int between(int low, int high) { return *rc::gen::inRange(low, high + 1); }

/// Roll, kind, prefix, perforation, frame.
using Frame = std::tuple<std::string, label_t, std::string, int, std::int64_t>;
using Frames = std::set<Frame>;

inline void add_frames(const film::FilmRun& run, const film::FrameRange& range, Frames& frames) {
    for (std::int64_t frame = range.first; frame <= range.last; ++frame)
        frames.emplace(run.roll, run.kind, run.prefix, run.perforation, frame);
}

inline Frames frames_of(const film::FilmRun& run, const film::FrameRange& range) {
    Frames frames;
    add_frames(run, range, frames);
    return frames;
}

inline Frames frames_of(const FilmNeeds& needs) {
    Frames frames;
    for (const film::FilmNeed& need : needs)
        add_frames(need.run, need.frames, frames);
    return frames;
}

/// With handles.
inline Frames frames_of(const film::OrderPieces& pieces) {
    Frames frames;
    for (const film::OrderPiece& piece : pieces)
        add_frames(piece.run, piece.frames, frames);
    return frames;
}

/// What an edit needs of its picture.
inline film::ReelNeeds needs_of(const EditPtr& edit, int reel = 0) {
    film::ReelNeeds needs;
    film::add_needs(film::film_of_edit(edit, {}, nullptr), nullptr, reel, needs);
    return needs;
}

class RandomFilm {
public:
    explicit RandomFilm(bool straight = false) : straight_(straight) {
        rate_ = embedded::nearest_rate(*rc::gen::element(24.0, 23.976, 25.0, 29.97, 30.0));
        film_rate_ = embedded::film_rate_of(*rate_);
        const int takes = between(1, 5);
        for (int i = 0; i < takes; ++i)
            takes_.push_back(take(i));
    }

    /// Cut anew with each call.
    EditPtr reel() const {
        embedded::EditDescription about = generator_test::plain_edit();
        about.rate = rate_;
        embedded::EditBuilder builder(about);
        std::vector<embedded::SourceId> sources;
        for (const embedded::SourceDescription& source : takes_)
            sources.push_back(builder.add_source(source));
        const int tracks = straight_ ? 1 : between(1, 2);
        for (int i = 0; i < tracks; ++i)
            fill(builder, builder.add_channel(generator_test::picture), sources);
        return builder.finish();
    }

    /// Of `count` reels, cut anew.
    FilmNeeds version(int count) const {
        FilmNeeds all;
        for (int i = 0; i < count; ++i)
            for (film::FilmNeed& need : needs_of(reel(), i).needs)
                all.push_back(std::move(need));
        return all;
    }

    const embedded::RateInfo* rate() const { return rate_; }

private:
    static constexpr int longest_take = 200;
    Fraction seconds(int film_frames) const { return Fraction(film_frames) / film_rate_; }

    /// Several lie on one roll, and may hold the same film.
    embedded::SourceDescription take(int serial) const {
        const int kind = *rc::gen::element(10, 11, 12, 34, 35, 36, 37, 38, 39, 40, 41, 42);
        const std::string count = std::to_string(between(1000, 1006));
        embedded::SourceDescription source = generator_test::shot(
            "shot " + std::to_string(serial), "KJ12345" + std::to_string(between(0, 1)) + count + "+00", kind);
        source.reels[{1, 2}] = "T" + std::to_string(between(1, 3));
        source.reels[{2, 1}] = "A00" + std::to_string(between(1, 2));
        source.rate = rate_;
        source.video_timecode = embedded::LabelDescription{rate_->timecode, {}, between(1000, 90000), rate_->rate()};
        if (between(0, 2) == 0) source.length = seconds(longest_take);
        if (between(0, 7) == 0 && rate_->nominal < 30) source.key.reset();
        return source;
    }

    embedded::EventDescription event(const std::vector<embedded::SourceId>& sources) const {
        const Fraction speeds[] = {1, 1, 1, 2, -1, 0, -3, Fraction(1, 2), Fraction(2, 3), Fraction(25, 24)};
        embedded::EventDescription made;
        made.source = sources[static_cast<std::size_t>(between(0, static_cast<int>(sources.size()) - 1))];
        made.duration = seconds(between(12, 40));
        made.source_in = seconds(between(20, 60));
        if (!straight_) made.speed = speeds[between(0, 9)];
        return made;
    }

    void fill(embedded::EditBuilder& builder, int channel, const std::vector<embedded::SourceId>& sources) const {
        const int items = between(1, 5);
        for (int i = 0; i < items; ++i) {
            if (i > 0 && between(0, 3) == 0) {
                embedded::TransitionDescription dissolve = generator_test::dissolve(0, 0);
                dissolve.in_offset = seconds(between(1, 5));
                dissolve.out_offset = seconds(between(1, 5));
                builder.add_transition(channel, dissolve);
            }
            if (between(0, 6) == 0)
                builder.add_black(channel, seconds(between(12, 20)));
            else
                builder.add_event(channel, event(sources));
        }
    }

    const bool straight_; ///< one track, at play-speed
    const embedded::RateInfo* rate_ = nullptr;
    Fraction film_rate_;
    std::vector<embedded::SourceDescription> takes_;
};

inline film::OrderOptions any_options() {
    film::OrderOptions options;
    options.handles = between(0, 12);
    options.join = between(0, 20);
    options.whole_takes = *rc::gen::arbitrary<bool>();
    return options;
}

/// An order for those needs, told in the order of its film.
inline film::OrderToTell told_order(FilmNeeds needs, const film::OrderOptions& options,
                                    const embedded::RateInfo* rate) {
    film::OrderToTell order;
    for (int i = 0; i < 3; ++i)
        order.reels.push_back({"r.otio", "Reel " + std::to_string(i + 1), 0, rate});
    order.options = options;
    order.all_needs = order.needs = std::move(needs);
    order.pieces = film::order_of(order.needs, options);
    return order;
}

} // namespace orders_test
