#pragma once
// Finds what an element with only an id stands for.

#include "formats/xml/xml_document.h"

#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace formats::fcp7 {

using xml::Element;

/// Things that stand in a document once in full and then by id: "<file id="file-1"/>". The full one may come later, and
/// elsewhere.
class Index {
public:
    /// The document must outlive it.
    explicit Index(const Element& root);

    /// The element, or where it holds nothing the full one of its name and id; none where there isn't any.
    Element full(const Element& element) const;
    /// The clip of a bin that a clip item was taken from.
    Element master_clip(const Element& item) const;
    /// Sequences of the document's own level, of its projects and its bins, without those that only stand in others.
    const std::vector<Element>& sequences() const { return sequences_; }

private:
    using ById = std::unordered_map<std::string_view, Element>;

    void note(const Element& element);
    void find_sequences(const Element& folder);
    const Element* find(std::string_view name, std::string_view id) const;

    std::unordered_map<std::string_view, ById> known_;
    ById masters_; ///< by `masterclipid`
    std::vector<Element> sequences_;
    std::unordered_set<std::uint32_t> listed_; ///< their numbers
};

} // namespace formats::fcp7
