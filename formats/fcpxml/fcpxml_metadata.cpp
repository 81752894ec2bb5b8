#include "formats/fcpxml/fcpxml_metadata.h"

#include "host/ascii_text.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace formats::fcpxml {
namespace {

struct KeyName {
    std::string_view name; ///< in lower case, without blanks and "_"
    Field field;
};

constexpr KeyName key_names[] = {
    {"camerareel", Field::camera_reel},
    {"cameraroll", Field::camera_reel},
    {"camreel", Field::camera_reel},
    {"camroll", Field::camera_reel},
    {"compreel", Field::comp_reel},
    {"description", Field::description},
    {"film", Field::film},
    {"filmrate", Field::film_rate},
    {"ink", Field::ink},
    {"inkcode", Field::inkcode},
    {"inknumber", Field::inkcode},
    {"keycode", Field::keycode},
    {"keynumber", Field::keycode},
    {"kmditemdescription", Field::description},
    {"knstart", Field::keycode},
    {"labreel", Field::lab_reel},
    {"labroll", Field::lab_reel},
    {"reel", Field::reel},
    {"reel24p", Field::reel_24p},
    {"scene", Field::scene},
    {"sndreel", Field::sound_reel},
    {"soundreel", Field::sound_reel},
    {"soundroll", Field::sound_reel},
    {"soundtc", Field::sound_timecode},
    {"soundtimecode", Field::sound_timecode},
    {"take", Field::take},
    {"tape", Field::reel},
    {"tc24", Field::timecode_24p},
    {"timecode", Field::timecode},
    {"timecode24p", Field::timecode_24p},
};

/// The program's own key of a take, which it shows by that name.
constexpr std::string_view key_of_take = "com.apple.proapps.studio.shot";

Field field_of(std::string_view key) {
    if (key == key_of_take) return Field::take;
    constexpr std::size_t longest_name = 20;
    std::string plain;
    for (const char c : key.substr(key.find_last_of('.') + 1)) {
        if (c == ' ' || c == '_') continue;
        plain += ascii::lower(c);
        if (plain.size() > longest_name) return Field::count;
    }
    const auto* found =
        std::lower_bound(std::begin(key_names), std::end(key_names), plain,
                         [](const KeyName& known, const std::string& name) { return known.name < name; });
    return found != std::end(key_names) && found->name == plain ? found->field : Field::count;
}

/// An attribute, or the first text of an array.
std::string_view value_of(const xml::Element& entry) {
    if (entry.has_attribute("value")) return ascii::trimmed(entry.attribute("value"));
    for (const xml::Element text : entry.child("array").children())
        if (text.name() == "string" && !text.text().empty()) return text.text();
    return {};
}

} // namespace

void Fields::take_from(const xml::Element& element, Field first) {
    for (const xml::Element entry : element.child("metadata").children()) {
        if (entry.name() != "md") continue;
        const Field field = field_of(entry.attribute("key"));
        if (field == Field::count || field < first || !at(field).empty()) continue;
        at(field) = value_of(entry);
    }
    if (at(Field::description).empty()) at(Field::description) = element.text_of("note");
}

void Fields::take(const xml::Element& element) { take_from(element, Field::reel); }

void Fields::take_of_shot(const xml::Element& element) { take_from(element, Field::scene); }

void Fields::take(const Fields& others) {
    for (std::size_t i = 0; i < texts_.size(); ++i)
        if (texts_[i].empty()) texts_[i] = others.texts_[i];
}

bool has_metadata(const xml::Element& element) { return element.child("metadata") || element.child("note"); }

} // namespace formats::fcpxml
