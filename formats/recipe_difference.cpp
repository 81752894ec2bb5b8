#include "formats/recipe_difference.h"

#include "embedded/edit_builder.h"
#include "formats/source_labels.h"
#include "host/channel_kinds.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace formats {
namespace {

using embedded::ChannelCut;
using embedded::ChannelItem;
using embedded::EditDescription;
using embedded::EditRecipe;
using embedded::EffectDescription;
using embedded::EventDescription;
using embedded::Fraction;
using embedded::LabelDescription;
using embedded::RecipeChannel;
using embedded::RecipeCue;
using embedded::SourceDescription;
using embedded::TransitionDescription;

/// What a label counts: its texts may differ.
struct LabelFace {
    label_t type = label_none;
    int sample = 0;
    std::string prefix;
    double step = 0.0;

    friend bool operator==(const LabelFace& a, const LabelFace& b) = default;
};

LabelFace face_of(const std::optional<LabelDescription>& label) {
    if (!label) return {};
    const LabelPoint point = point_of(*label);
    const bool timed = label->rate && *label->rate > Fraction(0);
    const double step = timed ? (Fraction(1) / *label->rate).to_double() : EditLabel(label->type, {}).posn_step;
    return {label->type, point.sample, point.get_prefix(), step};
}

bool same_labels(const std::optional<LabelDescription>& a, const std::optional<LabelDescription>& b) {
    return face_of(a) == face_of(b);
}

const embedded::RateInfo* rate_of(const SourceDescription& source, const EditRecipe& recipe) {
    return source.rate ? source.rate : recipe.edit.rate;
}

class Comparison {
public:
    Comparison(const EditRecipe& wanted, const EditRecipe& got) : wanted_(wanted), got_(got) {}

    std::vector<std::string> run() {
        compare_edits();
        if (wanted_.channels.size() != got_.channels.size()) return tell("", "the number of tracks"), std::move(told_);
        int counts[3] = {};
        for (std::size_t i = 0; i < wanted_.channels.size(); ++i) {
            const bool sound = wanted_.channels[i].kind == sound_channel;
            const std::string name = (sound ? "A" : "V") + std::to_string(++counts[sound ? 1 : 0]);
            compare_channels(name, wanted_.channels[i], got_.channels[i]);
            if (cues_of(wanted_, i) != cues_of(got_, i)) tell(name, "its cues");
        }
        return std::move(told_);
    }

private:
    struct CueFace {
        Fraction time;
        embedded::EditBuilder::CueLevel level = embedded::EditBuilder::CueLevel::stack;
        std::string text;
        int flags = 0;

        friend bool operator==(const CueFace& a, const CueFace& b) {
            return a.time == b.time && a.text == b.text && a.flags == b.flags;
        }
    };

    void tell(const std::string& where, const std::string& what) {
        told_.push_back(where.empty() ? what : where + ": " + what);
    }
    void tell_unless(bool same, const std::string& where, const char* what) {
        if (!same) tell(where, what);
    }

    void compare_edits() {
        const EditDescription &a = wanted_.edit, &b = got_.edit;
        const std::string where = "the edit";
        tell_unless(a.name == b.name, where, "its name");
        tell_unless(a.project == b.project, where, "its project");
        tell_unless(a.rate == b.rate, where, "its rate");
        tell_unless(a.drop_frame == b.drop_frame, where, "whether it counts in drop-frame");
        tell_unless(a.start_frame == b.start_frame, where, "its start");
        tell_unless(a.film_rate == b.film_rate, where, "its film rate");
        tell_unless(a.modification_time == b.modification_time, where, "its time of modification");
        tell_unless(same_labels(a.timecode_24p, b.timecode_24p), where, "its 24-frame timecode");
    }

    void compare_sources(const ChannelItem& a, const ChannelItem& b) {
        const auto of = [](const EditRecipe& recipe, const ChannelItem& item) {
            const auto number = static_cast<std::size_t>(item.event.source);
            return number < recipe.sources.size() ? &recipe.sources[number] : nullptr;
        };
        const SourceDescription *one = of(wanted_, a), *other = of(got_, b);
        if (!one || !other || !compared_.insert({a.event.source, b.event.source}).second) return;
        compare_sources(*one, *other);
    }

