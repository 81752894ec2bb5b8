// Edits of every shape, with sane and with absurd numbers.

#include "reports/cut_s.h"
#include "tests/generator/generator_fixture.h"

#include <rapidcheck.h>

using namespace generator_test;

namespace {

int number(int least, int above) { return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange(least, above)); }

bool one_in(int count) { return number(0, count) == 0; }

std::int64_t length() { return one_in(40) ? *rc::gen::element<std::int64_t>(1LL << 40, 1LL << 62) : number(0, 60); }

Fraction speed() { return *rc::gen::element(Fraction(1), Fraction(0), Fraction(-1), Fraction(3, 2), Fraction(1, 300)); }

std::vector<EffectDescription> effects() {
    std::vector<EffectDescription> made(static_cast<std::size_t>(std::max(0, number(-4, 3))));
    for (EffectDescription& effect : made) {
        effect = lab_effect("Fx");
        effect.for_the_lab = !one_in(3);
        if (one_in(2)) effect.tracks = {number(-1, 6), number(0, 3)};
    }
    return made;
}

SourceDescription random_source(int serial) {
    SourceDescription source = bare_source("source " + std::to_string(serial));
    source.opens = !one_in(5);
    source.rendered = one_in(8);
    source.start_strip = frames(number(-5, 30));
    source.reels[{1, 2}] = *rc::gen::element<std::string>("", "T1", "ALONGREELNAME");
    if (one_in(2)) source.key = label(*rc::gen::element(10, 11, 12, 22, 36, 8), "KJ1234560100+00");
    if (source.key && one_in(4)) source.key->sample = *rc::gen::element(INT32_MAX, INT32_MIN, -1);
    if (one_in(2)) source.ink = label(*rc::gen::element(43, 44), "AB120100+00");
    if (one_in(2)) source.video_timecode = label(label_tc_24, "23:59:59:00");
    return source;
}

void add_item(EditBuilder& builder, int channel, int sources) {
    if (one_in(3)) {
        TransitionDescription transition = one_in(3) ? wipe(0, 0, number(-2000, 2000), true) : dissolve(0, 0);
        transition.in_offset = frames(number(-2, 20));
        transition.out_offset = frames(number(-2, 20));
        builder.add_transition(channel, transition);
    } else if (one_in(5)) {
        builder.add_black(channel, frames(length()));
    } else if (one_in(4)) {
        builder.add_gap(channel, frames(length()), effects());
    } else {
        EventDescription event = event_of(number(0, sources), 0, number(-20, 200), speed());
        event.duration = frames(length());
        event.effects = effects();
        builder.add_event(channel, event);
    }
}

EditPtr random_edit() {
    EditBuilder builder(plain_edit());
    const int sources = number(1, 4), channels = number(1, 6);
    for (int i = 0; i < sources; ++i)
        builder.add_source(random_source(i));
    for (int channel = 0; channel < channels; ++channel) {
        builder.add_channel(one_in(5) ? sound : picture, *rc::gen::element(0, 0, 0, 4, 8));
        builder.add_event(channel, event_of(number(0, sources), number(1, 40)));
        for (int left = number(0, 9); left > 0; --left)
            add_item(builder, channel, sources);
    }
    for (int left = number(0, 4); left > 0; --left)
        builder.add_stack_cue(cue(number(-5, 100), "cue", number(0, 8)));
    return builder.finish();
}

class RandomEdits : public GeneratorTest {
protected:
    std::string table_bytes() const {
        std::string bytes;
        embedded::read_file(scratch.file("list.cdb"), &bytes, nullptr);
        return bytes;
    }
    void choose_options() {
        block.set("chan_type", std::to_string(number(1, 3)));
        block.set("chan_num", std::to_string(one_in(5) ? number(-1, 4) : 0));
        block.set("pull_match_assembly", std::to_string(number(0, 2)));
        block.set("long_keycode", std::to_string(number(-1, 4)));
        embedded::set_host_setting("allow_auto_unrender", one_in(4) ? 1 : 0);
    }
};

TEST_F(RandomEdits, AreListedTheSameWayTwiceOrRefusedWithoutAFile) {
    EXPECT_TRUE(rc::check([this] {
        choose_options();
        const EditPtr edit = random_edit();
        std::filesystem::remove(scratch.file("list.cdb"));
        logger.lines.clear();
        const bool made = make(edit, EditBuilder::cues_of(edit));
        const std::string first = table_bytes();
        RC_CLASSIFY(made);
        RC_ASSERT(made == stands("list.cdb"));
        RC_ASSERT(!made || !logger.said_at(4));
        RC_ASSERT(make(edit, EditBuilder::cues_of(edit)) == made);
        RC_ASSERT(table_bytes() == first);
    }));
}

// Tracks, kinds and positions of the rows are in order up to the chains at the end, and a record of a track
// that follows a transition of that track tells its other half.
TEST_F(RandomEdits, TransitionsAreToldOnBothSides) {
    EXPECT_TRUE(rc::check([this] {
        choose_options();
        block.set("chan_type", "1");
        const EditPtr edit = random_edit();
        if (!make(edit, EditBuilder::cues_of(edit))) return;
        const cutdb& list = table();
        cut_s before;
        for (unsigned row = 0; row < list.get_num_records(); ++row) {
            cut_s now;
            now.from_record(*list.get_record(row));
            const std::string out(now.fx_op_out), in(now.fx_op_in);
            RC_ASSERT(out.empty() || out == "DO" || out == "WO" || out == "FO");
            RC_ASSERT(in.empty() || in == "DI" || in == "WI" || in == "FI");
            if (now.track != 0 && now.track == before.track && now.edit_in > before.edit_in) {
                RC_ASSERT(in.empty() == (before.fx_op_out[0] == '\0'));
                RC_ASSERT(now.fx_len_in == before.fx_len_out);
            }
            before = now;
        }
    }));
}

} // namespace
