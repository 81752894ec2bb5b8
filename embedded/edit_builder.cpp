#include "embedded/edit_builder.h"

#include "embedded/edit_data.h"
#include "embedded/edit_store.h"
#include "embedded/source_naming.h"
#include "embedded/visible_text.h"
#include "embedded/warning.h"

#include <algorithm>
#include <cfloat>
#include <climits>
#include <numeric>

namespace embedded {

namespace {

float as_float(const Fraction& value) {
    return static_cast<float>(
        std::clamp(value.to_double(), -static_cast<double>(FLT_MAX), static_cast<double>(FLT_MAX)));
}

ChannelEvent point(const Fraction& edit_time, const Fraction& source_time, float speed, const Cookie& cookie) {
    ChannelEvent event;
    event.speed = speed;
    event.edit_time = edit_time.to_double();
    event.source_time = source_time.to_double();
    event.cookie = cookie;
    return event;
}

CelEvent event_of(const LaidEvent& laid, float speed, const Cookie& cookie) {
    CelEvent event;
    event.in = point(laid.edit_in, laid.source_in, speed, cookie);
    event.out = point(laid.edit_out, laid.source_out, speed, cookie);
    const bool whole_head = laid.whole_edit_in == laid.edit_in && laid.whole_source_in == laid.source_in;
    const bool whole_tail = laid.whole_edit_out == laid.edit_out && laid.whole_source_out == laid.source_out;
    event.whole_in = whole_head ? event.in : point(laid.whole_edit_in, laid.whole_source_in, speed, cookie);
    event.whole_out = whole_tail ? event.out : point(laid.whole_edit_out, laid.whole_source_out, speed, cookie);
    event.transition = laid.kind == LaidEvent::Kind::transition;
    event.only_beside_transition = !event.transition && laid.whole_edit_in == laid.whole_edit_out;
    return event;
}

EventFacts facts_of(const LaidEvent& laid, const CelEvent& event) {
    EventFacts facts;
    facts.kind = event.transition            ? EventFacts::Kind::transition
                 : event.in.cookie.isBlack() ? EventFacts::Kind::black
                                             : EventFacts::Kind::material;
    facts.cookie = event.in.cookie;
    facts.edit_in = laid.edit_in;
    facts.edit_out = laid.edit_out;
    facts.whole_in = laid.whole_edit_in;
    facts.whole_out = laid.whole_edit_out;
    facts.source_in = laid.whole_source_in;
    facts.only_beside_transition = event.only_beside_transition;
    return facts;
}

void add_lab_effects(const EffectGraph& graph, EventFacts& facts) {
    if (graph.components.empty()) return;
    facts.lab_tracks = graph.material_tracks;
    if (graph.components.size() == 1) facts.lab_effect = toUTF8(graph.components[0]->getName()).c_str();
}

void set_text(settings_block& values, const char* key, const std::string& text) {
    if (!text.empty()) values.set(key, text);
}

LabelStart own_timecode(const EditDescription& edit, const RateInfo& rate) {
    const label_t type = edit.drop_frame ? rate.drop_timecode : rate.timecode;
    const auto frame = std::clamp<std::int64_t>(edit.start_frame, INT_MIN, INT_MAX);
    return {LabelPoint(static_cast<int>(frame), type), Fraction(rate.den, rate.num).to_double()};
}

std::function<void(SourceDescription&)>& source_naming() {
    static std::function<void(SourceDescription&)> naming;
    return naming;
}

} // namespace

std::optional<LabelStart> label_start(const LabelDescription& description) {
    LabelStart start{LabelPoint(0, description.type), 0.0};
    if (description.sample)
        start.point.set_sample(*description.sample);
    else
        start.point.set_sample(description.text.c_str());
    if (!start.point.is_useful()) return std::nullopt;
    if (description.rate && *description.rate > Fraction()) start.step = (Fraction(1) / *description.rate).to_double();
    return start;
}

void receive_effects(std::vector<EffectDescription>& effects, Warnings& warnings) {
    for (EffectDescription& effect : effects)
        receive(effect.name, "effect", warnings);
}

void receive_source(SourceDescription& source, Warnings& warnings) {
    receive(source.name, "source", warnings);
    for (auto& [ident, reel] : source.reels)
        receive(reel, "reel", warnings);
    receive(source.scene, "scene", warnings);
    receive(source.take, "take", warnings);
    receive(source.description, "description", warnings);
}

struct EditBuilder::Impl {
    explicit Impl(EditDescription edit_description)
        : rate(edit_description.rate ? *edit_description.rate : default_rate()) {
        recipe.edit = std::move(edit_description);
        recipe.edit.rate = &rate;
    }

