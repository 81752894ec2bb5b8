#include "formats/fcp7xml/fcp7_effects.h"

#include "host/ascii_text.h"
#include "host/channel_kinds.h"

#include <algorithm>

namespace formats::fcp7 {
namespace {

using embedded::TransitionDescription;
using Kind = TransitionDescription::Kind;

struct Neutral {
    std::string_view parameter;
    int value;
};

/// What the effects that each clip has are set to where they do nothing; everything else is 0 then.
constexpr Neutral neutrals[] = {{"scale", 100}, {"opacity", 100}};
constexpr std::string_view corners[] = {"ulcorner", "urcorner", "lrcorner", "llcorner"};

bool is_corner(std::string_view parameter) {
    return std::find(std::begin(corners), std::end(corners), parameter) != std::end(corners);
}

bool is_neutral(std::string_view parameter, std::string_view text) {
    const std::optional<Fraction> value = number_from(text);
    if (!value) return text.empty();
    if (is_corner(parameter)) return *value == Fraction(1, 2) || *value == Fraction(-1, 2);
    const auto found = std::find_if(std::begin(neutrals), std::end(neutrals),
                                    [&](const Neutral& one) { return one.parameter == parameter; });
    return *value == Fraction(found == std::end(neutrals) ? 0 : found->value);
}

bool is_neutral(const Element& parameter) {
    const std::string_view id = parameter.text_of("parameterid");
    if (parameter.child("keyframe")) return false;
    const Element value = parameter.child("value");
    if (!value.first_child()) return is_neutral(id, value.text());
    for (const Element part : value.children())
        if (!is_neutral(id, part.text())) return false;
    return true;
}

/// Several programs write position, crop and opacity of every clip, also where nothing was done to it.
bool does_nothing(const Element& effect) {
    if (!ascii::same(effect.text_of("effectcategory"), "motion")) return false;
    for (const Element parameter : effect.children())
        if (parameter.name() == "parameter" && !is_neutral(parameter)) return false;
    return true;
}

bool counts(const Element& filter) {
    const Element effect = filter.child("effect");
    return effect && is_enabled(filter) && !ascii::same(effect.text_of("effectid"), "timeremap") &&
           !ascii::same(effect.text_of("mediatype"), "audio") && !does_nothing(effect);
}

std::string first_of(std::initializer_list<std::string_view> texts) {
    for (const std::string_view text : texts)
        if (!text.empty()) return std::string(text);
    return {};
}

Kind kind_of(const Element& effect, const std::string& name) {
    if (ascii::same(effect.text_of("effectcategory"), "Wipe")) return Kind::wipe;
    for (const std::string_view text : {effect.text_of("effectid"), std::string_view(name)}) {
        if (ascii::holds(text, "film dissolve")) return Kind::film_dissolve;
        if (ascii::same(text, "Cross Dissolve") || ascii::same(text, "Dissolve")) return Kind::dissolve;
    }
    return name.empty() ? Kind::dissolve : Kind::other;
}

void number_wipe(const Element& effect, TransitionDescription& wipe, Teller& teller) {
    constexpr int highest_pattern = 0xFFFF;
    const Fraction code = number_in(effect, "wipecode", teller).value_or(Fraction(1));
    wipe.pattern = static_cast<int>(std::clamp<std::int64_t>(code.nearest(), 0, highest_pattern));
    wipe.reversed = truth_in(effect, "reverse", false);
}

void tell_of_part(const Element& transition, const Element& effect, Teller& teller) {
    const Fraction start = number_from(effect.text_of("startratio")).value_or(Fraction(0));
    const Fraction end = number_from(effect.text_of("endratio")).value_or(Fraction(1));
    if (start != Fraction(0) || end != Fraction(1))
        teller.doubt(transition, "begins or ends part of the way, but is read as a whole transition");
}

} // namespace

std::vector<embedded::EffectDescription> effects_of(const Element& item, const Context& context) {
    std::vector<embedded::EffectDescription> effects;
    for (const Element filter : item.children()) {
        if (filter.name() != "filter" || !counts(filter)) continue;
        const Element effect = filter.child("effect");
        effects.push_back({first_of({effect.text_of("name"), effect.text_of("effectid")}), context.all_effects, {}});
    }
    return effects;
}

TransitionDescription describe_transition(const Element& transition, int kind, const Context& context) {
    const Element effect = transition.child("effect");
    TransitionDescription result;
    result.name = first_of({effect.text_of("name"), effect.text_of("effectid"), transition.text_of("name")});
    result.label = "line " + std::to_string(transition.line()) + " \"" + result.name + "\"";
    if (kind == sound_channel) return result;
    result.kind = kind_of(effect, result.name);
    if (result.kind == Kind::wipe) number_wipe(effect, result, context.teller);
    if (result.name.empty()) context.teller.doubt(transition, "doesn't say what it is, and is read as a dissolve");
    tell_of_part(transition, effect, context.teller);
    return result;
}

Fraction cut_of(const Element& transition, const Fraction& start, const Fraction& end, const Rate& rate,
                Teller& teller) {
    if (const std::optional<Fraction> seconds = seconds_of_ticks(transition.text_of("cutPointTicks"))) {
        const Fraction cut = start + Fraction((*seconds * rate.frames_a_second()).nearest());
        if (cut <= end) return cut;
    }
    const std::string_view alignment = transition.text_of("alignment");
    if (ascii::begins(alignment, "start")) return start;
    if (ascii::begins(alignment, "end")) return end;
    if (!ascii::same(alignment, "center"))
        teller.doubt(transition, alignment.empty() ? "doesn't say where it cuts; the middle counts"
                                                   : "is aligned to \"" + std::string(alignment) +
                                                         "\", which isn't known; it cuts in the middle");
    return Fraction(((start + end) / Fraction(2)).floor());
}

} // namespace formats::fcp7
