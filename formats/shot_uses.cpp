#include "formats/shot_uses.h"

#include "embedded/clamped.h"
#include "formats/source_labels.h"

#include <algorithm>
#include <map>
#include <string>

namespace formats {
namespace {

using embedded::ChannelItem;
using embedded::EditRecipe;
using embedded::Fraction;
using embedded::LabelDescription;
using embedded::LaidEvent;
using embedded::RecipeChannel;
using embedded::SourceDescription;

std::int64_t ceiling(const Fraction& value) { return -(-value).floor(); }

void append(std::string& key, const std::string& text) { key += std::to_string(text.size()) + ":" + text; }

void append(std::string& key, const Fraction& value) {
    const Fraction::wide parts[] = {value.num(), value.den()};
    key.append(reinterpret_cast<const char*>(parts), sizeof parts);
}

/// What the label would count at midnight of the timecode: the same for sources that are one shot.
void append_anchor(std::string& key, const std::optional<LabelDescription>& label, const Fraction& midnight,
                   const Fraction& rate) {
    key += label ? 'y' : 'n';
    if (!label) return;
    const LabelPoint point = point_of(*label);
    append(key, point.get_prefix());
    key += std::to_string(point.type()) + ",";
    append(key, Fraction(point.sample, point.cvt()->samples_per_frame()) + midnight * rate);
}

class UseFinder {
public:
    using PartOf = std::function<ShotUse::Part(const ShotUse&)>;

    UseFinder(const EditRecipe& recipe, std::vector<const SourceDescription*>& left_out, const PartOf& part_of)
        : recipe_(recipe), left_out_(left_out), part_of_(part_of) {}

    void add(const RecipeChannel& channel) {
        if (channel.fx()) return;
        find_shares(channel);
        Fraction start;
        for (std::size_t i = 0; i < channel.items.size(); ++i) {
            const ChannelItem& item = channel.items[i];
            const Fraction end = start + item.event.duration;
            if (item.kind == ChannelItem::Kind::event) add(item, start - before_[i], end + behind_[i + 1], end);
            start = end;
        }
    }

    std::vector<ShotUse> uses() {
        std::vector<ShotUse> all;
        for (auto& [key, use] : uses_)
            all.push_back(use);
        std::stable_sort(all.begin(), all.end(), [](const ShotUse& a, const ShotUse& b) {
            const std::string &one = reel_of(a), &other = reel_of(b);
            return one == other ? a.from < b.from : one < other;
        });
        return all;
    }

private:
    static const std::string& reel_of(const ShotUse& use) { return use.source->reel(embedded::tape_reel); }

    /// How far the transition at each cut reaches to both sides.
    void find_shares(const RecipeChannel& channel) {
        embedded::Warnings said_when_read;
        std::vector<Fraction> starts{Fraction(0)};
        for (const ChannelItem& item : channel.items)
            starts.push_back(starts.back() + item.event.duration);
        before_.assign(starts.size(), Fraction(0));
        behind_.assign(starts.size(), Fraction(0));
        const Fraction frame(recipe_.edit.rate->den, recipe_.edit.rate->num);
        for (const LaidEvent& laid : lay_out_cuts(channel.items, channel.cuts, frame, said_when_read)) {
            if (laid.kind != LaidEvent::Kind::transition) continue;
            const std::size_t cut = channel.cuts[laid.index].before_item;
            before_[cut] = starts[cut] - laid.edit_in;
            behind_[cut] = laid.edit_out - starts[cut];
        }
    }

    /// Backward the stretch runs down from its upper end.
    void add(const ChannelItem& item, const Fraction& from, const Fraction& to, const Fraction& end) {
        const auto number = static_cast<std::size_t>(item.event.source);
        if (number >= recipe_.sources.size() || !(from < to)) return;
        const SourceDescription& source = recipe_.sources[number];
        if (!source.video_timecode || !source.opens) return leave_out(source);
        const Fraction& speed = item.event.speed;
        const Fraction start = end - item.event.duration;
        const Fraction low = item.event.source_in + (speed < Fraction(0) ? to - end : from - start) * speed;
        const Fraction length = (to - from) * magnitude(speed);
        add(source, low, low + length);
    }

    void leave_out(const SourceDescription& source) {
        if (std::find(left_out_.begin(), left_out_.end(), &source) == left_out_.end()) left_out_.push_back(&source);
    }

    void add(const SourceDescription& source, const Fraction& low, const Fraction& high) {
        ShotUse use;
        use.source = &source;
        use.rate = source.rate ? source.rate : recipe_.edit.rate;
        use.film_rate = film_rate_of(source, *recipe_.edit.rate);
        const int first = point_of(*source.video_timecode).sample;
        use.from = first + (low * use.rate->rate()).floor();
        use.to = std::max(first + ceiling(high * use.rate->rate()), use.from + 1);
        const auto [known, fresh] = uses_.try_emplace({key_of(use), part_of_(use)}, use);
        if (fresh) return;
        known->second.from = std::min(known->second.from, use.from);
        known->second.to = std::max(known->second.to, use.to);
    }

    static std::string key_of(const ShotUse& use) {
        const SourceDescription& source = *use.source;
        std::string key;
        for (const auto& [medium, reel] : source.reels) {
            key += std::to_string(medium.first) + "," + std::to_string(medium.second);
            append(key, reel);
        }
        for (const std::string* text :
             {&source.name, &source.identity, &source.scene, &source.take, &source.description})
            append(key, *text);
        key += std::to_string(source.video_timecode->type) + "," + std::to_string(use.rate->code);
        append(key, use.film_rate);
        append(key, source.start_strip);
        const Fraction midnight = use.seconds_at(0);
        append_anchor(key, source.key, midnight, use.film_rate);
        append_anchor(key, source.ink, midnight, use.film_rate);
        append_anchor(key, source.sound_timecode, midnight, use.rate->rate());
        append_anchor(key, source.timecode_24p, midnight, use.film_rate);
        return key;
    }

    const EditRecipe& recipe_;
    std::vector<const SourceDescription*>& left_out_;
    std::vector<Fraction> before_, behind_;
    const PartOf& part_of_;
    std::map<std::pair<std::string, ShotUse::Part>, ShotUse> uses_;
};

} // namespace

Fraction ShotUse::seconds_at(std::int64_t frame) const {
    return Fraction(frame - point_of(*source->video_timecode).sample) / rate->rate();
}

std::vector<ShotUse> shot_uses(const EditRecipe& recipe, const std::vector<int>& channels,
                               std::vector<const SourceDescription*>& left_out,
                               const std::function<ShotUse::Part(const ShotUse&)>& part_of) {
    UseFinder finder(recipe, left_out, part_of);
    for (const int channel : channels)
        finder.add(recipe.channels.at(static_cast<std::size_t>(channel)));
    return finder.uses();
}

LabelPoint point_at(const LabelDescription& label, const Fraction& seconds, const Fraction& rate) {
    LabelPoint point = point_of(label);
    const std::int64_t samples = (seconds * rate).floor() * point.cvt()->samples_per_frame();
    point += embedded::clamp_to_int(samples);
    return point;
}

} // namespace formats
