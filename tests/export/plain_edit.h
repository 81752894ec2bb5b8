#pragma once
// Random edits of all that an edit can say of film, none of it out of bounds.

#include "tests/generator/any_edit.h"

#include <rapidcheck.h>

namespace export_test {

using namespace generator_test;

/// Makes one. Times stand on frames or between them.
class PlainEdit {
public:
    explicit PlainEdit(bool whole_frames = false) : whole_frames_(whole_frames) {
        rate_ = embedded::nearest_rate(*rc::gen::element(24.0, 23.976, 25.0, 29.97, 30.0, 59.94));
    }

    EditPtr finish() {
        EditBuilder builder(description());
        const int sources = number(1, 5);
        for (int i = 0; i < sources; ++i)
            builder.add_source(source(i));
        const int channels = number(1, 4);
        for (int channel = 0; channel < channels; ++channel) {
            const bool fx = channel > 0 && channel + 1 == channels && one_in(2);
            builder.add_channel(!fx && channel > 0 && one_in(3) ? sound : picture, fx ? 8 : one_in(12) ? 4 : 0);
            builder.add_event(channel, event(sources));
            for (int left = number(0, 8); left > 0; --left)
                add(builder, channel, sources, fx);
        }
        add_cues(builder, channels);
        return builder.finish();
    }

private:
    EditDescription description() {
        EditDescription edit = generator_test::plain_edit(*rc::gen::element<std::string>("Reel 1", "R\xC3\xA9"
                                                                                                   "el \"2\""));
        edit.rate = rate_;
        edit.drop_frame = rate_->can_drop() && one_in(2);
        edit.start_frame = number(0, 200000);
        if (one_in(2)) edit.project = "Heron";
        if (one_in(4)) edit.film_rate = *rc::gen::element(Fraction(24), Fraction(24000, 1001), Fraction(96000, 5005));
        edit.modification_time = number(0, 2000000);
        if (one_in(3)) edit.timecode_24p = label(label_tc_24, "01:00:00:12");
        if (edit.timecode_24p) edit.timecode_24p->rate = edit.film_rate ? *edit.film_rate : film_rate_of(*rate_);
        film_rate_ = edit.film_rate;
        return edit;
    }

    LabelDescription timecode(const embedded::RateInfo& rate) {
        LabelDescription made;
        made.type = one_in(2) ? rate.drop_timecode : rate.timecode;
        made.sample = number(0, rate.nominal * 80000);
        made.rate = rate.rate();
        return made;
    }

    SourceDescription source(int serial) {
        SourceDescription source = bare_source("source " + std::to_string(serial));
        const auto* other = embedded::nearest_rate(*rc::gen::element(24.0, 25.0, 30.0));
        source.rate = one_in(4) && other->nominal != rate_->nominal ? other : rate_;
        if (source.rate == rate_) source.film_rate = film_rate_;
        if (one_in(4)) source.film_rate = *rc::gen::element(Fraction(24), Fraction(24000, 1001), Fraction(18));
        if (one_in(3)) source.identity = "file:///dailies/" + source.name + ".mov";
        if (!one_in(5)) source.video_timecode = timecode(*source.rate);
        // Tape that counts otherwise than the media, as in chains of transfers.
        if (source.video_timecode && one_in(5)) source.video_timecode = timecode(*other);
        if (source.video_timecode && one_in(5)) source.video_timecode->rate = Fraction(30000, 1001) * Fraction(4, 5);
        if (one_in(6)) source.rate = other;
        if (one_in(3)) source.sound_timecode = timecode(*source.rate);
        if (one_in(3)) source.timecode_24p = label(label_tc_24, "02:00:00:00");
        if (source.timecode_24p)
            source.timecode_24p->rate = source.film_rate ? *source.film_rate : film_rate_of(*source.rate);
        if (!one_in(4)) source.key = label(*rc::gen::element(10, 11, 12, 22, 34, 36), "KJ1234560100+05");
        if (one_in(3)) source.ink = label(*rc::gen::element(43, 44, 45), "AB120100+00");
        for (const std::pair<int, int>& medium : {std::pair(1, 2), {4, 3}, {15, 1}, {2, 1}, {10, 1}, {11, 1}})
            if (one_in(2)) source.reels[medium] = *rc::gen::element<std::string>("A012", "V 7", "A0000000000012");
        if (one_in(2)) source.scene = "27A", source.take = "3";
        if (one_in(4)) source.description = "two birds";
        if (one_in(6)) source.start_strip = Fraction(number(-5, 30), 24);
        if (one_in(2)) source.length = Fraction(number(1, 4000)) / rate_->rate();
        source.opens = !one_in(8);
        source.rendered = one_in(12);
        return source;
    }

    Fraction time(int least, int above) {
        const Fraction part = whole_frames_ || !one_in(6)
                                  ? Fraction(0)
                                  : *rc::gen::element(Fraction(1, 2), Fraction(1, 3), Fraction(6, 7919));
        return (Fraction(number(least, above)) + part) / rate_->rate();
    }

    EventDescription event(int sources) {
        EventDescription event;
        event.source = number(0, sources);
        event.duration = time(0, 60);
        event.source_in = time(0, 400);
        event.speed = *rc::gen::element<Fraction>(1, 1, 1, 2, -1, 0, Fraction(1, 2), Fraction(-1, 3), Fraction(24, 25));
        return event;
    }

    void add(EditBuilder& builder, int channel, int sources, bool fx) {
        std::vector<EffectDescription> effects;
        if (one_in(6)) effects.push_back(lab_effect("Blur", one_in(2) ? std::vector<int>{0} : std::vector<int>{}));
        const std::vector<int> tracks = effects.empty() || one_in(2) ? std::vector<int>{} : std::vector<int>{0, 1};
        if (one_in(3)) {
            TransitionDescription transition = one_in(3) ? wipe(0, 0, number(0, 99), one_in(2)) : dissolve(0, 0);
            if (one_in(4)) transition.kind = TransitionDescription::Kind::other;
            transition.in_offset = time(0, 20);
            transition.out_offset = time(0, 20);
            builder.add_transition(channel, transition);
        } else if (one_in(5)) {
            builder.add_black(channel, time(0, 40), effects, tracks);
        } else if (one_in(4)) {
            builder.add_gap(channel, time(0, 40), fx ? effects : std::vector<EffectDescription>(),
                            fx ? tracks : std::vector<int>());
        } else {
            EventDescription made = event(sources);
            made.effects = effects;
            made.effect_tracks = tracks;
            builder.add_event(channel, made);
        }
    }

    void add_cues(EditBuilder& builder, int channels) {
        for (int left = number(0, 5); left > 0; --left) {
            const embedded::CueDescription cue{time(0, 200), "cue " + std::to_string(left), one_in(3) ? 0 : 4};
            const auto level = one_in(2) ? EditBuilder::CueLevel::clip : EditBuilder::CueLevel::track;
            if (one_in(3))
                builder.add_stack_cue(cue);
            else
                builder.add_cue(number(0, channels), level, cue);
        }
    }

    bool whole_frames_;
    const embedded::RateInfo* rate_;
    std::optional<Fraction> film_rate_;
};

} // namespace export_test