    EditRecipe recipe;
    EditDescription& description = recipe.edit;
    std::vector<RecipeChannel>& channels = recipe.channels;
    std::vector<RecipeCue>& cues = recipe.cues;
    const RateInfo& rate;
    std::vector<EditPtr> sources;
    Unrender unrender;
    Warnings warnings;

    void receive_edit() {
        receive(description.name, "edit", warnings);
        receive(description.project, "project", warnings);
    }
    /// The label itself goes where it can't be read.
    std::optional<LabelStart> readable_label(std::optional<LabelDescription>& label, const char* owner,
                                             const std::string& name);
    RecipeChannel& channel(int number) { return channels.at(static_cast<std::size_t>(number)); }
    /// Null for what isn't material.
    const Edit* source_of(const ChannelItem& item) const;
    CelEvent item_event(const LaidEvent& laid, const ChannelItem* item, int number, Sequence& sequence) const;
    CelEvent transition_event(const LaidEvent& laid, const ChannelCut& cut, Sequence& sequence) const;
    EventFacts facts_of_event(const LaidEvent& laid, const CelEvent& event, const RecipeChannel& made,
                              const Sequence& sequence) const;
    CelEvents events_of(int number, Sequence& sequence, std::vector<EventFacts>& facts);
    void add_channels(Sequence& sequence);
    std::unique_ptr<CueList> cue_list() const;
    std::unique_ptr<Sequence> sequence();
};

std::optional<LabelStart> EditBuilder::Impl::readable_label(std::optional<LabelDescription>& label, const char* owner,
                                                            const std::string& name) {
    if (!label) return std::nullopt;
    const bool given = label->type != label_none;
    std::optional<LabelStart> start = given ? label_start(*label) : std::nullopt;
    if (given && !start)
        warnings.push_back({WarningKind::dropped, owner + (" \"" + name + "\": \"") + label->text +
                                                      "\" can't be read as " + label_type_to_edlstr(label->type)});
    if (!start) label.reset();
    return start;
}

const Edit* EditBuilder::Impl::source_of(const ChannelItem& item) const {
    const auto source = static_cast<std::size_t>(item.event.source);
    const bool material = item.kind == ChannelItem::Kind::event && source < sources.size();
    return material ? sources[source].get() : nullptr;
}

CelEvent EditBuilder::Impl::item_event(const LaidEvent& laid, const ChannelItem* item, int number,
                                       Sequence& sequence) const {
    const bool fx = channels[static_cast<std::size_t>(number)].fx();
    const bool material = item && item->kind == ChannelItem::Kind::event;
    const Edit* const source = item ? source_of(*item) : nullptr;
    CelEvent event =
        event_of(laid, material ? as_float(item->event.speed) : 1.0F, source ? source->cookie : cookie_of_black());
    if (source && source->impl()->medium->rendered) sequence.rendered_material = true;
    const bool effects = item && !item->event.effects.empty();
    event.object = {0, !effects ? stamp_plain_object : fx ? stamp_effect_object : stamp_zero};
    if (!effects) return event;
    event.graph = {static_cast<std::uint32_t>(sequence.graphs.size()), stamp_zero};
    sequence.graphs.push_back(graph_of_effects(item->event, number, fx));
    return event;
}

CelEvent EditBuilder::Impl::transition_event(const LaidEvent& laid, const ChannelCut& cut, Sequence& sequence) const {
    CelEvent event = event_of(laid, 1.0F, cookie_of_transition(cut.transition));
    event.object = {0, stamp_zero};
    event.graph = {static_cast<std::uint32_t>(sequence.graphs.size()), stamp_transition_graph};
    sequence.graphs.push_back(graph_of_transition(cut.transition));
    return event;
}

EventFacts EditBuilder::Impl::facts_of_event(const LaidEvent& laid, const CelEvent& event, const RecipeChannel& made,
                                             const Sequence& sequence) const {
    EventFacts facts = facts_of(laid, event);
    if (laid.kind == LaidEvent::Kind::transition) facts.label = made.cuts[laid.index].transition.label;
    if (laid.kind != LaidEvent::Kind::item) return facts;
    const EventDescription& item = made.items[laid.index].event;
    facts.label = item.label;
    if (facts.kind == EventFacts::Kind::material) facts.speed = item.speed;
    if (event.graph.valid()) add_lab_effects(sequence.graphs[event.graph.number()], facts);
    return facts;
}

CelEvents EditBuilder::Impl::events_of(int number, Sequence& sequence, std::vector<EventFacts>& facts) {
    const RecipeChannel& made = channel(number);
    const Fraction frame(rate.den, rate.num);
    CelEvents events;
    const std::vector<LaidEvent> all = made.fx() ? lay_out_effects(made.items, made.cuts, frame, warnings)
                                                 : lay_out_cuts(made.items, made.cuts, frame, warnings);
    events.reserve(all.size());
    facts.reserve(all.size());
    for (const LaidEvent& laid : all) {
        if (laid.kind == LaidEvent::Kind::transition)
            events.push_back(transition_event(laid, made.cuts[laid.index], sequence));
        else if (laid.kind == LaidEvent::Kind::edge_black)
            events.push_back(item_event(laid, nullptr, number, sequence));
        else
            events.push_back(item_event(laid, &made.items[laid.index], number, sequence));
        facts.push_back(facts_of_event(laid, events.back(), made, sequence));
    }
    return events;
}

void EditBuilder::Impl::add_channels(Sequence& sequence) {
    const double resolution = Fraction(rate.den, rate.num).to_double();
    for (std::size_t i = 0; i < channels.size(); ++i) {
        CelEvents events = events_of(static_cast<int>(i), sequence, sequence.facts.emplace_back());
        Qb::Ptr<Cel> cel = make_cel(std::make_shared<const CelEvents>(std::move(events)), resolution);
        sequence.channels.push_back({channels[i].kind, channels[i].subtype, cel});
    }
}

std::unique_ptr<CueList> EditBuilder::Impl::cue_list() const {
    std::vector<std::size_t> order(cues.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
        const RecipeCue &x = cues[a], &y = cues[b];
        return x.cue.time == y.cue.time ? x.level < y.level : x.cue.time < y.cue.time;
    });
    std::vector<CueEntry> entries;
    for (const std::size_t place : order) {
        const RecipeCue& made = cues[place];
        const LightweightString<char> text(made.cue.text.data(), made.cue.text.size());
        entries.push_back({made.cue.time.to_double(), made.channel, entries.size(), {fromUTF8(text), made.cue.flags}});
    }
    return std::unique_ptr<CueList>(make_cue_list(std::move(entries), static_cast<int>(channels.size())));
}

