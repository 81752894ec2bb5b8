#pragma once
// An SVG read back as a browser would take it: elements with their attributes.

#include "formats/xml/xml_document.h"

#include <map>
#include <string>
#include <vector>

namespace documents_test {

struct SvgElement {
    std::string name, text; ///< text directly in it
    std::map<std::string, std::string> attributes;

    bool has(const std::string& attribute) const { return attributes.count(attribute) > 0; }
    std::string at(const std::string& attribute) const {
        const auto found = attributes.find(attribute);
        return found == attributes.end() ? "" : found->second;
    }
    long number(const std::string& attribute) const { return has(attribute) ? std::stol(at(attribute)) : -1; }
};

/// Nothing where it isn't well-formed.
class SvgPicture {
public:
    explicit SvgPicture(const std::string& bytes) {
        formats::xml::Document document;
        if (document.parse(bytes)) add(document.root());
    }

    std::vector<SvgElement> elements;

    const SvgElement& root() const { return elements.front(); }
    std::vector<SvgElement> of_kind(const std::string& kind) const {
        std::vector<SvgElement> found;
        for (const SvgElement& element : elements)
            if (element.at("data-kind") == kind) found.push_back(element);
        return found;
    }
    std::vector<std::string> texts() const {
        std::vector<std::string> found;
        for (const SvgElement& element : elements)
            if (element.name == "text") found.push_back(element.text);
        return found;
    }

private:
    void add(const formats::xml::Element& from) {
        static constexpr const char* attributes[] = {
            "data-kind", "data-film", "data-lane", "data-start", "data-frames", "data-units", "x",
            "y",         "width",     "height",    "x1",         "x2",          "y1",         "y2"};
        SvgElement element;
        element.name = from.name();
        element.text = from.text();
        for (const char* name : attributes)
            if (from.has_attribute(name)) element.attributes[name] = from.attribute(name);
        elements.push_back(std::move(element));
        for (const formats::xml::Element& child : from.children())
            add(child);
    }
};

} // namespace documents_test
