#pragma once
// Where a clip's material comes from: its media reference, and the metadata of both as reels, labels and log fields.

#include "embedded/edit_builder.h"
#include "formats/otio/otio_time.h"
#include "formats/timeline/sources.h"

#include <string>
#include <vector>

namespace formats::otio {

/// What reading an edit needs to know everywhere.
struct Context {
    const RateInfo* rate = nullptr;    ///< the edit's
    bool drop_frame = false;           ///< the timeline says so
    std::optional<Fraction> film_rate; ///< the timeline's, also that of material of the edit's rate
    bool all_effects = false;
    embedded::Warnings* warnings = nullptr;

    void warn(const Place& place, const std::string& what,
              embedded::WarningKind kind = embedded::WarningKind::doubt) const {
        warnings->push_back({kind, place.text() + ": " + what});
    }
    /// What was left out.
    void warn_dropped(const Place& place, const std::string& what) const {
        warn(place, what, embedded::WarningKind::dropped);
    }
};

/// A clip with the medium that it uses.
struct Media {
    const JsonValue* own = nullptr;       ///< the clip's own metadata; null where it has none
    const JsonValue* reference = nullptr; ///< null or without type for missing media
    Schema schema = Schema::missing_reference;
    std::optional<Range> available;
    std::optional<Range> source_range; ///< the clip's

    bool missing() const { return schema == Schema::missing_reference; }
    bool generator() const { return schema == Schema::generator_reference; }
    bool black() const;
    /// The clip's length; empty where neither range has one.
    std::optional<Time> length() const;
};

Media media_of(const Place& clip, const Context& context);
/// Refused for a clip without any length.
Fraction length_of_clip(const Place& clip, const Media& media, const Context& context);
/// Seconds from the medium's first frame to the clip's.
Fraction source_in_of(const Media& media, const Context& context);
/// Where the clip begins on the clock of its media, in seconds, from which its markers count.
Fraction start_of(const Media& media, const Context& context);
bool is_rendered(const JsonValue& clip);
embedded::SourceDescription describe_source(const Place& clip, const Media& media, const Context& context);
/// The label for a text, or a warning and none when it isn't one of that kind.
std::optional<embedded::LabelDescription> label_from_text(const Place& place, const Context& context, label_t type,
                                                          const std::string& text, std::string_view what);

using timeline::Sources;

} // namespace formats::otio