std::unique_ptr<Sequence> EditBuilder::Impl::sequence() {
    auto made = std::make_unique<Sequence>();
    made->project = description.project;
    made->drop_frame = description.drop_frame;
    made->timecode = own_timecode(description, rate);
    made->timecode_24p = readable_label(description.timecode_24p, "edit", description.name);
    add_channels(*made);
    made->cues = cue_list();
    made->sources = std::move(sources);
    made->unrender = std::move(unrender);
    made->recipe = std::move(recipe);
    return made;
}

const std::string& SourceDescription::reel(const ReelLabel& label) const {
    static const std::string none;
    const auto found = reels.find(label);
    return found == reels.end() ? none : found->second;
}

EditBuilder::EditBuilder(EditDescription description) : impl_(new Impl(std::move(description))) {
    impl_->receive_edit();
}

EditBuilder::~EditBuilder() { delete impl_; }

int EditBuilder::add_channel(int kind, int subtype) {
    impl_->channels.push_back({kind, subtype, {}, {}});
    return static_cast<int>(impl_->channels.size()) - 1;
}

void set_source_naming(std::function<void(SourceDescription&)> naming) { source_naming() = std::move(naming); }

SourceId EditBuilder::add_source(SourceDescription source) {
    receive_source(source, impl_->warnings);
    if (source_naming()) source_naming()(source);
    auto edit = std::make_unique<Edit::Impl>(source.rate ? *source.rate : impl_->rate);
    EditStore& store = EditStore::get();
    edit->cookie = cookie_of_edit(source.identity, store.next_serial());
    edit->name = source.name;
    edit->film_rate = source.film_rate;
    edit->start_strip = source.start_strip.to_double();
    set_text(edit->values, "scene", source.scene);
    set_text(edit->values, "take", source.take);
    set_text(edit->values, "description", source.description);
    edit->medium = std::make_unique<Medium>();
    Medium& medium = *edit->medium;
    medium.opens = source.opens;
    medium.rendered = source.rendered;
    const auto readable = [&](std::optional<LabelDescription>& label) {
        return impl_->readable_label(label, "source", source.name);
    };
    medium.reels = source.reels;
    medium.video_timecode = readable(source.video_timecode);
    medium.sound_timecode = readable(source.sound_timecode);
    medium.timecode_24p = readable(source.timecode_24p);
    medium.key = readable(source.key);
    medium.ink = readable(source.ink);
    medium.length = source.length;
    impl_->recipe.sources.push_back(std::move(source));
    impl_->sources.emplace_back() = new Edit(edit.release());
    return static_cast<SourceId>(impl_->sources.size()) - 1;
}

