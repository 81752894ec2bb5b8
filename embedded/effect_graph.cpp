// Effect nodes and the walks over events and their effects.

#include "embedded/edit_data.h"

#include <algorithm>
#include <cmath>

using embedded::CelEvent;
using embedded::EffectDescription;
using embedded::EffectGraph;
using embedded::TransitionDescription;

namespace embedded {

namespace {

LightweightString<wchar_t> wide_text(const std::string& text) {
    return fromUTF8(LightweightString<char>(text.data(), text.size()));
}

class PlainNode : public FXGraphNodeBase {
public:
    explicit PlainNode(const std::string& name) : name_(wide_text(name)) {}
    LightweightString<wchar_t> getName() const override { return name_; }

private:
    LightweightString<wchar_t> name_;
};

class WipeNode : public DissolveWipeEffect {
public:
    explicit WipeNode(const TransitionDescription& wipe)
        : name_(wide_text(wipe.name)), pattern_(wipe.pattern), reversed_(wipe.reversed) {}
    LightweightString<wchar_t> getName() const override { return name_; }
    WipePattern getPattern() const override { return pattern_; }
    bool isReversed() const override { return reversed_; }

private:
    LightweightString<wchar_t> name_;
    WipePattern pattern_;
    bool reversed_;
};

class InstanceNode : public EffectInstance_opu4h5a4j {
public:
    explicit InstanceNode(const std::vector<EffectDescription>& effects) {
        if (effects.size() == 1) name_ = wide_text(effects.front().name);
        flag = std::any_of(effects.begin(), effects.end(), [](const auto& effect) { return effect.for_the_lab; });
    }
    LightweightString<wchar_t> getName() const override { return name_; }

private:
    LightweightString<wchar_t> name_;
};

void join_tracks(std::vector<int>& joined, const std::vector<int>& more) {
    for (const int track : more)
        if (std::find(joined.begin(), joined.end(), track) == joined.end()) joined.push_back(track);
}

std::vector<int> material_tracks(const EventDescription& event, int channel) {
    std::vector<int> tracks;
    for (const EffectDescription& effect : event.effects)
        join_tracks(tracks, effect.tracks);
    if (tracks.empty()) join_tracks(tracks, event.effect_tracks);
    if (tracks.empty()) tracks.push_back(channel);
    return tracks;
}

const CelEvents& events_of(const ce_handle& handle) { return *handle.cel->impl()->events; }

const CelEvent& event_of(const ce_handle& handle) {
    return events_of(handle)[static_cast<std::size_t>(handle.index / 2)];
}

Qb::Ptr<Cel> channel_cel(const EditPtr& edit, int chan) {
    return edit ? edit->get_edit_cel_p(chan) : Qb::Ptr<Cel>(new Cel(0, 0.0));
}

const EffectGraph* graph_of(const EditPtr& edit, const IdStamp& stamp) {
    if (!edit || !stamp.valid() || !edit->impl()->sequence) return nullptr;
    const auto& graphs = edit->impl()->sequence->graphs;
    return stamp.number() < graphs.size() ? &graphs[stamp.number()] : nullptr;
}

bool has_effects(const CelEvent& event) { return event.graph.valid() && !event.transition; }

void note_asked(const EditPtr& edit, int chan, const ce_handle& handle) {
    if (edit && edit->impl()->sequence) edit->impl()->sequence->last_asked = {chan, handle.index / 2};
}

// Of the events with effects from `first` on that begin at `time`: the one that was asked for last, else the
// last of them, as those before it have no length. -1 when there is none.
int beginning_at(const CelEvents& events, std::size_t first, double time, int asked) {
    int chosen = -1;
    for (std::size_t i = first; i < events.size() && events[i].in.edit_time == time; ++i) {
        if (!has_effects(events[i])) continue;
        chosen = static_cast<int>(i);
        if (chosen == asked) break;
    }
    return chosen;
}

int event_with_effects_at(const CelEvents& events, double time, int asked) {
    const auto begins = std::lower_bound(events.begin(), events.end(), time,
                                         [](const CelEvent& event, double at) { return event.in.edit_time < at; });
    const auto place = static_cast<std::size_t>(begins - events.begin());
    const int chosen = beginning_at(events, place, time, asked);
    if (chosen >= 0 || place == 0) return chosen;
    const CelEvent& running = events[place - 1];
    return has_effects(running) && time < running.out.edit_time ? static_cast<int>(place) - 1 : -1;
}

} // namespace

EffectGraph graph_of_effects(const EventDescription& event, int channel, bool fx_channel) {
    EffectGraph graph;
    graph.node = Qb::Ptr<FXGraphNodeBase>(new InstanceNode(event.effects));
    for (const EffectDescription& effect : event.effects)
        if (fx_channel || effect.for_the_lab) graph.components.emplace_back(new PlainNode(effect.name));
    graph.material_tracks = material_tracks(event, channel);
    return graph;
}

EffectGraph graph_of_transition(const TransitionDescription& transition) {
    EffectGraph graph;
    if (transition.kind == TransitionDescription::Kind::wipe)
        graph.node = Qb::Ptr<FXGraphNodeBase>(new WipeNode(transition));
    else
        graph.node = Qb::Ptr<FXGraphNodeBase>(new PlainNode(transition.name));
    return graph;
}

} // namespace embedded

