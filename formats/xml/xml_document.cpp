#include "formats/xml/xml_document.h"

namespace formats::xml {

Element Element::at(std::uint32_t number) const {
    return number == Document::none ? Element() : Element(document_, number);
}

std::string_view Element::name() const {
    if (!document_) return {};
    return document_->names_[document_->node(number_).name];
}

std::string_view Element::text() const {
    if (!document_) return {};
    const Document::Node& node = document_->node(number_);
    return document_->text_at(node.text, node.text_size);
}

std::uint32_t Element::line() const { return document_ ? document_->node(number_).line : 0; }

Element Element::parent() const { return document_ ? at(document_->node(number_).parent) : Element(); }

Element Element::first_child() const { return document_ ? at(document_->node(number_).first_child) : Element(); }

Element Element::next() const { return document_ ? at(document_->node(number_).next) : Element(); }

Element Element::child(std::string_view name) const {
    if (!document_) return {};
    return at(document_->child_named(document_->node(number_).first_child, name));
}

Element Element::next_of_name() const {
    Element other = next();
    while (other && document_->node(other.number_).name != document_->node(number_).name)
        other = other.next();
    return other;
}

std::optional<std::string_view> Element::find_attribute(std::string_view name) const {
    if (!document_) return std::nullopt;
    const Document::Node& node = document_->node(number_);
    for (std::uint32_t i = 0; i < node.attribute_count; ++i) {
        const Document::Attribute& attribute = document_->attributes_[node.attribute + i];
        if (document_->names_[attribute.name] == name) return document_->text_at(attribute.value, attribute.value_size);
    }
    return std::nullopt;
}

std::string_view Element::attribute(std::string_view name) const {
    return find_attribute(name).value_or(std::string_view());
}

bool Element::has_attribute(std::string_view name) const { return find_attribute(name).has_value(); }

// Most of reading is this: few names have the length and the first letter of another.
std::uint32_t Document::child_named(std::uint32_t first, std::string_view name) const {
    if (name.empty()) return none;
    for (std::uint32_t at = first; at != none; at = nodes_[at].next) {
        const std::string& other = names_[nodes_[at].name];
        if (other.size() == name.size() && other.front() == name.front() && other == name) return at;
    }
    return none;
}

} // namespace formats::xml