    void compare_sources(const SourceDescription& a, const SourceDescription& b) {
        const std::string where = "source \"" + a.name + "\"";
        tell_unless(a.name == b.name, where, "its name");
        tell_unless(a.identity == b.identity, where, "what tells it from others");
        tell_unless(a.opens == b.opens, where, "whether its media is there");
        tell_unless(a.rendered == b.rendered, where, "whether it is rendered");
        tell_unless(rate_of(a, wanted_) == rate_of(b, got_), where, "its rate");
        tell_unless(a.film_rate == b.film_rate, where, "its film rate");
        tell_unless(a.start_strip.to_double() == b.start_strip.to_double(), where, "where its numbers begin");
        tell_unless(a.length == b.length, where, "its length");
        tell_unless(a.reels == b.reels, where, "a reel");
        tell_unless(std::tie(a.scene, a.take, a.description) == std::tie(b.scene, b.take, b.description), where,
                    "its scene, take or description");
        tell_unless(same_labels(a.video_timecode, b.video_timecode), where, "its video timecode");
        tell_unless(same_labels(a.sound_timecode, b.sound_timecode), where, "its sound timecode");
        tell_unless(same_labels(a.timecode_24p, b.timecode_24p), where, "its 24-frame timecode");
        tell_unless(same_labels(a.key, b.key), where, "its key number");
        tell_unless(same_labels(a.ink, b.ink), where, "its ink number");
    }

    static bool same_effects(const EventDescription& a, const EventDescription& b, bool fx) {
        const auto same = [fx](const EffectDescription& x, const EffectDescription& y) {
            return x.name == y.name && x.tracks == y.tracks && (fx || x.for_the_lab == y.for_the_lab);
        };
        const bool alike = std::equal(a.effects.begin(), a.effects.end(), b.effects.begin(), b.effects.end(), same);
        return alike && (a.effects.empty() || a.effect_tracks == b.effect_tracks);
    }

    void compare_items(const std::string& where, const ChannelItem& a, const ChannelItem& b, bool fx) {
        const auto is_event = [](const ChannelItem& item) { return item.kind == ChannelItem::Kind::event; };
        tell_unless(fx ? is_event(a) == is_event(b) : a.kind == b.kind, where, "what it is");
        tell_unless(a.event.duration == b.event.duration, where, "its length");
        tell_unless(same_effects(a.event, b.event, fx), where, "its effects");
        if (!is_event(a) || !is_event(b)) return;
        tell_unless(a.event.source_in == b.event.source_in, where, "where it begins in its source");
        tell_unless(a.event.speed == b.event.speed, where, "its speed");
        compare_sources(a, b);
    }

    static std::vector<const ChannelCut*> cuts_that_count(const RecipeChannel& channel) {
        std::vector<const ChannelCut*> cuts;
        for (const ChannelCut& cut : channel.cuts)
            if (!channel.fx() && (cuts.empty() || cuts.back()->before_item != cut.before_item)) cuts.push_back(&cut);
        return cuts;
    }

    static bool same_cuts(const ChannelCut* one, const ChannelCut* other) {
        const TransitionDescription &a = one->transition, &b = other->transition;
        const Fraction nothing;
        const bool wipe = a.kind == TransitionDescription::Kind::wipe;
        return one->before_item == other->before_item && a.kind == b.kind && (a.name == b.name || a.name.empty()) &&
               (!wipe || (a.pattern == b.pattern && a.reversed == b.reversed)) &&
               std::max(a.in_offset, nothing) == std::max(b.in_offset, nothing) &&
               std::max(a.out_offset, nothing) == std::max(b.out_offset, nothing);
    }

    void compare_channels(const std::string& name, const RecipeChannel& a, const RecipeChannel& b) {
        tell_unless(a.kind == b.kind, name, "its kind");
        tell_unless(a.subtype == b.subtype, name, "its sub-type");
        if (a.items.size() != b.items.size()) return tell(name, "the number of its items");
        for (std::size_t i = 0; i < a.items.size(); ++i)
            compare_items(name + ", item " + std::to_string(i + 1), a.items[i], b.items[i], a.fx());
        const auto one = cuts_that_count(a), other = cuts_that_count(b);
        tell_unless(std::equal(one.begin(), one.end(), other.begin(), other.end(), same_cuts), name, "a transition");
    }

    /// In the order in which lists see them.
    static std::vector<CueFace> cues_of(const EditRecipe& recipe, std::size_t channel) {
        std::vector<CueFace> cues;
        for (const RecipeCue& cue : recipe.cues)
            if (cue.channel < 0 || static_cast<std::size_t>(cue.channel) == channel)
                cues.push_back({cue.cue.time, cue.level, cue.cue.text, cue.cue.flags});
        std::stable_sort(cues.begin(), cues.end(), [](const CueFace& a, const CueFace& b) {
            return a.time == b.time ? a.level < b.level : a.time < b.time;
        });
        return cues;
    }

    const EditRecipe& wanted_;
    const EditRecipe& got_;
    std::vector<std::string> told_;
    std::set<std::pair<int, int>> compared_;
};

} // namespace

std::vector<std::string> differences_of(const EditRecipe& wanted, const EditRecipe& got) {
    return Comparison(wanted, got).run();
}

} // namespace formats