CelEventPair::CelEventPair(const EditPtr& edit, const ce_handle& handle, int chan)
    : edit_(edit), handle_(handle), chan_(chan) {
    if (handle_.is_out_point()) --handle_.index;
}

double CelEventPair::editTime() const { return handle_.get_channel_event().edit_time; }

double CelEventPair::endEditTime() const { return handle_.valid() ? embedded::event_of(handle_).out.edit_time : 0.0; }

IdStamp CelEventPair::getObjectID() const { return handle_.valid() ? embedded::event_of(handle_).object : IdStamp(); }

Qb::Ptr<FXGraphNodeBase> CelEventPair::getEffectHandle() const {
    return edit_ ? edit_->getVideoNode(handle_.getEffectGraph()) : Qb::Ptr<FXGraphNodeBase>();
}

EditChanSubType CelEventPair::getChanSubType() const { return edit_ ? edit_->getChanSubtype(chan_) : chan_plain; }

ce_handle CelEventPair::inH() const {
    embedded::note_asked(edit_, chan_, handle_);
    return handle_;
}

CelIterator::CelIterator(const EditPtr& edit, int chan) : CelEventPair(edit, ce_handle(), chan) {
    cel_ = embedded::channel_cel(edit, chan);
    handle_ = cel_->get_start_ceh();
}

bool CelIterator::valid() const { return handle_.valid() != 0; }

CelIterator& CelIterator::operator++() {
    handle_.increment(ce_all);
    handle_.increment(ce_all);
    return *this;
}

EditGraphIterator::EditGraphIterator(const EditPtr& edit, int chan, const double& time, int)
    : edit_(edit), cel_(embedded::channel_cel(edit, chan)) {
    int asked = -1;
    if (edit && edit->impl()->sequence && edit->impl()->sequence->last_asked.first == chan)
        asked = edit->impl()->sequence->last_asked.second;
    const int event = embedded::event_with_effects_at(*cel_->impl()->events, time, asked);
    if (event < 0) return;
    handle_ = {cel_.get(), event * 2};
    found = 1;
}

void EditGraphIterator::findComponentsForCurrentEffect(Vector<Qb::Ptr<FXGraphNodeBase>>& components) const {
    components.clear();
    const EffectGraph* graph = embedded::graph_of(edit_, handle_.getEffectGraph());
    if (graph) components.assign(graph->components.begin(), graph->components.end());
}

void EditGraphIterator::findMaterialTracks(Vector<int>& tracks) const {
    tracks.clear();
    const EffectGraph* graph = embedded::graph_of(edit_, handle_.getEffectGraph());
    if (graph) tracks.assign(graph->material_tracks.begin(), graph->material_tracks.end());
}

template <> bool valEqualsVal<double>(const double& a, const double& b) { return std::fabs(a - b) <= 1e-9; }
