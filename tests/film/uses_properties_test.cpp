// Random edits: strips against a walk frame by frame over the event lists, and against the table that the lists make.

#include "tests/cross_checks/random_edit.h"
#include "tests/film/made_film.h"

#include <cmath>
#include <gmock/gmock.h>
#include <rapidcheck.h>
#include <set>
#include <tuple>

using namespace generator_test;
using cross_checks::EditKind;
using cross_checks::RandomEdit;
using film::Role;
using film::Strip;

namespace {

/// Edit frame, layer, role, name, and the frame of the source in halves.
using Use = std::tuple<std::int64_t, int, int, std::string, std::int64_t>;

/// What an event shows at a frame that it may give up to a transition.
void add_frame(std::int64_t frame, int layer, Role role, const ChannelEvent& in, std::set<Use>& uses) {
    if (in.cookie.isBlack()) return;
    EditPtr source;
    source.i_open(in.cookie, edit_open_default);
    const double at =
        in.source_time * 24 + (static_cast<double>(frame) - in.edit_time * 24) * static_cast<double>(in.speed);
    uses.emplace(frame, layer, static_cast<int>(role), toUTF8(source->getName()).c_str(), std::llround(at * 2));
}

std::int64_t frame_of(double time) { return std::llround(time * 24); }

/// One frame after the other, from the event lists that the film library reads.
std::set<Use> frame_by_frame(const EditPtr& edit, int chan, int layer) {
    std::vector<std::pair<ChannelEvent, ChannelEvent>> events;
    const Qb::Ptr<Cel> cel = edit->get_edit_cel_p(chan);
    for (ce_handle at = cel->get_start_ceh(); at.valid(); at.increment(ce_all)) {
        const ChannelEvent in = at.get_channel_event();
        at.increment(ce_all);
        events.emplace_back(in, at.get_channel_event());
    }
    std::set<Use> uses;
    for (std::size_t i = 0; i < events.size(); ++i) {
        const auto& [in, out] = events[i];
        for (std::int64_t frame = frame_of(in.edit_time); frame < frame_of(out.edit_time); ++frame) {
            if (!in.cookie.isEffect()) {
                add_frame(frame, layer, Role::cut, in, uses);
                continue;
            }
            add_frame(frame, layer, Role::outgoing, events.at(i - 1).first, uses);
            add_frame(frame, layer, Role::incoming, events.at(i + 1).first, uses);
        }
    }
    return uses;
}

std::set<Use> of_strips(const film::Strips& strips, bool upper) {
    std::set<Use> uses;
    for (const Strip& strip : strips) {
        if (strip.black || (strip.layer > 0) != upper) continue;
        for (std::int64_t k = 0; k < strip.length(); ++k) {
            const int role = static_cast<int>(strip.role);
            uses.emplace(strip.start + k, strip.layer, role, strip.name, (strip.source.at(k) * 2).floor());
        }
    }
    return uses;
}

TEST(FilmUsesProperties, FrameByFrameTheEventListsSayTheSame) {
    const bool held = rc::check("strips and single frames", [] {
        RandomEdit random({*rc::gen::arbitrary<bool>(), false, true});
        const EditPtr edit = random.builder.finish();
        const film::Strips strips = film::uses_of_edit(edit, {});
        RC_ASSERT(of_strips(strips, false) == frame_by_frame(edit, 0, 0));
        const std::set<Use> upper = edit->getNumChans() > 1 ? frame_by_frame(edit, 1, 1) : std::set<Use>();
        RC_ASSERT(of_strips(strips, true) == upper);
    });
    EXPECT_TRUE(held);
}

/// Edit frame, event, optical, layer, role, roll, tape, key number of the frame.
using Named = std::tuple<std::int64_t, int, int, int, int, std::string, std::string, std::string>;

/// Tables hold whole frames, so at an uneven speed the two may part by the frame that both of them own to.
std::string key_at(const Strip& strip, std::int64_t k) {
    return strip.speed.den() == 1 ? strip.key.text_at(k) : strip.key.prefix;
}

std::set<Named> named_film(const film::Strips& strips) {
    std::set<Named> film;
    for (const Strip& strip : strips)
        for (std::int64_t k = 0; k < strip.length(); ++k)
            film.emplace(strip.start + k, strip.event, strip.optical, strip.layer, static_cast<int>(strip.role),
                         strip.rolls.listed, strip.rolls.tape, strip.black ? "black" : key_at(strip, k));
    return film;
}

TEST(FilmUsesProperties, TheTableMadeOfAnEditSaysTheSame) {
    const bool held = rc::check("strips of edits and tables", [] {
        RandomEdit random({});
        const EditPtr edit = random.builder.finish();
        film::UseOptions options;
        options.neg_cut = *rc::gen::arbitrary<bool>();
        const film_test::MadeList list(edit, options);
        RC_ASSERT(list.made);
        RC_ASSERT(named_film(film::uses_of_edit(edit, options)) == named_film(film::uses_of_table(*list.table)));
    });
    EXPECT_TRUE(held);
}

TEST(FilmUsesProperties, StripsAreInOrder) {
    const bool held = rc::check("strips by start, layer, role", [] {
        RandomEdit random({});
        const film::Strips strips = film::uses_of_edit(random.builder.finish(), {});
        const auto key = [](const Strip& strip) { return std::tuple(strip.start, strip.layer, strip.role); };
        for (std::size_t i = 1; i < strips.size(); ++i)
            RC_ASSERT(key(strips[i - 1]) <= key(strips[i]));
    });
    EXPECT_TRUE(held);
}

} // namespace
