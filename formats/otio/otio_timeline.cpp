#include "formats/otio/otio_timeline.h"

#include "formats/file_names.h"

#include <algorithm>
#include <limits>

namespace formats::otio {
namespace {

/// Those in a collection, also in one that lies in it.
void add_timelines(const Place& collection, std::vector<const JsonValue*>& found) {
    const JsonValue& children = children_of(collection);
    for (rapidjson::SizeType i = 0; i < children.Size(); ++i) {
        const Schema schema = schema_of(children[i]);
        if (schema == Schema::timeline) found.push_back(&children[i]);
        if (schema == Schema::collection) add_timelines(child_of(collection, children[i], i), found);
    }
}

/// Finds the rate of the first clip with a length whose nearest track is, or isn't, one of pictures.
class RateSearch {
public:
    explicit RateSearch(bool pictures) : pictures_(pictures) {}

    const RateInfo* in(const Place& item, bool on_pictures) const {
        const Schema schema = schema_of(*item.value);
        if (schema == Schema::clip) return on_pictures == pictures_ ? of_clip(item) : nullptr;
        if (!is_composition(schema)) return nullptr;
        if (schema == Schema::track) on_pictures = kind_of_track(*item.value) == picture_channel;
        const JsonValue& children = children_of(item);
        for (rapidjson::SizeType i = 0; i < children.Size(); ++i)
            if (const RateInfo* found = in(child_of(item, children[i], i), on_pictures)) return found;
        return nullptr;
    }

private:
    static const RateInfo* of_clip(const Place& clip) {
        embedded::Warnings said_elsewhere;
        Context quiet;
        quiet.warnings = &said_elsewhere;
        const std::optional<Time> length = media_of(clip, quiet).length();
        return length ? length->info : nullptr;
    }

    bool pictures_;
};

/// What trims every channel, and where in the edit a track's or stack's own times come to lie.
struct Window {
    Stretch stretch;
    bool open = true; ///< nothing trims

    std::optional<Fraction> place(const Fraction& time) const {
        if (open) return time;
        if (time < stretch.from || stretch.to <= time) return std::nullopt;
        return time - stretch.from;
    }
};

Window window_of_stack(const Place* stack, const Context& context) {
    if (!stack) return {};
    const std::optional<Range> range = read_range(*stack, "source_range");
    if (!range || !range->duration) return {};
    const Fraction start = range->start ? range->start->seconds_on(*context.rate) : Fraction(0);
    const Fraction end = start + range->duration->seconds_on(*context.rate);
    return {{std::max(start, Fraction(0)), std::max(end, Fraction(0))}, false};
}

embedded::CueDescription cue_at(const Fraction& time, const Mark& mark) { return {time, mark.text, mark.flags}; }

/// Adds the channels one by one.
class ChannelAdder {
public:
    ChannelAdder(const Root& root, const Context& context, embedded::EditBuilder& builder)
        : root_(root), context_(context), builder_(builder), sources_(builder), flattener_(context, sources_),
          window_(window_of_stack(root.stack(), context)) {
        whole_stack_is_off_ = root.stack() && !is_enabled(*root.stack());
    }

    void add_all();

private:
    struct Channel {
        int number = 0;
        int kind = picture_channel;
        int subtype = plain_subtype;
        bool lowest_listed = false;
    };

    int kind_of(const Place& place) const {
        return schema_of(*place.value) == Schema::track ? kind_of_track(*place.value) : picture_channel;
    }
    void add(const Place& place, Channel channel);
    Items items_of(const Place& place, const Channel& channel);
    void add_marks_of_track(const Place& track, const Channel& channel, const Stretch& stretch);
    void add_stack_marks();

