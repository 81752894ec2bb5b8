#include "formats/fcp7xml/fcp7_index.h"

namespace formats::fcp7 {
namespace {

constexpr std::string_view repeated[] = {"file", "sequence", "clip", "clipitem", "generatoritem", "multiclip"};

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
    const std::string_view id = element.attribute("id");
    const bool clip = element.name() == "clip";
    if (clip && !element.text_of("masterclipid").empty())
        masters_.try_emplace(element.text_of("masterclipid"), element);
    if (id.empty()) return;
    const auto kind = known_.find(element.name());
    if (kind != known_.end()) kind->second.try_emplace(id, element);
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
        if (sequence && listed_.insert(sequence.number()).second) sequences_.push_back(sequence);
    }
}

} // namespace formats::fcp7
