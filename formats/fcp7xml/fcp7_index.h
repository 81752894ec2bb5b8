#pragma once
// Finds what an element with only an id stands for.

#include "formats/fcp7xml/fcp7_values.h"
#include "formats/xml/xml_document.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace formats::fcp7 {

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
    /// The rate of the object, else of what it stands in; nothing where nothing says.
    std::optional<Rate> rate_of(Element object) const;
    /// Rates that can't be read, and sequences of the document's own level that it doesn't hold.
    const std::vector<Element>& unreadable() const { return unreadable_; }

private:
    using ById = std::unordered_map<std::string_view, Element>;

    void note(const Element& element);
    void note_rate(const Element& rate);
    void find_sequences(const Element& folder);
    const Element* find(std::string_view name, std::string_view id) const;

    std::unordered_map<std::string_view, ById> known_;
    ById masters_;                                  ///< by `masterclipid`
    std::unordered_map<std::uint32_t, Rate> rates_; ///< by the numbers of what they stand in
    std::vector<Element> sequences_, unreadable_;
    std::unordered_set<std::uint32_t> listed_; ///< their numbers
};

} // namespace formats::fcp7
