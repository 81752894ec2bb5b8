#pragma once
// What the metadata of clips and assets says, by field.
//
// The last part of a key tells the field, without regard to case, blanks and "_": "com.apple.proapps.studio.reel" is
// the reel, and so are "com.apple.proapps.custom.Tape" and "org.example.tape". Key numbers have no key of their own in
// this format and stand under such keys.

#include "formats/xml/xml_document.h"

#include <array>
#include <string_view>

namespace formats::fcpxml {

enum class Field {
    reel,
    sound_reel,
    reel_24p,
    camera_reel,
    lab_reel,
    comp_reel,
    film,
    keycode,
    ink,
    inkcode,
    timecode,
    sound_timecode,
    timecode_24p,
    film_rate,
    scene, ///< from here on, what is said of a shot rather than of a medium
    take,
    description,
    count
};

/// Texts of a document; empty where nothing gives the field.
class Fields {
public:
    std::string_view operator[](Field field) const { return texts_[static_cast<std::size_t>(field)]; }
    /// Takes what an element's own `metadata` and `note` say of fields that are still empty.
    void take(const xml::Element& element);
    /// The same of fields of the shot only.
    void take_of_shot(const xml::Element& element);
    void take(const Fields& others);

private:
    std::string_view& at(Field field) { return texts_[static_cast<std::size_t>(field)]; }
    void take_from(const xml::Element& element, Field first);

    std::array<std::string_view, static_cast<std::size_t>(Field::count)> texts_;
};

/// Whether an element says anything of fields.
bool has_metadata(const xml::Element& element);

} // namespace formats::fcpxml
