#pragma once
// A document as a whole: what its root is, its rate, and its channels.

#include "formats/otio/otio_items.h"

#include <vector>

namespace formats::otio {

/// The timelines of a document: itself, or those of a collection in order.
std::vector<const JsonValue*> timelines_of(const JsonValue& document);

/// The timeline of a document, or what is read as one. The places point into it, so it stays where it is.
class Root {
public:
    /// Refused: a root that is no timeline and holds none.
    /// Of several timelines in a collection `timeline` says which.
    explicit Root(const JsonValue& document, std::size_t timeline = 0);
    Root(const Root&) = delete;
    Root& operator=(const Root&) = delete;

    const Place& object() const { return object_; }
    bool is_timeline() const;
    /// The top stack; null where the root is a single channel or the timeline is empty.
    const Place* stack() const { return stack_.value ? &stack_ : nullptr; }
    /// The children of the top stack, from the lowest.
    const std::vector<Place>& channels() const { return channels_; }

private:
    void take_stack();

    Place document_, object_, stack_;
    std::vector<Place> channels_;
};

/// The rate of the edit: of its start, else of the first clip with a length, on picture tracks before others.
const RateInfo* rate_of_edit(const Root& root);
embedded::EditDescription describe_edit(const Root& root, const Context& context, const std::string& path,
                                        std::int64_t file_time);
constexpr int plain_subtype = 0;
constexpr int unlisted_subtype = 4;
constexpr int fx_subtype = 8;
int subtype_of(const Place& channel, const Context& context);
/// Adds all channels with their items and cues.
void add_channels(const Root& root, const Context& context, embedded::EditBuilder& builder);

} // namespace formats::otio
