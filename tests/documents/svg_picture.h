#pragma once
// An SVG read back as a browser would take it: elements with their attributes.

#include <expat.h>

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
        const XML_Parser parser = XML_ParserCreate(nullptr);
        XML_SetUserData(parser, this);
        XML_SetElementHandler(parser, begin, end);
        XML_SetCharacterDataHandler(parser, text);
        if (XML_Parse(parser, bytes.data(), static_cast<int>(bytes.size()), 1) != XML_STATUS_OK) elements.clear();
        XML_ParserFree(parser);
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
    static void begin(void* self, const char* name, const char** attributes) {
        auto& picture = *static_cast<SvgPicture*>(self);
        SvgElement element;
        element.name = name;
        for (; *attributes != nullptr; attributes += 2)
            element.attributes[attributes[0]] = attributes[1];
        picture.open_.push_back(picture.elements.size());
        picture.elements.push_back(element);
    }
    static void end(void* self, const char*) { static_cast<SvgPicture*>(self)->open_.pop_back(); }
    static void text(void* self, const char* bytes, int length) {
        auto& picture = *static_cast<SvgPicture*>(self);
        picture.elements[picture.open_.back()].text.append(bytes, static_cast<std::size_t>(length));
    }

    std::vector<std::size_t> open_;
};

} // namespace documents_test
