#include "formats/fcp7xml/fcp7_index.h"

#include <algorithm>
#include <iterator>

namespace formats::fcp7 {
namespace {

constexpr std::string_view repeated[] = {"file", "sequence", "clip", "clipitem", "generatoritem", "multiclip"};

/// What places and timecodes are counted in; parameters of effects hold rates too, of 0 among others.
constexpr std::string_view counted[] = {"sequence", "clip", "clipitem", "generatoritem", "file"};

bool is_counted_in(const Element& rate) {
    const Element object = rate.parent().name() == "timecode" ? rate.parent().parent() : rate.parent();
    return std::find(std::begin(counted), std::end(counted), object.name()) != std::end(counted);
}

bool holds(const Element& element) { return static_cast<bool>(element.first_child()); }

} // namespace

Index::Index(const Element& root) {
    for (const std::string_view name : repeated)
        known_[name];
    // Down, across and up again: as deep as the document is, but without a call for each level.
    for (Element at = root; at;) {
        note(at);
        if (at.first_child()) {
            at = at.first_child();
            continue;
        }
        while (at && !at.next())
            at = at.parent();
        if (at) at = at.next();
    }
    find_sequences(root);
}

void Index::note(const Element& element) {
    if (!holds(element)) return;
    if (element.name() == "rate") note_rate(element);
    const std::string_view id = element.attribute("id");
    const bool clip = element.name() == "clip";
    if (clip && !element.text_of("masterclipid").empty())
        masters_.try_emplace(element.text_of("masterclipid"), element);
    if (id.empty()) return;
    const auto kind = known_.find(element.name());
    if (kind != known_.end()) kind->second.try_emplace(id, element);
}

void Index::note_rate(const Element& rate) {
    if (const std::optional<Rate> read = rate_in(rate))
        rates_.try_emplace(rate.parent().number(), *read);
    else if (!rate.text_of("timebase").empty() && is_counted_in(rate))
        unreadable_.push_back(rate);
}

std::optional<Rate> Index::rate_of(Element object) const {
    for (; object; object = object.parent())
        if (const auto found = rates_.find(object.number()); found != rates_.end()) return found->second;
    return std::nullopt;
}

const Element* Index::find(std::string_view name, std::string_view id) const {
    const auto kind = known_.find(name);
    if (kind == known_.end() || id.empty()) return nullptr;
    const auto found = kind->second.find(id);
    return found == kind->second.end() ? nullptr : &found->second;
}

Element Index::full(const Element& element) const {
    if (!element || holds(element)) return element;
    const Element* found = find(element.name(), element.attribute("id"));
    return found ? *found : Element();
}

Element Index::master_clip(const Element& item) const {
    const std::string_view id = item.text_of("masterclipid");
    if (id.empty()) return {};
    if (const Element* found = find("clip", id)) return *found;
    const auto master = masters_.find(id);
    return master == masters_.end() ? Element() : master->second;
}

// A sequence may stand in a project in full and on the first level by its id: it counts once.
void Index::find_sequences(const Element& folder) {
    for (const Element child : folder.children()) {
        if (child.name() == "project" || child.name() == "bin" || child.name() == "children") find_sequences(child);
        if (child.name() != "sequence") continue;
        const Element sequence = full(child);
        if (!sequence) unreadable_.push_back(child);
        if (sequence && listed_.insert(sequence.number()).second) sequences_.push_back(sequence);
    }
}

} // namespace formats::fcp7
