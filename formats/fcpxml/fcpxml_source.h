#pragma once
// What an event shows, and what the edit's source of it is.

#include "embedded/edit_builder.h"
#include "formats/fcpxml/fcpxml_document.h"
#include "formats/fcpxml/fcpxml_metadata.h"
#include "formats/timeline/sources.h"

#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace formats::fcpxml {

/// One use of a medium, or of something that was made in the edit.
struct Shot {
    Element element; ///< what messages name
    std::string name;
    const Asset* asset = nullptr; ///< null for lost media, and for what was made
    std::string made;             ///< what it is made of, as "comp:" and a name; empty for media
    std::vector<Element> own;     ///< whose metadata goes before the asset's, the innermost first
    std::vector<Element> around;  ///< clips around it that tell of the shot, as one that joins sound and picture
    Format format;                ///< the medium's
    bool conformed = false;       ///< its frames go one for one with those around it, but for its speed
    bool drop = false;            ///< its timecode drops numbers
    bool starts = false;          ///< it says where in its medium it begins

    bool still() const { return asset && asset->format.still; }
};

/// How an event stands in its source.
struct Bound {
    embedded::SourceId source = 0;
    Fraction source_in, speed;
};

/// Gives shots their sources.
class ShotSources {
public:
    /// Both must live as long. Readers of one edit share the sources.
    ShotSources(const Context& context, timeline::Sources& sources) : context_(context), sources_(sources) {}

    /// `media_in` is the lowest time of the shot's own clock that the event shows, `speed` seconds of that a second.
    Bound bind(const std::vector<Shot>& shots, int number, const Fraction& media_in, const Fraction& speed);

private:
    const Fields& fields_of(const Asset& asset);
    Fields fields_of(const Shot& shot);
    void set_rates(const Shot& shot, const Fields& fields, bool frame_for_frame, embedded::SourceDescription& source);
    embedded::SourceDescription describe(const Shot& shot, bool frame_for_frame);
    void set_timecodes(const Shot& shot, const Fields& fields, bool frame_for_frame,
                       embedded::SourceDescription& source);
    void set_film_numbers(const Shot& shot, const Fields& fields, embedded::SourceDescription& source);
    std::optional<embedded::LabelDescription> label(const Shot& shot, label_t type, std::string_view text,
                                                    const char* what);
    const RateInfo& rate_of(const Shot& shot);
    Fraction true_rate_of(const Shot& shot);

    const Context& context_;
    timeline::Sources& sources_;
    std::unordered_map<const Asset*, Fields> fields_;
    std::map<std::pair<int, bool>, embedded::SourceId> known_;
};

} // namespace formats::fcpxml