    const Root& root_;
    const Context& context_;
    embedded::EditBuilder& builder_;
    Sources sources_;
    Flattener flattener_;
    Window window_;
    bool whole_stack_is_off_ = false;
};

void ChannelAdder::add_all() {
    bool lowest_found = false;
    for (const Place& place : root_.channels()) {
        Channel channel;
        channel.kind = kind_of(place);
        if (channel.kind == 0) {
            context_.warn_dropped(place, "the track is neither \"Video\" nor \"Audio\" and is left out");
            continue;
        }
        channel.subtype = subtype_of(place, context_);
        channel.lowest_listed = !lowest_found && channel.kind == picture_channel &&
                                channel.subtype != unlisted_subtype && channel.subtype != fx_subtype;
        lowest_found = lowest_found || channel.lowest_listed;
        channel.number = builder_.add_channel(channel.kind, channel.subtype);
        add(place, channel);
    }
    if (root_.stack()) {
        add_stack_marks();
        warn_of_effects(*root_.stack(), context_);
    }
}

void ChannelAdder::add(const Place& place, Channel channel) {
    Items items = items_of(place, channel);
    if (!window_.open) items = trimmed(std::move(items), window_.stretch, context_.warnings);
    timeline::hand_over(std::move(items), {channel.number, channel.subtype == fx_subtype, channel.lowest_listed},
                        builder_);
}

Items ChannelAdder::items_of(const Place& place, const Channel& channel) {
    const bool track = schema_of(*place.value) == Schema::track;
    Items items = track ? flattener_.children(place, channel.kind, channel.subtype == fx_subtype)
                        : flattener_.single(place, channel.kind);
    if (whole_stack_is_off_ || (track && !is_enabled(place))) {
        Items gap(1);
        gap.front().event.duration = flattener_.length(place);
        gap.front().event.label = place.text();
        return gap;
    }
    if (!track) return items;
    const Stretch stretch = stretch_of_track(place, length_of(items), context_);
    warn_of_effects(place, context_);
    add_marks_of_track(place, channel, stretch);
    return trimmed(std::move(items), stretch, context_.warnings);
}

void ChannelAdder::add_marks_of_track(const Place& track, const Channel& channel, const Stretch& stretch) {
    const bool has_range = json_member(*track.value, "source_range") != nullptr;
    const Window own{{std::max(stretch.from, Fraction(0)), stretch.to}, !has_range};
    for (const Mark& mark : read_markers(track, context_)) {
        const std::optional<Fraction> in_stack = own.place(mark.time);
        const std::optional<Fraction> time = in_stack ? window_.place(*in_stack) : std::nullopt;
        if (time) builder_.add_cue(channel.number, embedded::EditBuilder::CueLevel::track, cue_at(*time, mark));
    }
}

void ChannelAdder::add_stack_marks() {
    if (whole_stack_is_off_) return;
    for (const Mark& mark : read_markers(*root_.stack(), context_))
        if (const auto time = window_.place(mark.time)) builder_.add_stack_cue(cue_at(*time, mark));
}

} // namespace

std::vector<const JsonValue*> timelines_of(const JsonValue& document) {
    std::vector<const JsonValue*> found;
    const Place root{nullptr, {}, -1, &document};
    if (schema_of(document) == Schema::collection) add_timelines(root, found);
    if (schema_of(document) == Schema::timeline) found.push_back(&document);
    return found;
}

Root::Root(const JsonValue& document, std::size_t timeline)
    : document_{nullptr, {}, -1, &document}, object_(document_) {
    Schema schema = schema_of(document);
    if (schema == Schema::collection) {
        const std::vector<const JsonValue*> timelines = timelines_of(document);
        if (timelines.empty()) refuse(document_, "the collection holds no timeline");
        object_ = Place{nullptr, {}, -1, timelines.at(timeline)};
        schema = Schema::timeline;
    }
    if (schema == Schema::timeline || schema == Schema::stack)
        take_stack();
    else if (schema == Schema::track || schema == Schema::clip || schema == Schema::gap)
        channels_.push_back(object_);
    else
        refuse(document_, "the document is no timeline, nor anything that can be read as one");
}

bool Root::is_timeline() const { return schema_of(*object_.value) == Schema::timeline; }

void Root::take_stack() {
    stack_ = object_;
    if (is_timeline()) {
        const JsonValue* tracks = json_member(*object_.value, "tracks");
        if (tracks && schema_of(*tracks) != Schema::stack) refuse(object_, "\"tracks\" isn't a stack");
        stack_ = tracks ? object_.step("tracks", *tracks) : Place{};
    }
    if (!stack_.value) return;
    const JsonValue& children = children_of(stack_);
    for (rapidjson::SizeType i = 0; i < children.Size(); ++i)
        channels_.push_back(child_of(stack_, children[i], i));
}

const RateInfo* rate_of_edit(const Root& root) {
    if (root.is_timeline()) {
        const std::optional<Time> start = read_time(root.object(), "global_start_time");
        if (start && start->info) return start->info;
    }
    for (const bool pictures : {true, false})
        for (const Place& channel : root.channels())
            if (const RateInfo* found = RateSearch(pictures).in(channel, true)) return found;
    return embedded::nearest_rate(24.0);
}

embedded::EditDescription describe_edit(const Root& root, const Context& context, const std::string& path,
                                        std::int64_t file_time) {
    embedded::EditDescription edit;
    const Place& object = root.object();
    edit.name = name_of(*object.value);
    if (edit.name.empty()) edit.name = stem_of(path);
    edit.rate = context.rate;
    edit.modification_time = file_time;
    if (!root.is_timeline()) return edit;

    const JsonValue* own = own_metadata_of(object.value);
    const std::optional<Time> start = read_time(object, "global_start_time");
    if (start) edit.start_frame = start->frames_at(*context.rate).nearest();
    edit.project = json_text(json_member(own, "project"));
    edit.identity = json_text(json_member(own, "identity"));
    edit.drop_frame = context.drop_frame && context.rate->can_drop();
    edit.film_rate = context.film_rate;
    const std::string timecode = json_text(json_member(own, "timecode_24p"));
    if (!timecode.empty())
        edit.timecode_24p = label_from_text(object, context, label_tc_24, timecode, "24-frame timecode");
    if (edit.timecode_24p)
        edit.timecode_24p->rate = edit.film_rate ? *edit.film_rate : embedded::film_rate_of(*context.rate);

    long long time = 0;
    const JsonValue* modified = json_member(own, "modification_time");
    constexpr long long most = std::numeric_limits<long long>::max() / 2;
    if (json_integer(modified, -most, most, &time))
        edit.modification_time = time;
    else if (modified)
        context.warn(object, "\"modification_time\" is no whole number, so the file's counts",
                     embedded::WarningKind::replaced);
    return edit;
}

int subtype_of(const Place& channel, const Context& context) {
    const JsonValue* subtype = json_member(own_metadata_of(channel.value), "subtype");
    long long number = 0;
    if (!subtype || schema_of(*channel.value) != Schema::track) return plain_subtype;
    const bool whole = json_integer(subtype, 0, 0xFFFF, &number);
    if (whole && (number == unlisted_subtype || number == fx_subtype)) return static_cast<int>(number);
    if (!whole || number != plain_subtype)
        context.warn(channel, "its \"subtype\" is none of 0, 4 and 8: it counts as 0");
    return plain_subtype;
}

void add_channels(const Root& root, const Context& context, embedded::EditBuilder& builder) {
    ChannelAdder(root, context, builder).add_all();
}

} // namespace formats::otio
