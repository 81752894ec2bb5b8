#include "cutlist/fx_opticals.h"

#include "cutlist/event_details.h"
#include "cutlist/generator_labels.h"
#include "host/fixed_text.h"

#include <algorithm>
#include <memory>

namespace {

constexpr int plain_object_magic = 1;
constexpr int transition_magic = 2;
constexpr int effect_object_magic = 3;
constexpr std::size_t mask_bits = 32;
constexpr const char* unknown_type = "*unknown-effect-type*";

/// Which picture channels an effect draws on.
struct layer_set {
    std::uint32_t mask = 0;
    int count = 0;
};

layer_set layers_of(const Vector<int>& material, const Vector<int>& videos) {
    layer_set layers;
    for (const int track : material) {
        const auto place = std::find(videos.begin(), videos.end(), track);
        if (place == videos.end()) continue;
        layers.mask |= 1U << (static_cast<std::size_t>(place - videos.begin()) % mask_bits);
        ++layers.count;
    }
    return layers;
}

/// What the effect graph at an event says; `layers.count` stays 0 when it makes no optical.
struct optical_content {
    Vector<Qb::Ptr<FXGraphNodeBase>> components;
    layer_set layers;
};

optical_content content_of(const EditPtr& edit, int chan, double time) {
    optical_content content;
    const EditGraphIterator graph(edit, chan, time, 0);
    if (!graph.found) return content;
    graph.findComponentsForCurrentEffect(content.components);
    if (content.components.empty()) return content;
    Vector<int> material;
    graph.findMaterialTracks(material);
    Vector<int> videos;
    edit->getChans(videos, 1, 0);
    content.layers = layers_of(material, videos);
    return content;
}

void set_first_cue(cut_s& record, const CelEventPair& pair, CueList* cues, const IdStamp& channel) {
    if (!cues) return;
    const std::unique_ptr<CueList> found(cues->extract(pair.editTime(), pair.endEditTime(), channel));
    if (found && found->getNumCuePoints(0) != 0) set_cue(record, *found->getCuePoint(0, 0));
}

std::unique_ptr<cut_s> optical_record(const CelEventPair& pair, const EditPtr& edit, const optical_content& content) {
    auto record = std::make_unique<cut_s>();
    record->edit_in = record->optical_in = frame_of_position(pair.editTime(), edit);
    record->edit_out = record->optical_out = frame_of_position(pair.endEditTime(), edit);
    record->optical_record = 1;
    record->track = 0;
    record->optical_tracks = static_cast<std::int32_t>(content.layers.mask);
    record->optical_layer_count = content.layers.count;
    if (content.components.size() == 1)
        put_text(record->optical_name, toUTF8(content.components.front()->getName()).c_str());
    else
        put_text(record->optical_name, unknown_type);
    return record;
}

void add_optical_of_event(const CelEventPair& pair, EditPtr& edit, int chan, CueList* cues, event_array& events) {
    if (!is_optical_effect(classify_event_object(pair))) return;
    const IdStamp stamp = pair.inH().getEffectGraph();
    if (!stamp.valid() || stamp.getMagicType() == transition_magic) return;
    const double low = std::min(pair.editTime(), pair.endEditTime());
    const double high = std::max(pair.editTime(), pair.endEditTime());
    if (valEqualsVal(low, high)) return;
    const optical_content content = content_of(edit, chan, low);
    if (content.layers.count == 0) return;
    std::unique_ptr<cut_s> record = optical_record(pair, edit, content);
    set_first_cue(*record, pair, cues, edit->getId(chan));
    events.add(std::move(record));
}

} // namespace

int classify_event_object(const CelEventPair& pair) {
    const int magic = pair.getObjectID().getMagicType();
    if (magic == plain_object_magic) return 0;
    if (magic == effect_object_magic) return 2;
    const Qb::Ptr<FXGraphNodeBase> node = pair.getEffectHandle();
    const auto* instance = dynamic_cast<const EffectInstance_opu4h5a4j*>(node.get());
    if (!instance) return 4;
    if (!instance->flag) return 3;
    return pair.getChanSubType() > 0 ? 2 : 1;
}

void analyse_fx_opticals(EditPtr& edit, int chan, CueList* cues, event_array& events) {
    for (CelIterator it(edit, chan); it.valid(); ++it)
        add_optical_of_event(it, edit, chan, cues, events);
}
