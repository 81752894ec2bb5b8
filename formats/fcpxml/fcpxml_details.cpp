#include "formats/fcpxml/fcpxml_details.h"

#include "host/ascii_text.h"

#include <algorithm>
#include <iterator>

namespace formats::fcpxml {
namespace {

using embedded::EffectDescription;
using embedded::TransitionDescription;

/// The dissolve that the program knows by this number, whatever it is called in the user's language.
constexpr std::string_view cross_dissolve = "4731E73A-8DAC-4113-9A30-AE85B1761265";

TransitionDescription::Kind kind_of(std::string_view name, std::string_view uid) {
    using Kind = TransitionDescription::Kind;
    if (uid.find(cross_dissolve) != std::string_view::npos) return Kind::dissolve;
    if (ascii::holds(name, "film") && ascii::holds(name, "dissolve")) return Kind::film_dissolve;
    if (ascii::same(name, "Cross Dissolve") || ascii::same(name, "Dissolve")) return Kind::dissolve;
    return ascii::same(name, "Wipe") || ascii::same(name, "Edge Wipe") ? Kind::wipe : Kind::other;
}

/// Changes of size, place and the like, which stand under elements of their own.
constexpr std::pair<std::string_view, const char*> adjustments[] = {
    {"adjust-crop", "Crop"},
    {"adjust-corners", "Distort"},
    {"adjust-transform", "Transform"},
    {"adjust-blend", "Compositing"},
    {"adjust-stabilization", "Stabilization"},
    {"adjust-rollingShutter", "Rolling Shutter"},
    {"adjust-360-transform", "360 Transform"},
    {"adjust-reorient", "Reorient"},
    {"adjust-orientation", "Orientation"},
    {"adjust-cinematic", "Cinematic"},
};

std::string name_of_effect(const Element& element, const Context& context) {
    const std::string_view own = element.attribute("name");
    return std::string(own.empty() ? context.resources.find(element.attribute("ref")).attribute("name") : own);
}

void add_effects(const Element& element, const Context& context, std::vector<EffectDescription>& effects) {
    if (element.attribute("enabled") == "0") return;
    const std::string_view name = element.name();
    if (name == "filter-video") effects.push_back({name_of_effect(element, context), context.all_effects, {}});
    if (name == "filter-video-mask")
        for (const Element child : element.children())
            add_effects(child, context, effects);
    const auto* known = std::find_if(std::begin(adjustments), std::end(adjustments),
                                     [&](const auto& adjustment) { return adjustment.first == name; });
    if (known != std::end(adjustments)) effects.push_back({known->second, context.all_effects, {}});
}

} // namespace

std::optional<TransitionDescription> read_transition(const Element& transition, bool sound, const Context& context) {
    const Element picture = transition.child("filter-video");
    const Element sounds = transition.child("filter-audio");
    if ((picture || sounds) && !(sound ? sounds : picture)) return std::nullopt;
    TransitionDescription read;
    const std::string effect = name_of_effect(picture, context);
    read.name = transition.attribute("name");
    if (read.name.empty()) read.name = effect;
    const std::string_view uid = context.resources.find(picture.attribute("ref")).attribute("uid");
    read.kind = sound ? TransitionDescription::Kind::dissolve : kind_of(effect.empty() ? read.name : effect, uid);
    if (read.name.empty()) read.name = "Cross Dissolve";
    read.label = place_of(transition);
    return read;
}

std::vector<timeline::Mark> read_markers(const Element& element, const Context& context) {
    std::vector<timeline::Mark> marks;
    for (const Element child : element.children()) {
        if (child.name() != "marker" && child.name() != "chapter-marker") continue;
        const std::optional<Fraction> time = parse_time(child.attribute("start"));
        if (!time) {
            context.warn(child, "the marker stands nowhere, so it is left out", embedded::WarningKind::dropped);
            continue;
        }
        const std::string_view text = child.attribute(child.attribute("value").empty() ? "note" : "value");
        marks.push_back({*time * context.scale, std::string(text), 4});
    }
    return marks;
}

std::vector<EffectDescription> read_effects(const Element& element, const Context& context) {
    std::vector<EffectDescription> effects;
    for (const Element child : element.children())
        add_effects(child, context, effects);
    return effects;
}

} // namespace formats::fcpxml