void EditBuilder::add_event(int channel, EventDescription event) {
    receive_effects(event.effects, impl_->warnings);
    make_visible(event.label);
    impl_->channel(channel).items.push_back({ChannelItem::Kind::event, std::move(event)});
}

void EditBuilder::add_black(int channel, const Fraction& duration, std::vector<EffectDescription> effects,
                            std::vector<int> effect_tracks) {
    ChannelItem black{ChannelItem::Kind::black, {}};
    black.event.duration = duration;
    receive_effects(effects, impl_->warnings);
    black.event.effects = std::move(effects);
    black.event.effect_tracks = std::move(effect_tracks);
    impl_->channel(channel).items.push_back(std::move(black));
}

void EditBuilder::add_gap(int channel, const Fraction& duration, std::vector<EffectDescription> effects,
                          std::vector<int> effect_tracks) {
    RecipeChannel& made = impl_->channel(channel);
    ChannelItem gap;
    gap.event.duration = duration;
    if (made.fx()) {
        receive_effects(effects, impl_->warnings);
        gap.event.effects = std::move(effects);
        gap.event.effect_tracks = std::move(effect_tracks);
    } else if (!effects.empty()) {
        impl_->warnings.push_back(
            {WarningKind::dropped, "effects of a gap are left out, as it doesn't stand on an FX channel"});
    }
    made.items.push_back(std::move(gap));
}

void EditBuilder::add_transition(int channel, TransitionDescription transition) {
    RecipeChannel& made = impl_->channel(channel);
    receive(transition.name, "transition", impl_->warnings);
    make_visible(transition.label);
    made.cuts.push_back({made.items.size(), std::move(transition)});
}

void EditBuilder::add_cue(int channel, CueLevel level, CueDescription cue) {
    receive(cue.text, "cue", impl_->warnings);
    impl_->cues.push_back({channel, level, std::move(cue)});
}

void EditBuilder::add_stack_cue(CueDescription cue) {
    receive(cue.text, "cue", impl_->warnings);
    impl_->cues.push_back({-1, CueLevel::stack, std::move(cue)});
}

void EditBuilder::set_unrender(Unrender unrender) { impl_->unrender = std::move(unrender); }

EditPtr EditBuilder::finish() {
    auto edit = std::make_unique<Edit::Impl>(impl_->rate);
    const EditDescription& description = impl_->description;
    EditStore& store = EditStore::get();
    const std::string identity = description.identity.empty() ? "edit:" + description.name : description.identity;
    edit->cookie = cookie_of_edit(identity, store.next_serial());
    edit->name = description.name;
    edit->film_rate = description.film_rate;
    edit->values.set("modification_time", std::to_string(description.modification_time));
    edit->sequence = impl_->sequence(); // takes the description
    EditPtr finished;
    finished = new Edit(edit.release());
    store.make_current(finished.get());
    return finished;
}

bool RecipeChannel::fx() const { return subtype == chan_fx; }

const EditRecipe* recipe_of(const EditPtr& edit) {
    return edit && edit->impl()->sequence ? &edit->impl()->sequence->recipe : nullptr;
}

const std::vector<EventFacts>& facts_of_channel(const EditPtr& edit, int chan) {
    static const std::vector<EventFacts> none;
    const Sequence* sequence = edit ? edit->impl()->sequence.get() : nullptr;
    const bool known = sequence && chan >= 0 && static_cast<std::size_t>(chan) < sequence->facts.size();
    return known ? sequence->facts[static_cast<std::size_t>(chan)] : none;
}

std::optional<Fraction> length_of_source(const EditPtr& source) {
    return source && source->impl()->medium ? source->impl()->medium->length : std::nullopt;
}

const Warnings& EditBuilder::warnings() const { return impl_->warnings; }

CueList* EditBuilder::cues_of(const EditPtr& edit) {
    return edit && edit->impl()->sequence ? edit->impl()->sequence->cues.get() : nullptr;
}

const std::string& EditBuilder::project_of(const EditPtr& edit) {
    static const std::string none;
    return edit && edit->impl()->sequence ? edit->impl()->sequence->project : none;
}

} // namespace embedded
