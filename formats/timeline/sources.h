#pragma once
// The sources of an edit and their labels, whatever file they come from.

#include "embedded/edit_builder.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace formats::timeline {

/// Gives the same number to equal sources, so that clips of one medium share it.
class Sources {
public:
    explicit Sources(embedded::EditBuilder& builder) : builder_(builder) {}
    embedded::SourceId add(embedded::SourceDescription source);

private:
    embedded::EditBuilder& builder_;
    std::unordered_map<std::string, embedded::SourceId> known_;
    std::string key_; ///< of the source in hand; its room is used again
};

/// The label for a text; none, with the fault in words, when it isn't one of that kind. `what` names it in the fault:
/// "key number".
std::optional<embedded::LabelDescription> label_of_text(label_t type, const std::string& text, std::string_view what,
                                                        std::string& fault);
/// A frame number as a label's sample: timecode turns over each day, so whole days go where it doesn't fit.
int sample_of(std::int64_t frame, int nominal);

} // namespace formats::timeline
